#include "AppModel.h"
#include "ApplicationBusService.h"
#include "SecondLaunch.h"
#include "FolderHandoff.h"
#include "AppearanceSetting.h"
#include "DesktopColorScheme.h"
#include "DesktopNotification.h"
#include "TimerTray.h"
#include "VeltoAppDelegate.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

Q_IMPORT_QML_PLUGIN(VeltoPlugin)

using namespace Qt::StringLiterals;

namespace {

// Whether the toolkit has somewhere to draw: a display, or a platform chosen by hand.
bool hasSomewhereToDraw(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "-platform") == 0 || std::strncmp(argv[i], "-platform=", 10) == 0)
            return true;
    }
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        const char *value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return true;
    }
    return false;
}

// Another Velto holds the board: the folders, and the wish for the folder chooser, go to it.
int handToTheRunningVelto(const QString &identifier, const QStringList &given, bool wantsFolderChooser)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    std::optional<QString> failure;
    if (!wantsFolderChooser || !given.isEmpty())
        failure = SecondLaunch::handOver(bus, identifier, given, QDir::currentPath());
    if (!failure && wantsFolderChooser)
        failure = SecondLaunch::activateAction(bus, identifier, AppModel::addFolderAction());
    if (!failure)
        return EXIT_SUCCESS;
    std::fprintf(stderr, "%s\n", qPrintable(*failure));
    // A file manager's or a launcher's action has no terminal to print to.
    if (!given.isEmpty() || wantsFolderChooser)
        DesktopNotification().post(u"Velto is not ready yet."_s).waitForFinished();
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    if (!hasSomewhereToDraw(argc, argv)) {
        std::fputs("Velto is a desktop application and needs a display; to try it without one, "
                   "run it as: xvfb-run -a build/velto\n",
                   stderr);
        return EXIT_FAILURE;
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Velto"_s);
    QApplication::setOrganizationName(u"Quillmere"_s);
    QApplication::setOrganizationDomain(u"quillmere.io"_s);
    QQuickStyle::setStyle(u"Fusion"_s);

    // Made before the model, so that start-up finds it and hands it its hooks; a quit, a closed
    // window, SIGTERM or a system sleep then close a running session first.
    auto *delegate = new VeltoAppDelegate({}, TimerClock::system().sleep, &application);
    delegate->watchQuitEvents(&application);
    delegate->watchTerminationSignals();
    delegate->watchSystemSleep(QDBusConnection::systemBus());

    QGuiApplication::setDesktopFileName(u"io.quillmere.Velto"_s);
    QGuiApplication::setWindowIcon(QIcon::fromTheme(u"io.quillmere.Velto"_s, QIcon(u":/appIcon/io.quillmere.Velto.svg"_s)));
    AppModel appModel;
    appModel.setDesktopNotification(DesktopNotification());
    QStringList given = QApplication::arguments().mid(1);
    // The launcher's "Add to Velto Board" runs `velto --add-folder` where it can't call Velto on
    // the bus.
    const bool wantsFolderChooser = given.removeAll(u"--add-folder"_s) > 0;
    // This process ends without having opened the database when another Velto holds the board.
    const AppModel::ContainerClaim claim = appModel.claimContainer();
    if (claim.heldElsewhere)
        return handToTheRunningVelto(claim.identifier, given, wantsFolderChooser);
    // Without a bus, or with the name taken, Velto runs all the same; later launches just can't
    // reach it.
    ApplicationBusService launches;
    launches.publish(claim.identifier);
    appModel.answerLaunches(launches);
    // `velto FOLDER...`: the folders join the board once it has loaded; anything else is refused
    // there, in the user's words.
    if (!given.isEmpty())
        appModel.handOver(FolderHandoff::fromArguments(given, QDir::currentPath()));
    if (wantsFolderChooser)
        appModel.requestAddFolders();
    // The timer in the tray follows the models as start-up builds them.
    TimerTray tray;
    const auto followModels = [&] { tray.setModels(appModel.timer(), appModel.board()); };
    QObject::connect(&appModel, &AppModel::timerChanged, &tray, followModels);
    QObject::connect(&appModel, &AppModel::boardChanged, &tray, followModels);
    QObject::connect(&tray, &TimerTray::showRequested, &appModel, &AppModel::activationRequested);
    DesktopColorScheme desktopColorScheme;
    AppearanceSetting appearance(std::make_shared<QSettings>(), &desktopColorScheme);

    QQmlApplicationEngine engine;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.setInitialProperties(
        {{u"app"_s, QVariant::fromValue(&appModel)}, {u"appearance"_s, QVariant::fromValue(&appearance)}});
    engine.load(QUrl(u"qrc:/qt/qml/Velto/app/Main.qml"_s));
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    return application.exec();
}
