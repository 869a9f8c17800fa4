#pragma once

#include "Await.h"
#include "BoardHostWindow.h"
#include "BoardModel.h"
#include "Database.h"
#include "FakeFolderPicker.h"
#include "FolderSandbox.h"
#include "SceneItems.h"
#include "TimerModel.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

// A board over a real database in a folder sandbox, with a real timer, a fake folder picker and a
// file manager that only records what it was asked to show.
class BoardFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_database = Database::create(m_sandbox.path(QStringLiteral("Velto.sqlite")));
        await(m_database->open());
        const VeltoServices services{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}};
        m_timer = std::make_unique<TimerModel>(
            services, std::make_shared<FocusSettings>(std::make_shared<QSettings>(
                          m_sandbox.path(QStringLiteral("settings.ini")), QSettings::IniFormat)));
        m_board = std::make_unique<BoardModel>(services, m_timer.get(), m_picker,
                                               [this](const QUrl &url) -> Task<bool> {
                                                   m_revealed.append(url);
                                                   co_return m_fileManagerAnswers;
                                               });
    }

    void TearDown() override
    {
        // The views go first: they read the models to their end.
        m_window.reset();
        m_board.reset();
        m_timer.reset();
        QCoreApplication::processEvents();
    }

    BoardModel &board() { return *m_board; }
    TimerModel &timer() { return *m_timer; }
    Database &database() { return *m_database; }
    const FolderSandbox &sandbox() const { return m_sandbox; }
    FakeFolderPicker &picker() { return *m_picker; }
    const QList<QUrl> &revealed() const { return m_revealed; }
    // Whether the desktop shows what the board asks it to; it does unless a test says otherwise.
    void setFileManagerAnswers(bool answers) { m_fileManagerAnswers = answers; }

    // Makes the folders and adds them as a user would, then returns the cards in board order.
    QList<Card> addFolders(const QStringList &names)
    {
        QList<QUrl> urls;
        for (const QString &name : names) {
            m_sandbox.makeFolder(name);
            urls.append(m_sandbox.url(name));
        }
        await(m_board->addFolders(urls));
        return m_board->cards();
    }

    [[nodiscard]] std::optional<Card> cardNamed(const QString &name) const
    {
        for (const Card &card : m_board->cards())
            if (card.displayName == name)
                return card;
        return std::nullopt;
    }

    [[nodiscard]] QStringList namesIn(const QList<Card> &cards) const
    {
        QStringList names;
        for (const Card &card : cards)
            names.append(card.displayName);
        return names;
    }

    [[nodiscard]] QStringList column(CardStatus status, const ProjectFilter &lane = {}) const
    {
        return namesIn(m_board->columnCards(status, lane));
    }

    // Puts `declaration`, QML that may use `host.board` and `host.timer`, in a window of `size` over this
    // board and waits until it is on screen, as a user would meet it.
    void showInWindow(const QByteArray &declaration, QSize size)
    {
        QString failure;
        m_window = makeBoardHostWindow(m_engine, declaration, *m_board, *m_timer, failure);
        ASSERT_NE(m_window, nullptr) << failure.toStdString();
        m_window->resize(size);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    }

    // The first item of that name in the window.
    [[nodiscard]] QQuickItem *item(const QString &name) const { return itemNamed(m_window->contentItem(), name); }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;

private:
    FolderSandbox m_sandbox;
    std::shared_ptr<Database> m_database;
    std::unique_ptr<TimerModel> m_timer;
    std::shared_ptr<FakeFolderPicker> m_picker = std::make_shared<FakeFolderPicker>();
    QList<QUrl> m_revealed;
    bool m_fileManagerAnswers = true;
    std::unique_ptr<BoardModel> m_board;
};
