#include "DialogFolderPicker.h"

#include <utility>

// One question put to the user; the asking coroutine sleeps in it until the answer comes.
struct DialogFolderPicker::Question {
    bool answered = false;
    QList<QUrl> folders;
    std::coroutine_handle<> waiting;

    void resolve(QList<QUrl> chosen)
    {
        answered = true;
        folders = std::move(chosen);
        if (auto resumed = std::exchange(waiting, {}))
            resumed.resume();
    }

    struct Answer {
        std::shared_ptr<Question> question;
        bool await_ready() const noexcept { return question->answered; }
        void await_suspend(std::coroutine_handle<> awaiting) noexcept { question->waiting = awaiting; }
        QList<QUrl> await_resume() const { return question->folders; }
    };
};

DialogFolderPicker::DialogFolderPicker(QObject *parent) : QObject(parent) {}

DialogFolderPicker::~DialogFolderPicker()
{
    // Whoever still waits hears a cancel rather than nothing at all.
    answer({});
}

Task<QList<QUrl>> DialogFolderPicker::choose(FolderPickerRequest request)
{
    // The dialog is modal: a question still open when a new one comes counts as cancelled.
    answer({});
    auto question = std::make_shared<Question>();
    m_open = question;
    emit requested(request.prompt, request.message, request.directory.value_or(QUrl()), request.allowsMultiple);
    Question::Answer answer{question};
    co_return co_await answer;
}

void DialogFolderPicker::accept(const QList<QUrl> &folders)
{
    answer(folders);
}

void DialogFolderPicker::cancel()
{
    answer({});
}

void DialogFolderPicker::answer(QList<QUrl> folders)
{
    if (auto question = std::exchange(m_open, nullptr))
        question->resolve(std::move(folders));
}
