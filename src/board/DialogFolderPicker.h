#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include "FolderPicker.h"

#include <memory>

// The folder picker of the running application: it asks the window to put up its folder dialog
// and waits for the user's answer.
class DialogFolderPicker : public QObject, public FolderPicker {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one DialogFolderPicker")

public:
    explicit DialogFolderPicker(QObject *parent = nullptr);
    ~DialogFolderPicker() override;

    Task<QList<QUrl>> choose(FolderPickerRequest request) override;

    // The dialog's answers.
    Q_INVOKABLE void accept(const QList<QUrl> &folders);
    Q_INVOKABLE void cancel();

signals:
    // `folder` is empty when the dialog may open wherever it likes.
    void requested(const QString &prompt, const QString &message, const QUrl &folder, bool allowsMultiple);

private:
    struct Question;

    void answer(QList<QUrl> folders);

    std::shared_ptr<Question> m_open;
};
