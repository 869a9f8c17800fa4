#include "AppModel.h"
#include "FolderHandoff.h"
#include "AppearanceSetting.h"
#include "DesktopColorScheme.h"

#include <QApplication>
#include <QDir>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

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

    AppModel appModel;
    // `velto FOLDER...`: the folders join the board once it has loaded; anything else is refused in
    // the user's words, and Velto starts all the same.
    if (const QStringList given = QApplication::arguments().mid(1); !given.isEmpty()) {
        const FolderHandoff handoff = FolderHandoff::fromArguments(given, QDir::currentPath());
        if (handoff.refusal)
            std::fprintf(stderr, "%s\n", qPrintable(*handoff.refusal));
        appModel.handOverFolders(handoff.folders);
    }
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
