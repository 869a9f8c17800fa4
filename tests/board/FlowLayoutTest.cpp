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

QList<QSizeF> sizesOf(const QList<qreal> &widths, qreal height = 10)
{
    QList<QSizeF> sizes;
    for (const qreal width : widths)
        sizes.append(QSizeF(width, height));
    return sizes;
}

QList<QList<qsizetype>> indicesOf(const QList<FlowRows::Row> &rows)
{
    QList<QList<qsizetype>> indices;
    for (const FlowRows::Row &row : rows)
        indices.append(row.indices);
    return indices;
}

TEST(FlowRows, BreaksARowWhenTheNextItemWithItsSpacingWouldNotFit)
{
    const qreal unbounded = std::numeric_limits<qreal>::infinity();
    const struct {
        const char *name;
        QList<qreal> widths;
        qreal maxWidth;
        qreal spacing;
        QList<QList<qsizetype>> rows;
        QList<qreal> rowWidths;
    } cases[] = {
        {"no items make no rows", {}, 100, 5, {}, {}},
        {"items that fill the width exactly share a row", {30, 30, 30}, 100, 5, {{0, 1, 2}}, {100}},
        {"a fraction too wide wraps", {30, 30, 30.5}, 100, 5, {{0, 1}, {2}}, {65, 30.5}},
        {"the spacing counts towards the fit", {50, 50}, 100, 5, {{0}, {1}}, {50, 50}},
        {"without spacing the same items fit", {50, 50}, 100, 0, {{0, 1}}, {100}},
        {"a first item wider than the row stands alone", {150, 20, 20}, 100, 5, {{0}, {1, 2}}, {150, 45}},
        {"a wide item in the middle closes the row before it",
         {40, 150, 40, 40},
         100,
         5,
         {{0}, {1}, {2, 3}},
         {40, 150, 85}},
        {"a single item wider than the row is one row as wide as it", {240}, 100, 5, {{0}}, {240}},
        {"no width puts every item alone", {10, 10, 10}, 0, 5, {{0}, {1}, {2}}, {10, 10, 10}},
        {"an unbounded width puts every item on one row", {400, 400, 400}, unbounded, 5, {{0, 1, 2}}, {1210}},
        {"wrapped rows wrap again", {45, 45, 45, 45, 45}, 100, 5, {{0, 1}, {2, 3}, {4}}, {95, 95, 45}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const QList<FlowRows::Row> rows = FlowRows::rows(sizesOf(c.widths), c.maxWidth, c.spacing);
        EXPECT_EQ(indicesOf(rows), c.rows);
        QList<qreal> widths;
        for (const FlowRows::Row &row : rows)
            widths.append(row.width);
        EXPECT_EQ(widths, c.rowWidths);
    }
}

TEST(FlowRows, RowsStackByTheirTallestItemAndItemsKeepToTheTopLeft)
{
    const QList<QSizeF> sizes{{40, 10}, {40, 24}, {40, 16}, {30, 8}};
    const QList<FlowRows::Row> rows = FlowRows::rows(sizes, 100, 6);
    ASSERT_EQ(indicesOf(rows), (QList<QList<qsizetype>>{{0, 1}, {2, 3}}));
    EXPECT_EQ(rows.at(0).height, 24);
    EXPECT_EQ(rows.at(1).height, 16);
    EXPECT_EQ(FlowRows::stackedHeight(rows, 6), 24 + 6 + 16);
    EXPECT_EQ(FlowRows::widestRow(rows), 86);
    EXPECT_EQ(FlowRows::positions(sizes, rows, 6), (QList<QPointF>{{0, 0}, {46, 0}, {0, 30}, {46, 30}}));
}

// A flow of chips in a shown window, so that it lays out as it does on screen.
class FlowLayoutInWindow : public ::testing::Test {
protected:
    void load(const QByteArray &flowSource)
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Velto\nWindow { width: 400; height: 300; visible: true\n" + flowSource
                              + "\n}",
                          QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        ASSERT_NE(m_window, nullptr) << component.errorString().toStdString();
        m_flow = m_window->findChild<FlowLayout *>(u"flow"_s);
        ASSERT_NE(m_flow, nullptr);
    }

    [[nodiscard]] QList<QQuickItem *> chips() const
    {
        QList<QQuickItem *> chips;
        for (QQuickItem *child : m_flow->childItems()) {
            if (child->objectName() == u"chip"_s)
                chips.append(child);
        }
        return chips;
    }

    [[nodiscard]] QList<QPointF> chipPositions() const
    {
        QList<QPointF> positions;
        for (const QQuickItem *chip : chips())
            positions.append(chip->position());
        return positions;
    }

    // Waits for the flow to settle on these positions and this height, so that a failure shows
    // where it did settle.
    void expectLayout(const QList<QPointF> &positions, qreal implicitHeight) const
    {
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

const QByteArray chipsOfWidths40_40_40_30 = R"(
    FlowLayout {
        objectName: "flow"
        width: 100
        spacing: 5
        Repeater {
            model: [40, 40, 40, 30]
            Rectangle {
                required property int modelData
                objectName: "chip"
                width: modelData
                height: 10 + modelData / 10
            }
        }
    })";

TEST_F(FlowLayoutInWindow, ChipsWrapAgainWhenTheWidthChanges)
{
    load(chipsOfWidths40_40_40_30);
    expectLayout({{0, 0}, {45, 0}, {0, 19}, {45, 19}}, 14 + 5 + 14);

    m_flow->setWidth(130);
    expectLayout({{0, 0}, {45, 0}, {90, 0}, {0, 19}}, 14 + 5 + 13);

    m_flow->setWidth(20);
    expectLayout({{0, 0}, {0, 19}, {0, 38}, {0, 57}}, 14 * 3 + 13 + 3 * 5);
}

TEST_F(FlowLayoutInWindow, AChipThatGrowsOrGoesPushesTheOthersOn)
{
    load(chipsOfWidths40_40_40_30);
    expectLayout({{0, 0}, {45, 0}, {0, 19}, {45, 19}}, 14 + 5 + 14);

    chips().at(0)->setWidth(60);
    expectLayout({{0, 0}, {0, 19}, {45, 19}, {0, 38}}, 14 + 5 + 14 + 5 + 13);

    // A hidden chip is left where it was.
    chips().at(0)->setVisible(false);
    expectLayout({{0, 0}, {0, 0}, {45, 0}, {0, 19}}, 14 + 5 + 13);
}

TEST_F(FlowLayoutInWindow, ChipsAddedLaterJoinTheFlow)
{
    load(R"(
        FlowLayout {
            objectName: "flow"
            property alias widths: repeater.model
            width: 100
            spacing: 5
            Repeater {
                id: repeater
                model: [40]
                Rectangle {
                    required property int modelData
                    objectName: "chip"
                    width: modelData
                    height: 10
                }
            }
        })");
    expectLayout({{0, 0}}, 10);

    m_flow->setProperty("widths", QVariant::fromValue(QList<int>{40, 40, 40}));
    expectLayout({{0, 0}, {45, 0}, {0, 15}}, 25);

    m_flow->setProperty("widths", QVariant::fromValue(QList<int>{}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_flow->implicitHeight() == 0; }, 2000));
    EXPECT_EQ(m_flow->implicitWidth(), 0);
    EXPECT_EQ(m_flow->width(), 100);
}

TEST_F(FlowLayoutInWindow, WithoutAWidthOfItsOwnEveryChipStandsOnOneRow)
{
    load(R"(
        FlowLayout {
            objectName: "flow"
            spacing: 5
            Repeater {
                model: [40, 40, 40, 30]
                Rectangle {
                    required property int modelData
                    objectName: "chip"
                    width: modelData
                    height: 10
                }
            }
        })");
    expectLayout({{0, 0}, {45, 0}, {90, 0}, {135, 0}}, 10);
    EXPECT_EQ(m_flow->implicitWidth(), 165);
    EXPECT_EQ(m_flow->width(), 165);
}

} // namespace
