#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The palette's two drawing steps for the views: a stored project or tag colour becomes the colour
// to paint in the current appearance. Also the palette itself, for the colour menu.
class PaletteColors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    // The slots in dealing order, each a map of name, light and dark.
    Q_PROPERTY(QVariantList paletteSlots READ paletteSlots CONSTANT)

public:
    using QObject::QObject;

    // One per engine, owned by it.
    static PaletteColors *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    [[nodiscard]] static QVariantList paletteSlots();

    // The dark partner in the dark appearance, then read as hexadecimal digits; an invalid colour
    // when the text is no colour, so that the view falls back to its secondary colour.
    Q_INVOKABLE [[nodiscard]] QColor resolve(const QString &stored, bool dark) const;

    // The colour the next new project starts with after one made in `color`.
    Q_INVOKABLE [[nodiscard]] QString dealtAfter(const QString &color) const;
};
