#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

// What the preview of a checklist file can show of it: the kind of view that fits its content,
// and the text of a text file.
class FilePreview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    enum class Kind { image, markdown, text, pdf, other };
    Q_ENUM(Kind)

    // Judged by the file's name and, where the name says nothing, its first bytes; a file that
    // cannot be read is `other`.
    Q_INVOKABLE [[nodiscard]] static Kind kind(const QUrl &url);
    // The first `maximumTextBytes` of the file as UTF-8, cut at a whole character; empty when it
    // cannot be read.
    Q_INVOKABLE [[nodiscard]] static QString text(const QUrl &url);

    static constexpr qint64 maximumTextBytes = 512 * 1024;
};
