#pragma once

#include "AppModel.h"
#include "AppearanceSetting.h"
#include "Await.h"
#include "BoardFixture.h"
#include "DesktopColorScheme.h"
#include "FolderHandoff.h"
#include "FolderSandbox.h"
#include "QmlWarningGuard.h"
#include "SceneItems.h"

#include <QClipboard>
#include <QDirIterator>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQuickTest/quicktest.h>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

inline const QStringList folderNames{u"Atlas"_s,  u"Beacon"_s, u"Cobalt"_s, u"Delta"_s,  u"Ember"_s, u"Fjord"_s,
                              u"Garnet"_s, u"Harbor"_s, u"Indigo"_s, u"Juniper"_s, u"Kestrel"_s, u"Lumen"_s};

// The application's own window, loaded as `velto` loads it, over a dozen real folders and a
// private container; every entry is pressed with the pointer, as a user would.
class SmokeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        QList<QUrl> folders;
        for (const QString &name : folderNames) {
            m_sandbox.makeFolder(u"work/"_s + name);
            folders.append(m_sandbox.url(u"work/"_s + name));
        }
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, m_sandbox.path(u"data"_s));
        m_model = std::make_unique<AppModel>(
            AppGroupSources{u"io.quillmere.Velto"_s, environment, m_sandbox.path(u"home"_s)},
            std::make_shared<QSettings>(m_sandbox.path(u"defaults.ini"_s), QSettings::IniFormat), m_picker);
        m_model->handOver(FolderHandoff{folders, std::nullopt});
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        m_engine.setInitialProperties(
            {{u"app"_s, QVariant::fromValue(m_model.get())}, {u"appearance"_s, QVariant::fromValue(&m_appearance)}});
        m_engine.load(QUrl(u"qrc:/qt/qml/Velto/app/Main.qml"_s));
        ASSERT_EQ(m_engine.rootObjects().size(), 1);
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().first());
        ASSERT_NE(m_window, nullptr);
        // Tall enough for a column of all twelve cards, so that each can be pressed without scrolling.
        m_window->resize(1180, 1500);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window));
        ASSERT_TRUE(QTest::qWaitFor([&] { return board() != nullptr && board()->cards().size() == 12; }, 10000));
        ASSERT_TRUE(QTest::qWaitFor([&] { return cellOf(u"Lumen"_s) != nullptr; }, 5000));
        // Adding the folders ends by selecting the first of them; a click before that would lose
        // to it. Each test starts from the board alone.
        ASSERT_TRUE(QTest::qWaitFor([&] { return board()->selectedCardID().has_value(); }, 5000));
        board()->setSelectedCardID(std::nullopt);
    }

    BoardModel *board() const { return m_model->board(); }
    // Presses at `from`, moves to `to` in ten steps, and lets go there.
    void dragWithPointer(QPoint from, QPoint to) const
    {
        ASSERT_TRUE(QQuickTest::qWaitForPolish(m_window));
        QTest::mousePress(m_window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(m_window, from + (to - from) * step / 10, 20);
        QTest::mouseRelease(m_window, Qt::LeftButton, {}, to, 20);
    }

    QList<Card> notStarted() const { return board()->columnCards(CardStatus::notStarted, {}); }
    Database &database() const { return *m_model->services()->database; }

    Card stored(const QString &name) const
    {
        for (const Card &card : await(database().allCards()))
            if (card.displayName == name)
                return card;
        ADD_FAILURE() << "no card " << name.toStdString();
        return {};
    }

    QQuickItem *named(const QString &name) const { return itemNamed(m_window->contentItem(), name); }

    QQuickItem *cellOf(const QString &name) const
    {
        for (QQuickItem *cell : itemsNamed(m_window->contentItem(), u"cardCell"_s))
            if (cell->property("face").toMap().value(u"displayName"_s) == name && cell->isVisible())
                return cell;
        return nullptr;
    }

    // A left click in the middle of the item, once it stands still on screen.
    void click(QQuickItem *item, Qt::MouseButton button = Qt::LeftButton)
    {
        ASSERT_NE(item, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return item->isVisible() && item->width() > 0; }, 2000));
        QTest::qWait(50); // a popup's entries are laid out in the frame after it opens
        // A list lays out rows that came back on its next polish; until then a press can miss them.
        ASSERT_TRUE(QQuickTest::qWaitForPolish(m_window));
        QTest::mouseClick(item->window(), button, {}, item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

    // Opens a menu of the window's menu bar with a click on its title.
    QObject *openMenuBarMenu(const QString &name)
    {
        auto *bar = m_window->property("menuBar").value<QQuickItem *>();
        if (bar == nullptr)
            return nullptr;
        const int count = bar->property("count").toInt();
        for (int i = 0; i < count; ++i) {
            QQuickItem *title = nullptr;
            QMetaObject::invokeMethod(bar, "itemAt", Q_RETURN_ARG(QQuickItem *, title), Q_ARG(int, i));
            auto *menu = title != nullptr ? title->property("menu").value<QObject *>() : nullptr;
            if (menu == nullptr || menu->objectName() != name)
                continue;
            click(title);
            return QTest::qWaitFor([&] { return menu->property("opened").toBool(); }, 2000) ? menu : nullptr;
        }
        return nullptr;
    }

    // Presses `entry` of a menu of the menu bar, or of its submenu `submenu` when one is named.
    void pressMenuBarEntry(const QString &menuName, const QString &entry, const QString &submenu = {})
    {
        QObject *menu = openMenuBarMenu(menuName);
        ASSERT_NE(menu, nullptr) << menuName.toStdString();
        pressEntry(menu, entry, submenu);
    }

    // Presses `entry` of an open menu, or of its submenu `submenu`; a disabled entry fails the test.
    void pressEntry(QObject *menu, const QString &entry, const QString &submenu)
    {
        QObject *owner = menu;
        if (!submenu.isEmpty()) {
            owner = menu->findChild<QObject *>(submenu);
            ASSERT_NE(owner, nullptr) << submenu.toStdString();
            click(itemOpening(menu, owner));
            ASSERT_TRUE(QTest::qWaitFor([&] { return owner->property("opened").toBool(); }, 2000));
        }
        QQuickItem *item = entryOf(owner, entry);
        ASSERT_NE(item, nullptr) << entry.toStdString();
        ASSERT_TRUE(item->isEnabled()) << entry.toStdString();
        click(item);
    }

    // A top-level window of the application other than the main one, once it is on screen.
    static QQuickWindow *openWindowNamed(const QString &name)
    {
        QQuickWindow *found = nullptr;
        const bool shown = QTest::qWaitFor([&] {
            for (QWindow *window : QGuiApplication::topLevelWindows())
                if (window->objectName() == name && window->isVisible())
                    found = qobject_cast<QQuickWindow *>(window);
            return found != nullptr;
        }, 3000);
        return shown && QTest::qWaitForWindowExposed(found) ? found : nullptr;
    }

    // Opens the card's menu with a secondary click.
    QObject *openCardMenu(const QString &name)
    {
        QQuickItem *cell = cellOf(name);
        if (cell == nullptr)
            return nullptr;
        QTest::mouseClick(m_window, Qt::RightButton, {}, cell->mapToScene({20, 10}).toPoint());
        QObject *menu = cell->findChild<QObject *>(u"cardContextMenu"_s);
        if (menu == nullptr || !QTest::qWaitFor([&] { return menu->property("opened").toBool(); }, 2000))
            return nullptr;
        return menu;
    }

    // Presses `entry` of the card's menu, or of its submenu `submenu` when one is named.
    void pressCardMenuEntry(const QString &card, const QString &entry, const QString &submenu = {})
    {
        QObject *menu = openCardMenu(card);
        ASSERT_NE(menu, nullptr) << card.toStdString();
        pressEntry(menu, entry, submenu);
    }

    // The entry of the menu that opens `submenu`.
    static QQuickItem *itemOpening(QObject *menu, QObject *submenu)
    {
        for (QQuickItem *item : menu->findChildren<QQuickItem *>())
            if (item->property("subMenu").value<QObject *>() == submenu)
                return item;
        return nullptr;
    }

    // A menu's entries are made by instantiators and are not always its children: look in the menu's
    // list of items.
    static QQuickItem *entryOf(QObject *menu, const QString &name)
    {
        const int count = menu->property("count").toInt();
        for (int i = 0; i < count; ++i) {
            QQuickItem *item = nullptr;
            QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem *, item), Q_ARG(int, i));
            if (item != nullptr && item->objectName() == name)
                return item;
        }
        return nullptr;
    }

    FolderSandbox m_sandbox;
    std::shared_ptr<FakeFolderPicker> m_picker = std::make_shared<FakeFolderPicker>();
    DesktopColorScheme m_desktop{QDBusConnection(u"no-bus"_s)};
    AppearanceSetting m_appearance{
        std::make_shared<QSettings>(m_sandbox.path(u"appearance.ini"_s), QSettings::IniFormat), &m_desktop};
    std::unique_ptr<AppModel> m_model;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};
