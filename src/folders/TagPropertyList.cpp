#include "TagPropertyList.h"

#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView binaryMagic = "bplist00";
constexpr qsizetype trailerSize = 32;

enum ObjectType : quint8 { integerType = 0x1, asciiStringType = 0x5, utf16StringType = 0x6, arrayType = 0xA };

// ---- Binary form: objects, an offset table, and a trailer that says how to read the table.

class BinaryReader {
public:
    // Absent unless the trailer describes a table and a root that lie inside the data.
    static std::optional<BinaryReader> open(QByteArrayView data)
    {
        if (data.size() < binaryMagic.size() + 2 + trailerSize || !data.startsWith(binaryMagic))
            return std::nullopt;
        BinaryReader reader(data);
        const qsizetype trailer = data.size() - trailerSize;
        reader.m_offsetSize = quint8(data[trailer + 6]);
        reader.m_referenceSize = quint8(data[trailer + 7]);
        if (!isWidth(reader.m_offsetSize) || !isWidth(reader.m_referenceSize))
            return std::nullopt;
        reader.m_objectCount = *reader.number(trailer + 8, 8, data.size());
        reader.m_root = *reader.number(trailer + 16, 8, data.size());
        const quint64 table = *reader.number(trailer + 24, 8, data.size());
        if (reader.m_objectCount == 0 || reader.m_root >= reader.m_objectCount || table <= quint64(binaryMagic.size())
            || table >= quint64(trailer)
            || reader.m_objectCount > (quint64(trailer) - table) / quint64(reader.m_offsetSize))
            return std::nullopt;
        reader.m_tableOffset = qsizetype(table);
        return reader;
    }

    [[nodiscard]] std::optional<QStringList> rootStrings() const
    {
        const auto root = offsetOf(m_root);
        if (!root || type(*root) != arrayType)
            return std::nullopt;
        const auto elements = extentAt(*root);
        if (!elements || elements->count > quint64(m_tableOffset - elements->start) / quint64(m_referenceSize))
            return std::nullopt;
        QStringList strings;
        strings.reserve(qsizetype(elements->count));
        for (quint64 index = 0; index < elements->count; ++index) {
            const auto reference = number(elements->start + qsizetype(index) * m_referenceSize, m_referenceSize,
                                          m_tableOffset);
            const auto offset = reference ? offsetOf(*reference) : std::nullopt;
            const auto string = offset ? stringAt(*offset) : std::nullopt;
            if (!string)
                return std::nullopt;
            strings.append(*string);
        }
        return strings;
    }

private:
    // How many items an object holds, and where they begin.
    struct Extent {
        quint64 count;
        qsizetype start;
    };

    explicit BinaryReader(QByteArrayView data) : m_data(data) {}

    static bool isWidth(int width) { return width >= 1 && width <= 8; }

    [[nodiscard]] quint8 type(qsizetype offset) const { return quint8(m_data[offset]) >> 4; }

    // The big-endian unsigned number of `width` bytes at `position`, if it ends by `end`.
    [[nodiscard]] std::optional<quint64> number(qsizetype position, int width, qsizetype end) const
    {
        if (position < 0 || position > end - width)
            return std::nullopt;
        quint64 value = 0;
        for (int index = 0; index < width; ++index)
            value = (value << 8) | quint8(m_data[position + index]);
        return value;
    }

    [[nodiscard]] std::optional<qsizetype> offsetOf(quint64 reference) const
    {
        if (reference >= m_objectCount)
            return std::nullopt;
        const auto offset = number(m_tableOffset + qsizetype(reference) * m_offsetSize, m_offsetSize,
                                   m_data.size() - trailerSize);
        if (!offset || *offset < quint64(binaryMagic.size()) || *offset >= quint64(m_tableOffset))
            return std::nullopt;
        return qsizetype(*offset);
    }

    // A count below 15 stands in the marker's low nibble; a larger one follows as an integer object.
    [[nodiscard]] std::optional<Extent> extentAt(qsizetype offset) const
    {
        const quint8 nibble = quint8(m_data[offset]) & 0x0F;
        if (nibble != 0x0F)
            return Extent{nibble, offset + 1};
        const qsizetype integer = offset + 1;
        if (integer >= m_tableOffset || type(integer) != integerType)
            return std::nullopt;
        const int width = 1 << (quint8(m_data[integer]) & 0x0F);
        const auto count = width <= 8 ? number(integer + 1, width, m_tableOffset) : std::nullopt;
        if (!count)
            return std::nullopt;
        return Extent{*count, integer + 1 + width};
    }

    [[nodiscard]] std::optional<QString> stringAt(qsizetype offset) const
    {
        const quint8 kind = type(offset);
        if (kind != asciiStringType && kind != utf16StringType)
            return std::nullopt;
        const auto extent = extentAt(offset);
        const qsizetype unitSize = kind == asciiStringType ? 1 : 2;
        if (!extent || extent->count > quint64(m_tableOffset - extent->start) / quint64(unitSize))
            return std::nullopt;
        const QByteArrayView bytes = m_data.sliced(extent->start, qsizetype(extent->count) * unitSize);
        if (kind == asciiStringType) {
            if (std::any_of(bytes.begin(), bytes.end(), [](char byte) { return quint8(byte) > 0x7F; }))
                return std::nullopt;
            return QString::fromLatin1(bytes);
        }
        QString text(qsizetype(extent->count), Qt::Uninitialized);
        for (qsizetype index = 0; index < text.size(); ++index)
            text[index] = QChar(char16_t(quint8(bytes[2 * index]) << 8 | quint8(bytes[2 * index + 1])));
        return text;
    }

    QByteArrayView m_data;
    int m_offsetSize = 0;
    int m_referenceSize = 0;
    quint64 m_objectCount = 0;
    quint64 m_root = 0;
    qsizetype m_tableOffset = 0;
};

// The fewest bytes among 1, 2, 4 and 8 that hold `value`.
int widthFor(quint64 value)
{
    if (value <= 0xFF)
        return 1;
    if (value <= 0xFFFF)
        return 2;
    return value <= 0xFFFFFFFFu ? 4 : 8;
}

void appendNumber(QByteArray &out, quint64 value, int width)
{
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        out.append(char(quint8(value >> shift)));
}

void appendMarker(QByteArray &out, ObjectType type, quint64 count)
{
    if (count < 0x0F) {
        out.append(char(quint8(type << 4 | count)));
        return;
    }
    out.append(char(quint8(type << 4 | 0x0F)));
    const int width = widthFor(count);
    const int exponent = width == 1 ? 0 : width == 2 ? 1 : width == 4 ? 2 : 3;
    out.append(char(quint8(integerType << 4 | exponent)));
    appendNumber(out, count, width);
}

void appendString(QByteArray &out, const QString &text)
{
    const bool isAscii = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
    if (isAscii) {
        appendMarker(out, asciiStringType, quint64(text.size()));
        out.append(text.toLatin1());
        return;
    }
    appendMarker(out, utf16StringType, quint64(text.size()));
    for (QChar unit : text)
        appendNumber(out, unit.unicode(), 2);
}

// ---- XML form: <plist version="1.0"><array><string>…</string></array></plist>.

enum class XmlStep { element, end, invalid };

// Moves to the next child element of the current one, passing blanks, comments and declarations.
XmlStep nextChild(QXmlStreamReader &reader)
{
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: return XmlStep::element;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument: return XmlStep::end;
        case QXmlStreamReader::Characters:
            if (!reader.isWhitespace())
                return XmlStep::invalid;
            break;
        case QXmlStreamReader::StartDocument:
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::ProcessingInstruction: break;
        default: return XmlStep::invalid;
        }
    }
    return XmlStep::invalid;
}

std::optional<QStringList> xmlStringArray(QXmlStreamReader &reader)
{
    if (reader.name() != u"array"_s)
        return std::nullopt;
    QStringList strings;
    for (XmlStep step = nextChild(reader); step != XmlStep::end; step = nextChild(reader)) {
        if (step == XmlStep::invalid || reader.name() != u"string"_s)
            return std::nullopt;
        strings.append(reader.readElementText());
        if (reader.hasError())
            return std::nullopt;
    }
    return strings;
}

std::optional<QStringList> decodeXml(const QByteArray &data)
{
    QXmlStreamReader reader(data);
    if (nextChild(reader) != XmlStep::element)
        return std::nullopt;
    const bool isWrapped = reader.name() == u"plist"_s;
    if (isWrapped && nextChild(reader) != XmlStep::element)
        return std::nullopt;
    auto strings = xmlStringArray(reader);
    if (!strings || (isWrapped && nextChild(reader) != XmlStep::end))
        return std::nullopt;
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        return std::nullopt;
    return strings;
}

// ---- Old-style text form: ( Red, "Invoices" ), with C comments.

class TextScanner {
public:
    explicit TextScanner(QStringView text) : m_text(text) {}

    [[nodiscard]] bool atEnd() const { return m_at == m_text.size(); }

    // Passes blanks and comments; false for a comment that never ends.
    bool skipBlanks()
    {
        while (!atEnd()) {
            if (m_text[m_at].isSpace()) {
                ++m_at;
            } else if (m_text.sliced(m_at).startsWith(u"//")) {
                const qsizetype end = m_text.indexOf(u'\n', m_at);
                m_at = end < 0 ? m_text.size() : end + 1;
            } else if (m_text.sliced(m_at).startsWith(u"/*")) {
                const qsizetype end = m_text.indexOf(u"*/", m_at + 2);
                if (end < 0)
                    return false;
                m_at = end + 2;
            } else {
                return true;
            }
        }
        return true;
    }

    bool take(QChar wanted)
    {
        if (atEnd() || m_text[m_at] != wanted)
            return false;
        ++m_at;
        return true;
    }

    std::optional<QString> string()
    {
        if (atEnd())
            return std::nullopt;
        const QChar first = m_text[m_at];
        if (first == u'"' || first == u'\'') {
            ++m_at;
            return quoted(first);
        }
        const qsizetype start = m_at;
        while (!atEnd() && isUnquotedCharacter(m_text[m_at]))
            ++m_at;
        if (m_at == start)
            return std::nullopt;
        return m_text.sliced(start, m_at - start).toString();
    }

private:
    static bool isUnquotedCharacter(QChar c)
    {
        return (c.unicode() < 0x80 && c.isLetterOrNumber()) || u"_$+/:.-"_s.contains(c);
    }

    std::optional<QString> quoted(QChar quote)
    {
        QString text;
        while (!atEnd()) {
            const QChar c = m_text[m_at++];
            if (c == quote)
                return text;
            if (c != u'\\') {
                text += c;
            } else if (atEnd()) {
                return std::nullopt;
            } else {
                text += escape();
            }
        }
        return std::nullopt;
    }

    // The character a backslash sequence stands for; the backslash is already read.
    QChar escape()
    {
        const QChar c = m_text[m_at++];
        switch (c.unicode()) {
        case u'a': return QChar(u'\a');
        case u'b': return QChar(u'\b');
        case u'f': return QChar(u'\f');
        case u'n': return QChar(u'\n');
        case u'r': return QChar(u'\r');
        case u't': return QChar(u'\t');
        case u'v': return QChar(u'\v');
        case u'U': return QChar(char16_t(digits(16, 4)));
        default: break;
        }
        if (c >= u'0' && c <= u'7') {
            --m_at;
            return QChar(char16_t(digits(8, 3)));
        }
        return c;
    }

    // Up to `most` digits of `base` as a number.
    uint digits(int base, int most)
    {
        uint value = 0;
        for (int count = 0; count < most && !atEnd(); ++count) {
            const int digit = digitValue(m_text[m_at]);
            if (digit < 0 || digit >= base)
                break;
            value = value * uint(base) + uint(digit);
            ++m_at;
        }
        return value;
    }

    static int digitValue(QChar c)
    {
        const char16_t code = c.unicode();
        if (code >= u'0' && code <= u'9')
            return code - u'0';
        if (code >= u'a' && code <= u'f')
            return code - u'a' + 10;
        if (code >= u'A' && code <= u'F')
            return code - u'A' + 10;
        return -1;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

std::optional<QStringList> decodeText(const QByteArray &data)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(data);
    if (decoder.hasError())
        return std::nullopt;
    TextScanner scanner(text);
    if (!scanner.skipBlanks() || !scanner.take(u'('))
        return std::nullopt;
    QStringList strings;
    while (true) {
        if (!scanner.skipBlanks())
            return std::nullopt;
        if (scanner.take(u')'))
            break;
        const auto string = scanner.string();
        if (!string || !scanner.skipBlanks())
            return std::nullopt;
        strings.append(*string);
        if (scanner.take(u')'))
            break;
        if (!scanner.take(u','))
            return std::nullopt;
    }
    if (!scanner.skipBlanks() || !scanner.atEnd())
        return std::nullopt;
    return strings;
}

bool looksLikeXml(QByteArrayView data)
{
    if (data.startsWith("\xFE\xFF") || data.startsWith("\xFF\xFE"))
        return true;
    if (data.startsWith("\xEF\xBB\xBF"))
        data = data.sliced(3);
    const auto first = std::find_if(data.begin(), data.end(), [](char c) { return !QChar::isSpace(uchar(c)); });
    return first != data.end() && *first == '<';
}

} // namespace

std::optional<QStringList> TagPropertyList::decode(const QByteArray &data)
{
    if (data.startsWith("bplist")) {
        const auto reader = BinaryReader::open(data);
        return reader ? reader->rootStrings() : std::nullopt;
    }
    return looksLikeXml(data) ? decodeXml(data) : decodeText(data);
}

QByteArray TagPropertyList::encode(const QStringList &tags)
{
    const quint64 objectCount = quint64(tags.size()) + 1;
    const int referenceSize = widthFor(objectCount - 1);

    QByteArray out = binaryMagic.toByteArray();
    QList<quint64> offsets{quint64(out.size())};
    appendMarker(out, arrayType, quint64(tags.size()));
    for (quint64 reference = 1; reference < objectCount; ++reference)
        appendNumber(out, reference, referenceSize);
    for (const QString &tag : tags) {
        offsets.append(quint64(out.size()));
        appendString(out, tag);
    }

    const quint64 tableOffset = quint64(out.size());
    const int offsetSize = widthFor(offsets.last());
    for (quint64 offset : offsets)
        appendNumber(out, offset, offsetSize);

    out.append(6, '\0');
    out.append(char(offsetSize));
    out.append(char(referenceSize));
    appendNumber(out, objectCount, 8);
    appendNumber(out, 0, 8);
    appendNumber(out, tableOffset, 8);
    return out;
}
