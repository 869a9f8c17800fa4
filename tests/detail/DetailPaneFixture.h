#pragma once

#include "AppModel.h"
#include "Await.h"
#include "BoardModel.h"
#include "CardDetailModel.h"
#include "FolderSandbox.h"
#include "SceneItems.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

// The detail column of the main window over a started application, with its own container in a
// folder sandbox. Every warning printed while a test runs - a QML error, a failed binding - fails
// that test.
class DetailPaneFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        s_warnings.clear();
        s_tolerated.clear();
        m_previousHandler = qInstallMessageHandler(&DetailPaneFixture::collect);
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_sandbox.path(QStringLiteral("data")));
        m_app = std::make_unique<AppModel>(
            AppGroupSources{QStringLiteral("io.quillmere.Velto"), environment, m_sandbox.path(QStringLiteral("home"))},
            std::make_shared<QSettings>(m_sandbox.path(QStringLiteral("defaults.ini")), QSettings::IniFormat));
        await(m_app->start());
        ASSERT_EQ(m_app->startupKind(), AppModel::StartupKind::Ready) << m_app->failureMessage().toStdString();
    }

    void TearDown() override
    {
        m_window.reset();
        m_app.reset();
        QCoreApplication::processEvents();
        qInstallMessageHandler(m_previousHandler);
        EXPECT_TRUE(s_warnings.isEmpty()) << s_warnings.join(u'\n').toStdString();
    }

    BoardModel &board() { return *m_app->board(); }
    const FolderSandbox &sandbox() const { return m_sandbox; }

    // Makes the folder with its files, adds it to the board and gives its card.
    Card addCard(const QString &name, const QStringList &files = {})
    {
        m_sandbox.makeFolder(name);
        for (const QString &file : files)
            m_sandbox.makeFile(name + u'/' + file);
        await(board().addFolders({m_sandbox.url(name)}));
        for (const Card &card : board().cards())
            if (card.displayName == name)
                return card;
        ADD_FAILURE() << "no card for " << name.toStdString();
        return {};
    }

    [[nodiscard]] Card fresh(const Card &card) const
    {
        for (const Card &candidate : m_app->board()->cards())
            if (candidate.id == card.id)
                return candidate;
        return {};
    }

    // The column alone in a window of `width` by 760, as the main window holds it.
    void showColumn(int width = 340)
    {
        m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nimport Velto\n"
                          "Window {\n"
                          "    id: host\n"
                          "    required property AppModel app\n"
                          "    visible: true\n"
                          "    CardDetailColumn { anchors.fill: parent; app: host.app }\n"
                          "}\n",
                          QUrl());
        m_window.reset(qobject_cast<QQuickWindow *>(
            component.createWithInitialProperties({{QStringLiteral("app"), QVariant::fromValue(m_app.get())}})));
        ASSERT_NE(m_window, nullptr) << component.errorString().toStdString();
        m_window->resize(width, 760);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    }

    // Selects the card and waits until its pane has loaded it.
    void select(const Card &card)
    {
        board().setSelectedCardIDText(card.id);
        ASSERT_TRUE(QTest::qWaitFor([&] {
            CardDetailModel *model = detail();
            return model && model->cardID() == card.id && !model->isLoading();
        }));
    }

    void deselect()
    {
        board().setSelectedCardIDText(QString());
        ASSERT_TRUE(QTest::qWaitFor([&] { return item(QStringLiteral("cardDetailView")) == nullptr; }));
    }

    [[nodiscard]] QQuickItem *item(const QString &name) const { return itemNamed(m_window->contentItem(), name); }
    // Sheets are no items of the scene: they are found among the pane's objects, and what they
    // hold among theirs.
    [[nodiscard]] QObject *object(const QString &name) const
    {
        QQuickItem *view = item(QStringLiteral("cardDetailView"));
        return view ? view->findChild<QObject *>(name) : nullptr;
    }

    [[nodiscard]] CardDetailModel *detail() const
    {
        QQuickItem *view = item(QStringLiteral("cardDetailView"));
        return view ? view->property("detail").value<CardDetailModel *>() : nullptr;
    }

    void click(QQuickItem *target)
    {
        ASSERT_NE(target, nullptr);
        // A row that has just appeared is laid out at the next frame.
        ASSERT_TRUE(QTest::qWaitFor([&] { return target->width() > 0 && target->height() > 0; }));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {},
                          target->mapToScene(QPointF(target->width() / 2, target->height() / 2)).toPoint());
    }

    // Gives the field the keyboard and types into it as a user would.
    void type(QQuickItem *field, const QString &text)
    {
        ASSERT_NE(field, nullptr);
        field->forceActiveFocus();
        typeKeys(text);
    }

    // Types into whatever has the keyboard; the toolkit types into a window one key at a time.
    void typeKeys(const QString &text)
    {
        for (const QChar character : text) {
            if (character == u'\n')
                QTest::keyClick(m_window.get(), Qt::Key_Return);
            else
                QTest::sendKeyEvent(QTest::Click, m_window.get(), Qt::Key(character.toUpper().unicode()),
                                    QString(character), {});
        }
    }

    static void press(QWindow *window, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window, key, modifiers);
    }

    // A warning the toolkit itself prints, which the test knows of and lets pass.
    static void tolerate(const QString &message) { s_tolerated.append(message); }

    std::unique_ptr<QQuickWindow> m_window;

private:
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (type != QtDebugMsg && type != QtInfoMsg && !s_tolerated.contains(message))
            s_warnings.append(qFormatLogMessage(type, context, message));
    }

    inline static QStringList s_warnings;
    inline static QStringList s_tolerated;
    QtMessageHandler m_previousHandler = nullptr;
    FolderSandbox m_sandbox;
    std::unique_ptr<AppModel> m_app;
    QQmlEngine m_engine;
};
