#include "FilePreview.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeDatabase>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

FilePreview::Kind FilePreview::kind(const QUrl &url)
{
    const QFileInfo file(url.toLocalFile());
    if (!url.isLocalFile() || !file.isFile() || !file.isReadable())
        return Kind::other;
    const QMimeType type = QMimeDatabase().mimeTypeForFile(file);
    if (type.inherits(u"application/pdf"_s))
        return Kind::pdf;
    if (type.inherits(u"text/markdown"_s))
        return Kind::markdown;
    if (QImageReader::supportedMimeTypes().contains(type.name().toUtf8()))
        return Kind::image;
    if (type.inherits(u"text/plain"_s))
        return Kind::text;
    return Kind::other;
}

QString FilePreview::text(const QUrl &url)
{
    QFile file(url.toLocalFile());
    if (!url.isLocalFile() || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(maximumTextBytes);
    // The decoder keeps the bytes of a character cut by the limit to itself, so the text ends on
    // the last whole character instead of a replacement mark.
    QStringDecoder toUtf16(QStringDecoder::Utf8);
    return toUtf16.decode(bytes);
}
