#include "PaletteColors.h"

#include "ProjectPalette.h"

#include <QVariantMap>

using namespace Qt::StringLiterals;

PaletteColors *PaletteColors::create(QQmlEngine *, QJSEngine *)
{
    return new PaletteColors;
}

QVariantList PaletteColors::paletteSlots()
{
    QVariantList list;
    for (const ProjectPalette::Slot &slot : ProjectPalette::orderedSlots())
        list.append(QVariantMap{{u"name"_s, slot.name}, {u"light"_s, slot.light}, {u"dark"_s, slot.dark}});
    return list;
}

QColor PaletteColors::resolve(const QString &stored, bool dark) const
{
    return colorFromHex(dark ? ProjectPalette::darkVariant(stored) : stored).value_or(QColor());
}

QString PaletteColors::dealtAfter(const QString &color) const
{
    return ProjectPalette::colorDealtAfter(color);
}
