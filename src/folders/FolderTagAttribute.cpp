#include "FolderTagAttribute.h"

#include "FinderTagError.h"

#include <QFile>
#include <QHash>
#include <QQueue>
#include <QStringDecoder>

#include <sys/xattr.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

constexpr int readRounds = 3;

QStringList namesOf(const QStringList &elements)
{
    QStringList names;
    names.reserve(elements.size());
    for (const QString &element : elements)
        names.append(FolderTagAttribute::tagName(element));
    return names;
}

// The existing elements for `names`, in that order: each name takes the next unused element of
// that name, so its colour stays, or stands bare when there is none left.
QStringList elementsFor(const QStringList &names, const QStringList &elements)
{
    QHash<QString, QQueue<QString>> byName;
    for (const QString &element : elements)
        byName[FolderTagAttribute::tagName(element)].enqueue(element);
    QStringList result;
    result.reserve(names.size());
    for (const QString &name : names) {
        QQueue<QString> &queue = byName[name];
        result.append(queue.isEmpty() ? name : queue.dequeue());
    }
    return result;
}

QByteArray filesystemPath(const QUrl &url)
{
    const QString path = url.isLocalFile() ? url.toLocalFile() : QString();
    if (path.isEmpty() || path.contains(QChar(u'\0')))
        throw FinderTagError(FinderTagError::PathUnrepresentable{url});
    return QFile::encodeName(path);
}

// Whether the attribute was removed or grew between asking for its size and reading it.
bool changedMeanwhile(int code)
{
    return code == ERANGE || code == ENODATA;
}

} // namespace

std::optional<QStringList> FolderTagAttribute::decode(const QByteArray &value)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(value);
    if (decoder.hasError())
        return std::nullopt;
    QStringList tags;
    for (const QString &part : text.split(u',')) {
        const QString tag = part.trimmed();
        if (!tag.isEmpty())
            tags.append(tag);
    }
    return tags;
}

QByteArray FolderTagAttribute::encode(const QStringList &tags)
{
    return tags.join(u',').toUtf8();
}

QString FolderTagAttribute::tagName(const QString &element)
{
    const qsizetype lineFeed = element.lastIndexOf(u'\n');
    return lineFeed < 0 ? element : element.left(lineFeed);
}

std::optional<QStringList> FolderTagAttribute::updatedElements(const QStringList &elements,
                                                               const std::optional<QString> &desired,
                                                               const std::optional<QString> &previous)
{
    const QStringList names = namesOf(elements);
    QStringList updated = names;
    // Every copy of the old tag goes, or one left behind would keep showing the old status. The
    // wanted tag is never taken off only to be put back at the end.
    if (previous && previous != desired)
        updated.removeAll(*previous);
    if (desired && !updated.contains(*desired))
        updated.append(*desired);
    if (updated == names)
        return std::nullopt;
    return elementsFor(updated, elements);
}

QStringList FolderTagAttribute::readTags(const QByteArray &path)
{
    for (int round = 0; round < readRounds; ++round) {
        const ssize_t size = ::getxattr(path.constData(), attributeName, nullptr, 0);
        if (size < 0) {
            if (errno == ENODATA)
                return {};
            throw FinderTagError(FinderTagError::ReadFailed{errno});
        }
        if (size == 0)
            return {};
        QByteArray value(size, Qt::Uninitialized);
        const ssize_t read = ::getxattr(path.constData(), attributeName, value.data(), value.size());
        if (read == size) {
            if (auto tags = decode(value))
                return *tags;
            throw FinderTagError(FinderTagError::TagsUnreadable{});
        }
        if (read < 0 && !changedMeanwhile(errno))
            throw FinderTagError(FinderTagError::ReadFailed{errno});
    }
    throw FinderTagError(FinderTagError::TagsUnreadable{});
}

void FolderTagAttribute::writeTags(const QByteArray &path, const QStringList &elements)
{
    const QByteArray value = encode(elements);
    if (::setxattr(path.constData(), attributeName, value.constData(), size_t(value.size()), 0) != 0)
        throw FinderTagError(FinderTagError::WriteFailed{errno});
}

void FolderTagAttribute::applyTag(const std::optional<QString> &desired, const std::optional<QString> &previous,
                                  const QUrl &url)
{
    if (desired && desired->contains(u'\n'))
        throw FinderTagError(FinderTagError::TagContainsNewline{*desired});
    if (desired && desired->contains(u','))
        throw FinderTagError(FinderTagError::TagContainsComma{*desired});
    const QByteArray path = filesystemPath(url);
    const QStringList elements = readTags(path);
    if (const auto updated = updatedElements(elements, desired, previous))
        writeTags(path, *updated);
}
