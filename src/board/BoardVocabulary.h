#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The words, symbols and colours of the statuses and priorities, for the views. Statuses and
// priorities travel to QML as their index in declaration order.
class BoardVocabulary : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int statusCount READ statusCount CONSTANT)
    Q_PROPERTY(int priorityCount READ priorityCount CONSTANT)
    // What a card dragged on the board offers, and what every drop place of the board takes.
    Q_PROPERTY(QString cardDragType READ cardDragType CONSTANT)

public:
    using QObject::QObject;

    static BoardVocabulary *create(QQmlEngine *qmlEngine, QJSEngine *jsEngine);

    [[nodiscard]] static int statusCount();
    [[nodiscard]] static int priorityCount();
    [[nodiscard]] static QString cardDragType();

    Q_INVOKABLE [[nodiscard]] QString statusLabel(int status) const;
    Q_INVOKABLE [[nodiscard]] QString statusSymbol(int status) const;
    Q_INVOKABLE [[nodiscard]] QColor accentColor(int status, bool dark) const;
    Q_INVOKABLE [[nodiscard]] QColor columnFill(int status, bool dark) const;
    Q_INVOKABLE [[nodiscard]] QColor pillFill(int status, bool dark) const;
    Q_INVOKABLE [[nodiscard]] QColor pillText(int status, bool dark) const;

    Q_INVOKABLE [[nodiscard]] QString priorityLabel(int priority) const;
    Q_INVOKABLE [[nodiscard]] QString prioritySymbol(int priority) const;
};
