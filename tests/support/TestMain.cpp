#include "QmlWarningGuard.h"

#include <QApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(VeltoPlugin)

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    QmlWarningGuard guard;
    const int result = RUN_ALL_TESTS();
    // A warning outside any test (while the application winds down) fails the run all the same.
    return guard.warningsOutsideTests() > 0 ? 1 : result;
}
