#pragma once

#include "FolderPicker.h"

#include <QList>
#include <QUrl>

#include <deque>

// Answers the board's questions for folders from a list the test fills, and remembers the questions.
class FakeFolderPicker : public FolderPicker {
public:
    Task<QList<QUrl>> choose(FolderPickerRequest request) override
    {
        requests.append(request);
        QList<QUrl> answer;
        if (!answers.empty()) {
            answer = answers.front();
            answers.pop_front();
        }
        co_return answer;
    }

    std::deque<QList<QUrl>> answers;
    QList<FolderPickerRequest> requests;
};
