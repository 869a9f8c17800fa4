#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// How a duration that is still running is written, as 0:42, 25:00 or 1:02:03, for the views.
class ElapsedFormat : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // Whole seconds, rounded to the nearest; minutes and seconds below an hour, hours, minutes and
    // seconds from one hour on, with the hours neither limited nor wrapped at a day. A negative
    // duration reads as 0:00. The seconds must be finite: callers pass differences of dates.
    Q_INVOKABLE [[nodiscard]] static QString text(double seconds);
};
