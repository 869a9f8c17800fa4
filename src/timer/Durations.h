#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// How the views write durations; the rules are those of TimeAggregation.
class Durations : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // A duration that is still running, as 0:42 or 1:02:03.
    Q_INVOKABLE [[nodiscard]] static QString clockText(double seconds);
};
