#include "FlowLayout.h"
#include "FlowRows.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTest>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

TEST(FlowRows, BreaksARowWhenTheNextItemWithItsSpacingWouldNotFit)
{
    const qreal unbounded = std::numeric_limits<qreal>::infinity();
    const struct {
        const char *name;
        QList<qreal> widths; // of items 10 tall
        qreal maxWidth, spacing;
        QList<QList<qsizetype>> rows;
        QList<qreal> rowWidths;
    } cases[] = {
        {"no items make no rows", {}, 100, 5, {}, {}},
        {"items that fill the width exactly share a row", {30, 30, 30}, 100, 5, {{0, 1, 2}}, {100}},
        {"a fraction too wide wraps", {30, 30, 30.5}, 100, 5, {{0, 1}, {2}}, {65, 30.5}},
        {"the spacing counts towards the fit", {50, 50}, 100, 5, {{0}, {1}}, {50, 50}},
        {"a first item wider than the row stands alone", {150, 20, 20}, 100, 5, {{0}, {1, 2}}, {150, 45}},
        {"a wide item in the middle closes the row before it", {40, 150, 40, 40}, 100, 5, {{0}, {1}, {2, 3}},
         {40, 150, 85}},
        {"no width puts every item alone", {10, 10}, 0, 5, {{0}, {1}}, {10, 10}},
        {"an unbounded width puts every item on one row", {400, 400, 400}, unbounded, 5, {{0, 1, 2}}, {1210}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        QList<QSizeF> sizes;
        for (const qreal width : c.widths)
            sizes.append(QSizeF(width, 10));
        QList<QList<qsizetype>> rows;
        QList<qreal> widths;
        for (const FlowRows::Row &row : FlowRows::rows(sizes, c.maxWidth, c.spacing)) {
            rows.append(row.indices);
            widths.append(row.width);
        }
        EXPECT_EQ(rows, c.rows);
        EXPECT_EQ(widths, c.rowWidths);
    }
}

// A flow of chips in a shown window, so that it lays out as it does on screen. The chips' widths
// are a property of the flow, so a test can change them.
class FlowLayoutInWindow : public ::testing::Test {
protected:
    void load(const QByteArray &widthLine)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Velto\nWindow { width: 400; height: 300; visible: true\n"
                          "FlowLayout { objectName: \"flow\"; property alias widths: repeater.model\n"
                          + widthLine + "\nspacing: 5\n"
                          "Repeater { id: repeater; model: [40, 40, 40, 30]\n"
                          "Rectangle { required property int modelData; objectName: \"chip\"\n"
                          "width: modelData; height: 10 + modelData / 10 } } } }",
                          QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        ASSERT_NE(m_window, nullptr) << component.errorString().toStdString();
        m_flow = m_window->findChild<FlowLayout *>(u"flow"_s);
        ASSERT_NE(m_flow, nullptr);
    }

    [[nodiscard]] QList<QQuickItem *> chips() const
    {
        QList<QQuickItem *> chips = m_flow->childItems();
        chips.removeIf([](const QQuickItem *child) { return child->objectName() != u"chip"_s; });
        return chips;
    }

    // Waits for the flow to settle on these positions and this height, so that a failure shows
    // where it did settle.
    void expectLayout(const QList<QPointF> &positions, qreal implicitHeight) const
    {
        const auto chipPositions = [&] {
            QList<QPointF> found;
            for (const QQuickItem *chip : chips())
                found.append(chip->position());
            return found;
        };
        const auto settled = [&] { return chipPositions() == positions && m_flow->implicitHeight() == implicitHeight; };
        if (!QTest::qWaitFor(settled, 2000)) {
            EXPECT_EQ(chipPositions(), positions);
            EXPECT_EQ(m_flow->implicitHeight(), implicitHeight);
        }
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    FlowLayout *m_flow = nullptr;
};

// Chips of 40, 40, 40 and 30 wide are 14, 14, 14 and 13 tall.
TEST_F(FlowLayoutInWindow, ChipsWrapAgainWhenTheWidthOrAChipChanges)
{
    load("width: 100");
    expectLayout({{0, 0}, {45, 0}, {0, 19}, {45, 19}}, 14 + 5 + 14);

    m_flow->setWidth(130);
    expectLayout({{0, 0}, {45, 0}, {90, 0}, {0, 19}}, 14 + 5 + 13);

    m_flow->setWidth(100);
    chips().at(0)->setWidth(60);
    expectLayout({{0, 0}, {0, 19}, {45, 19}, {0, 38}}, 14 + 5 + 14 + 5 + 13);

    // A hidden chip is left where it was.
    chips().at(0)->setVisible(false);
    expectLayout({{0, 0}, {0, 0}, {45, 0}, {0, 19}}, 14 + 5 + 13);
}

TEST_F(FlowLayoutInWindow, ChipsAddedOrRemovedLaterChangeTheFlow)
{
    load("width: 100");
    m_flow->setProperty("widths", QVariant::fromValue(QList<int>{40, 40, 40, 40, 40}));
    expectLayout({{0, 0}, {45, 0}, {0, 19}, {45, 19}, {0, 38}}, 3 * 14 + 2 * 5);

    m_flow->setProperty("widths", QVariant::fromValue(QList<int>{}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_flow->implicitHeight() == 0; }, 2000));
    EXPECT_EQ(m_flow->implicitWidth(), 0);
    EXPECT_EQ(m_flow->width(), 100);
}

TEST_F(FlowLayoutInWindow, WithoutAWidthOfItsOwnEveryChipStandsOnOneRow)
{
    load("");
    expectLayout({{0, 0}, {45, 0}, {90, 0}, {135, 0}}, 14);
    EXPECT_EQ(m_flow->implicitWidth(), 165);
    EXPECT_EQ(m_flow->width(), 165);
}

} // namespace
