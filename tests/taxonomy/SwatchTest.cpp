#include <QColor>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A swatch made in its own engine, under the appearance asked for.
class SwatchDrawing {
public:
    SwatchDrawing(const QString &hex, bool dark)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        m_theme.reset(create("import QtQml\nimport Velto\nQtObject { readonly property QtObject theme: Theme }", {}));
        if (m_theme)
            m_theme->property("theme").value<QObject *>()->setProperty("dark", dark);
        m_swatch.reset(qobject_cast<QQuickItem *>(create("import Velto\nSwatch { size: 6 }", {{u"hex"_s, hex}})));
    }

    // The theme the swatch reads, shared by everything in the engine.
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
        if (!component.isReady()) {
            ADD_FAILURE() << component.errorString().toStdString();
            return nullptr;
        }
        return component.createWithInitialProperties(properties);
    }

    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_theme;
    std::unique_ptr<QQuickItem> m_swatch;
};

TEST(Swatch, FillsWithThePaletteColourOfTheAppearance)
{
    const std::optional<QColor> secondary;
    const struct {
        QString hex;
        bool dark;
        std::optional<QColor> fill; // absent: the theme's secondary text colour
    } cases[] = {
        {u"#2A78D6"_s, false, QColor(0x2A, 0x78, 0xD6)},
        {u"#2A78D6"_s, true, QColor(0x39, 0x87, 0xE5)},
        {u"#2a78d6"_s, true, QColor(0x39, 0x87, 0xE5)},
        {u"#008300"_s, true, QColor(0x00, 0x83, 0x00)},
        {u"#123ABC"_s, false, QColor(0x12, 0x3A, 0xBC)},
        {u"#123ABC"_s, true, QColor(0x12, 0x3A, 0xBC)},
        {u"#8E8E93"_s, false, QColor(0x8E, 0x8E, 0x93)},
        {u"#8E8E93"_s, true, QColor(0x8E, 0x8E, 0x93)},
        // Six digits without the hash sign draw, but match no palette light value.
        {u"2A78D6"_s, false, QColor(0x2A, 0x78, 0xD6)},
        {u"2A78D6"_s, true, QColor(0x2A, 0x78, 0xD6)},
        {u"#2A78D"_s, false, secondary},
        {u"#2A78D6F"_s, true, secondary},
        {u"#2A78G6"_s, false, secondary},
        {u"#2A78G6"_s, true, secondary},
        {u""_s, true, secondary},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE((c.hex + (c.dark ? u" dark"_s : u" light"_s)).toStdString());
        SwatchDrawing swatch(c.hex, c.dark);
        const QColor expected = c.fill.value_or(swatch.theme()->property("secondaryText").value<QColor>());
        EXPECT_EQ(swatch.fill(), expected);
    }
}

TEST(Swatch, FollowsTheAppearanceWhenItChanges)
{
    SwatchDrawing swatch(u"#E34948"_s, false);
    EXPECT_EQ(swatch.fill(), QColor(0xE3, 0x49, 0x48));
    swatch.theme()->setProperty("dark", true);
    EXPECT_EQ(swatch.fill(), QColor(0xE6, 0x67, 0x67));
}

} // namespace
