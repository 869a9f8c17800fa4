#include "TagPropertyList.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray bigEndian(quint64 value, int width)
{
    QByteArray bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes.append(char(quint8(value >> shift)));
    return bytes;
}

// A binary property list laid out from hand-written objects, with widths of our own choosing.
QByteArray assemble(const QList<QByteArray> &objects, int offsetSize, int referenceSize, quint64 root = 0)
{
    QByteArray out = "bplist00";
    QByteArray table;
    for (const QByteArray &object : objects) {
        table += bigEndian(quint64(out.size()), offsetSize);
        out += object;
    }
    const quint64 tableOffset = quint64(out.size());
    out += table + QByteArray(6, '\0') + char(offsetSize) + char(referenceSize);
    return out + bigEndian(quint64(objects.size()), 8) + bigEndian(root, 8) + bigEndian(tableOffset, 8);
}

QByteArray changed(QByteArray bytes, qsizetype position, char value)
{
    bytes[position] = value;
    return bytes;
}

QStringList repeated(const QString &tag, int count)
{
    QStringList tags;
    for (int index = 0; index < count; ++index)
        tags.append(tag);
    return tags;
}

} // namespace

// Whole lists are written byte for byte (position 0); past the limits of a field only the field is
// compared. Each is read back as written.
TEST(TagPropertyList, WritesTheBinaryLayoutWithFieldsAsWideAsNeeded)
{
    const struct {
        const char *what;
        QStringList tags;
        qsizetype position; // negative: from the end
        QByteArray bytes;
    } cases[] = {
        {"no tags", {}, 0,
         hex("62706c6973743030 a0 08 000000000000 0101 0000000000000001 0000000000000000 0000000000000009")},
        {"ASCII tags, one with a colour", {u"Red\n6"_s, u"Invoices"_s}, 0,
         hex("62706c6973743030 a20102 555265640a36 58496e766f69636573 080b11 000000000000 0101"
             "0000000000000003 0000000000000000 000000000000001a")},
        {"a tag outside ASCII", {u"Café"_s}, 0,
         hex("62706c6973743030 a101 64 0043 0061 0066 00e9 080a 000000000000 0101"
             "0000000000000002 0000000000000000 0000000000000013")},
        {"fourteen elements fit the marker", repeated(u"x"_s, 14), 8, hex("ae01")},
        {"fifteen elements take an integer", repeated(u"x"_s, 15), 8, hex("af100f01")},
        {"fifteen characters take an integer", {QString(15, u'a')}, 10, hex("5f100f61")},
        {"three hundred characters take two bytes", {QString(300, u'a')}, 10, hex("5f11012c61")},
        {"a character beyond 16 bits is two units", {u"🟥"_s}, 10, hex("62d83ddfe5")},
        {"three hundred elements: two-byte offsets and references", repeated(u"x"_s, 300), -26, hex("0202")},
        {"seventy thousand elements: four-byte offsets and references", repeated(u"x"_s, 70000), -26, hex("0404")},
        {"seventy thousand UTF-16 units", {QString(70000, u'é')}, 10, hex("6f1200011170")},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QByteArray encoded = TagPropertyList::encode(c.tags);
        const qsizetype position = c.position < 0 ? encoded.size() + c.position : c.position;
        EXPECT_EQ(position == 0 ? encoded.toHex(' ') : encoded.mid(position, c.bytes.size()).toHex(' '),
                  c.bytes.toHex(' '));
        EXPECT_EQ(TagPropertyList::decode(encoded), c.tags);
    }
}

// Each of the three forms is read; anything but a root array of strings is refused.
TEST(TagPropertyList, ReadsEveryFormAndRefusesDamagedLists)
{
    const QByteArray one = TagPropertyList::encode({u"a"_s}); // array at 8, string at 10, table at 12
    const std::optional<QStringList> refused;
    const struct {
        const char *what;
        QByteArray bytes;
        std::optional<QStringList> tags;
    } cases[] = {
        {"two-byte offsets and references", assemble({hex("a200010002"), hex("5161"), hex("5162")}, 2, 2),
         QStringList{u"a"_s, u"b"_s}},
        {"the root is not the first object", assemble({hex("5161"), hex("a100")}, 1, 1, 1), QStringList{u"a"_s}},
        {"one string object named twice", assemble({hex("a20101"), hex("5161")}, 1, 1), QStringList{u"a"_s, u"a"_s}},
        {"a dictionary at the root", assemble({hex("d10102"), hex("5161"), hex("5162")}, 1, 1), refused},
        {"a number among the tags", assemble({hex("a101"), hex("1005")}, 1, 1), refused},
        {"a reference past the last object", assemble({hex("a105"), hex("5161")}, 1, 1), refused},
        {"a string running into the table", assemble({hex("a101"), hex("5561")}, 1, 1), refused},
        {"a byte above ASCII in an ASCII string", assemble({hex("a101"), hex("51e9")}, 1, 1), refused},
        {"an array count past the data", assemble({hex("af13ffffffffffffffff")}, 1, 1), refused},
        {"an offset size of zero", changed(one, 20, 0), refused},
        {"an offset table past the end", changed(one, 45, 0x40), refused},
        {"a root index past the last object", changed(one, 37, 2), refused},
        {"cut short by a byte", one.chopped(1), refused},
        {"no data at all", QByteArray(), refused},
        {"XML with declaration and doctype",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist>\n<plist version=\"1.0\">\n<array>\n"
         "\t<string>Red&#10;6</string>\n\t<!-- a comment -->\n\t<string>Caf\xc3\xa9 &amp; co</string>\n"
         "</array>\n</plist>\n",
         QStringList{u"Red\n6"_s, u"Café & co"_s}},
        {"XML empty array", "<plist version=\"1.0\"><array/></plist>", QStringList{}},
        {"XML number in the array", "<plist><array><integer>1</integer></array></plist>", refused},
        {"XML text between elements", "<plist><array>junk<string>a</string></array></plist>", refused},
        {"XML never closed", "<plist><array><string>a</string>", refused},
        {"text with bare and quoted words", "( Red, \"Invoices 2024\" )", QStringList{u"Red"_s, u"Invoices 2024"_s}},
        {"text with escapes", "(\"Red\\n6\", 'x\\'y', \"\\U00e9\\101\\q\") // end",
         QStringList{u"Red\n6"_s, u"x'y"_s, u"éAq"_s}},
        {"text without a comma", "(a b)", refused},
        {"text followed by more", "(a) b", refused},
        {"text not UTF-8", "(\xff)", refused},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(TagPropertyList::decode(c.bytes), c.tags);
    }
}
