#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The texts a card face derives from a card, for the views to show.
class CardText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // One per engine, owned by it.
    static CardText *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    // The folder's place, told relative to the user's home directory.
    Q_INVOKABLE [[nodiscard]] QString shortPath(const QString &displayPath) const;
};
