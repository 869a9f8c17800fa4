#include "ProjectPalette.h"

#include <algorithm>
#include <cctype>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

bool isHexDigit(QChar character)
{
    return character.unicode() < 128 && std::isxdigit(character.unicode()) != 0;
}

} // namespace

const QList<ProjectPalette::Slot> &ProjectPalette::orderedSlots()
{
    // Green keeps its value in the dark appearance on purpose: it reads well on both.
    static const QList<Slot> palette{
        {u"Blue"_s, u"#2A78D6"_s, u"#3987E5"_s},
        {u"Orange"_s, u"#EB6834"_s, u"#D95926"_s},
        {u"Aqua"_s, u"#1BAF7A"_s, u"#199E70"_s},
        {u"Yellow"_s, u"#EDA100"_s, u"#C98500"_s},
        {u"Magenta"_s, u"#E87BA4"_s, u"#D55181"_s},
        {u"Green"_s, u"#008300"_s, u"#008300"_s},
        {u"Violet"_s, u"#4A3AA7"_s, u"#9085E9"_s},
        {u"Red"_s, u"#E34948"_s, u"#E66767"_s},
    };
    return palette;
}

QString ProjectPalette::colorDealtAfter(const QString &color)
{
    const QList<Slot> &palette = orderedSlots();
    const auto found = std::ranges::find(palette, color, &Slot::light);
    if (found == palette.cend())
        return color;
    return palette.at((std::distance(palette.cbegin(), found) + 1) % palette.size()).light;
}

QString ProjectPalette::neutral()
{
    return u"#8E8E93"_s;
}

QString ProjectPalette::darkVariant(const QString &stored)
{
    const QString key = stored.toUpper();
    for (const Slot &slot : orderedSlots()) {
        if (slot.light.toUpper() == key)
            return slot.dark;
    }
    return stored;
}

std::optional<QColor> colorFromHex(const QString &text)
{
    const QStringView digits = text.startsWith(u'#') ? QStringView(text).mid(1) : QStringView(text);
    if (digits.size() != 6 || !std::all_of(digits.begin(), digits.end(), isHexDigit))
        return std::nullopt;
    const uint value = digits.toUInt(nullptr, 16);
    return QColor::fromRgb(int((value >> 16) & 0xFF), int((value >> 8) & 0xFF), int(value & 0xFF));
}
