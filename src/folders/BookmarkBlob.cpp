#include "BookmarkBlob.h"

#include "BookmarkError.h"

#include <QDataStream>
#include <QIODevice>

using namespace Qt::StringLiterals;

namespace {

constexpr auto streamVersion = QDataStream::Qt_6_0;

[[noreturn]] void refuse(const QString &reason)
{
    throw BookmarkError(BookmarkError::CouldNotResolve{reason});
}

void write(QDataStream &out, const std::optional<qint64> &value)
{
    out << value.has_value() << value.value_or(0);
}

void read(QDataStream &in, std::optional<qint64> &value)
{
    bool present = false;
    qint64 number = 0;
    in >> present >> number;
    value = present ? std::optional(number) : std::nullopt;
}

void write(QDataStream &out, const std::optional<QString> &value)
{
    out << value.has_value() << value.value_or(QString());
}

void read(QDataStream &in, std::optional<QString> &value)
{
    bool present = false;
    QString text;
    in >> present >> text;
    value = present ? std::optional(text) : std::nullopt;
}

} // namespace

QByteArray BookmarkBlob::encoded() const
{
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setVersion(streamVersion);
    out << magic << currentVersion << path;
    out << identity.device << identity.inode << identity.isDirectory;
    write(out, identity.birthTime);
    out << identity.handle;
    out << volume.device << volume.root << volume.mountPoint << volume.fileSystemType << volume.source;
    write(out, volume.uuid);
    return data;
}

BookmarkBlob BookmarkBlob::decoded(const QByteArray &data)
{
    if (data.isEmpty())
        refuse(u"The bookmark is empty."_s);
    QDataStream in(data);
    in.setVersion(streamVersion);
    quint32 foundMagic = 0;
    quint16 version = 0;
    in >> foundMagic >> version;
    if (in.status() != QDataStream::Ok || foundMagic != magic || version == 0)
        refuse(u"The bookmark is not in a form Velto can read."_s);
    if (version > currentVersion)
        refuse(u"The bookmark was made by a newer version of Velto."_s);

    BookmarkBlob blob;
    in >> blob.path >> blob.identity.device >> blob.identity.inode >> blob.identity.isDirectory;
    read(in, blob.identity.birthTime);
    in >> blob.identity.handle;
    in >> blob.volume.device >> blob.volume.root >> blob.volume.mountPoint >> blob.volume.fileSystemType
        >> blob.volume.source;
    read(in, blob.volume.uuid);
    if (in.status() != QDataStream::Ok || !in.atEnd() || !blob.path.startsWith(u'/'))
        refuse(u"The bookmark is damaged."_s);
    return blob;
}
