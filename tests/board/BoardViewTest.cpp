#include "BoardFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The board's main view over a real model, in a window offscreen, as a user would meet it.
class BoardViewTest : public BoardFixture {
protected:
    void SetUp() override
    {
        BoardFixture::SetUp();
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
    }

    void TearDown() override
    {
        m_window.reset();
        BoardFixture::TearDown();
    }

    QQuickItem *show()
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport QtQuick.Controls\nimport Velto\n"
                          "ApplicationWindow { id: host; width: 1180; height: 760; visible: true\n"
                          "  required property BoardModel board\n required property TimerModel timer\n"
                          "  BoardView { objectName: \"boardView\"; anchors.fill: parent; board: host.board; "
                          "timer: host.timer } }",
                          QUrl(u"qrc:/test/BoardViewHost.qml"_s));
        QObject *created = component.createWithInitialProperties(
            {{u"board"_s, QVariant::fromValue(&board())}, {u"timer"_s, QVariant::fromValue(&timer())}});
        EXPECT_NE(created, nullptr) << component.errorString().toStdString();
        m_window.reset(qobject_cast<QQuickWindow *>(created));
        return m_window ? m_window->contentItem() : nullptr;
    }

    // Items made by repeaters and views are children in the scene, not always in the object tree.
    QQuickItem *find(const QString &name, QQuickItem *under = nullptr) const
    {
        for (QQuickItem *child : (under ? under : m_window->contentItem())->childItems()) {
            if (child->objectName() == name)
                return child;
            if (QQuickItem *found = find(name, child))
                return found;
        }
        return nullptr;
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

TEST_F(BoardViewTest, ColumnsAndCountsFollowTheFilter)
{
    addFolders({u"Alpha"_s, u"Beta"_s, u"Gamma"_s});
    await(board().setStatus(CardStatus::waiting, *cardNamed(u"Gamma"_s)));
    ASSERT_NE(show(), nullptr);
    QQuickItem *notStarted = find(u"column0"_s);
    ASSERT_NE(notStarted, nullptr);
    const auto countOf = [&](const QString &column) {
        return find(u"columnCount"_s, find(column))->property("text").toString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"2"_s; }, 2000));
    EXPECT_EQ(countOf(u"column2"_s), u"1"_s);

    board().setSearchText(u"béta"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"1"_s; }, 2000));
    EXPECT_EQ(countOf(u"column2"_s), u"0"_s);

    board().setStatusVisible(1, false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !find(u"column1"_s)->isVisible(); }, 2000));
}

} // namespace
