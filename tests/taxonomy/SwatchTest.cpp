#include <QColor>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A swatch made in its own engine, with the theme it reads.
class SwatchDrawing {
public:
    explicit SwatchDrawing(const QString &hex)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        m_theme.reset(create("import QtQml\nimport Velto\nQtObject { readonly property QtObject theme: Theme }", {}));
        m_swatch.reset(qobject_cast<QQuickItem *>(create("import Velto\nSwatch { size: 6 }", {{u"hex"_s, hex}})));
    }

    [[nodiscard]] QObject *theme() const { return m_theme ? m_theme->property("theme").value<QObject *>() : nullptr; }

    // The colour the dot is filled with.
    [[nodiscard]] QColor fill() const
    {
        return m_swatch ? m_swatch->childItems().value(0)->property("color").value<QColor>() : QColor();
    }

private:
    QObject *create(const QByteArray &source, const QVariantMap &properties)
    {
        QQmlComponent component(&m_engine);
        component.setData(source, QUrl());
        EXPECT_TRUE(component.isReady()) << component.errorString().toStdString();
        return component.createWithInitialProperties(properties);
    }

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_theme;
    std::unique_ptr<QQuickItem> m_swatch;
};

// The dot follows the appearance as it changes; a text that is no colour takes the theme's
// secondary text colour (absent below).
TEST(Swatch, FillsWithThePaletteColourOfTheAppearance)
{
    const std::optional<QColor> secondary;
    const struct {
        QString hex;
        std::optional<QColor> light;
        std::optional<QColor> dark;
    } cases[] = {
        {u"#2A78D6"_s, QColor(0x2A, 0x78, 0xD6), QColor(0x39, 0x87, 0xE5)},
        {u"#123ABC"_s, QColor(0x12, 0x3A, 0xBC), QColor(0x12, 0x3A, 0xBC)},
        // Six digits without the hash sign draw, but match no palette light value.
        {u"2A78D6"_s, QColor(0x2A, 0x78, 0xD6), QColor(0x2A, 0x78, 0xD6)},
        {u"#2A78G6"_s, secondary, secondary},
        {u""_s, secondary, secondary},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.hex.toStdString());
        SwatchDrawing swatch(c.hex);
        ASSERT_NE(swatch.theme(), nullptr);
        ASSERT_TRUE(swatch.fill().isValid());
        for (const bool dark : {false, true}) {
            swatch.theme()->setProperty("dark", dark);
            const QColor secondaryText = swatch.theme()->property("secondaryText").value<QColor>();
            EXPECT_EQ(swatch.fill(), (dark ? c.dark : c.light).value_or(secondaryText)) << (dark ? "dark" : "light");
        }
    }
}

} // namespace
