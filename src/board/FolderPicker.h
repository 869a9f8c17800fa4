#pragma once

#include "Task.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

// What the user is asked when a folder must be chosen by hand.
struct FolderPickerRequest {
    QString prompt;  // the accepting button
    QString message; // the sentence above the folders
    std::optional<QUrl> directory; // where the panel opens; absent leaves it to the panel
    bool allowsMultiple = false;

    bool operator==(const FolderPickerRequest &) const = default;
};

// The one way the board asks the user for folders. The window puts up its folder dialog behind
// it; tests answer in its place.
class FolderPicker {
public:
    virtual ~FolderPicker() = default;

    // The chosen folders, or none when the user cancelled.
    virtual Task<QList<QUrl>> choose(FolderPickerRequest request) = 0;
};
