#pragma once

#include "BoardModel.h"
#include "TimerModel.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

// A window over `board` and `timer` holding `declaration`, QML that may use `host.board` and
// `host.timer`; null, with the reason in `failure`, when the QML does not build.
inline std::unique_ptr<QQuickWindow> makeBoardHostWindow(QQmlEngine &engine, const QByteArray &declaration,
                                                         BoardModel &board, TimerModel &timer, QString &failure)
{
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport Velto\n"
                      "Window {\n"
                      "    id: host\n"
                      "    required property BoardModel board\n"
                      "    required property TimerModel timer\n"
                      "    visible: true\n"
                      + declaration + "\n}\n",
                      QUrl());
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(component.createWithInitialProperties(
        {{QStringLiteral("board"), QVariant::fromValue(&board)},
         {QStringLiteral("timer"), QVariant::fromValue(&timer)}})));
    if (!window)
        failure = component.errorString();
    return window;
}
