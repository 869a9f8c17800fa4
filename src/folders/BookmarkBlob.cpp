#include "BookmarkBlob.h"

#include "BookmarkError.h"
#include "FolderPaths.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

// The layout: the magic, the version, then every field in order. Numbers are big-endian, a
// flag is one byte, text and bytes carry a 32-bit length first (text as UTF-8), and an optional
// value is a flag followed by the value when present.
namespace {

class Writer {
public:
    template <typename Number>
    void number(Number value)
    {
        const auto bigEndian = qToBigEndian(value);
        m_data.append(reinterpret_cast<const char *>(&bigEndian), sizeof bigEndian);
    }
    void flag(bool value) { number(quint8(value)); }
    void bytes(const QByteArray &value)
    {
        number(quint32(value.size()));
        m_data.append(value);
    }
    void text(const QString &value) { bytes(value.toUtf8()); }
    template <typename T, typename Write>
    void optional(const std::optional<T> &value, Write write)
    {
        flag(value.has_value());
        if (value)
            (this->*write)(*value);
    }

    [[nodiscard]] QByteArray data() const { return m_data; }

private:
    QByteArray m_data;
};

// Reads until the first field that does not fit; from then on every read gives a default value
// and `isIntact` stays false.
class Reader {
public:
    explicit Reader(const QByteArray &data) : m_data(data) {}

    template <typename Number>
    Number number()
    {
        if (!take(sizeof(Number)))
            return 0;
        return qFromBigEndian<Number>(m_data.constData() + m_position - sizeof(Number));
    }
    bool flag() { return number<quint8>() != 0; }
    QByteArray bytes() { return field().toByteArray(); }
    QString text() { return QString::fromUtf8(field()); }
    template <typename T>
    std::optional<T> optional(T (Reader::*read)())
    {
        if (!flag())
            return std::nullopt;
        return (this->*read)();
    }

    [[nodiscard]] bool isIntact() const { return m_isIntact; }
    [[nodiscard]] bool isAtEnd() const { return m_position == m_data.size(); }

private:
    // A length-prefixed run of bytes, viewed in place.
    QByteArrayView field()
    {
        const quint32 size = number<quint32>();
        if (!take(size))
            return {};
        return QByteArrayView(m_data).sliced(m_position - size, size);
    }
    bool take(qsizetype size)
    {
        m_isIntact = m_isIntact && size <= m_data.size() - m_position;
        if (m_isIntact)
            m_position += size;
        return m_isIntact;
    }

    const QByteArray &m_data;
    qsizetype m_position = 0;
    bool m_isIntact = true;
};

[[noreturn]] void refuse(const QString &reason)
{
    throw BookmarkError(BookmarkError::CouldNotResolve{reason});
}

} // namespace

QByteArray BookmarkBlob::encoded() const
{
    Writer out;
    out.number(magic);
    out.number(currentVersion);
    out.text(path);
    out.number(identity.device);
    out.number(identity.inode);
    out.flag(identity.isDirectory);
    out.optional(identity.birthTime, &Writer::number<qint64>);
    out.bytes(identity.handle);
    out.number(volume.device);
    out.text(volume.root);
    out.text(volume.mountPoint);
    out.text(volume.fileSystemType);
    out.text(volume.source);
    out.optional(volume.uuid, &Writer::text);
    return out.data();
}

BookmarkBlob BookmarkBlob::decoded(const QByteArray &data)
{
    if (data.isEmpty())
        refuse(u"The bookmark is empty."_s);
    Reader in(data);
    const auto foundMagic = in.number<quint32>();
    const auto version = in.number<quint16>();
    if (!in.isIntact() || foundMagic != magic || version == 0)
        refuse(u"The bookmark is not in a form Velto can read."_s);
    if (version > currentVersion)
        refuse(u"The bookmark was made by a newer version of Velto."_s);

    BookmarkBlob blob;
    blob.path = in.text();
    blob.identity.device = in.number<quint64>();
    blob.identity.inode = in.number<quint64>();
    blob.identity.isDirectory = in.flag();
    blob.identity.birthTime = in.optional(&Reader::number<qint64>);
    blob.identity.handle = in.bytes();
    blob.volume.device = in.number<quint64>();
    blob.volume.root = in.text();
    blob.volume.mountPoint = in.text();
    blob.volume.fileSystemType = in.text();
    blob.volume.source = in.text();
    blob.volume.uuid = in.optional(&Reader::text);
    if (!in.isIntact() || !in.isAtEnd() || !FolderPaths::relativeTo(blob.path, blob.volume.mountPoint))
        refuse(u"The bookmark is damaged."_s);
    return blob;
}
