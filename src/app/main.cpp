#include "AppModel.h"

#include <QApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

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

    QQmlApplicationEngine engine;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.setInitialProperties({{u"app"_s, QVariant::fromValue(&appModel)}});
    engine.load(QUrl(u"qrc:/qt/qml/Velto/app/Main.qml"_s));
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    return application.exec();
}
