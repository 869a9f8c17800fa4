#pragma once

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// How the views write tracked time: a length read as a quantity (2h 5m) and one still running
// (1:02:03). Every view of time goes through here, so the rules live in one place.
class SessionTimeText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE [[nodiscard]] static QString duration(double seconds);
    Q_INVOKABLE [[nodiscard]] static QString clock(double seconds);
    // The length between two instants of the views, as `duration` writes it.
    Q_INVOKABLE [[nodiscard]] static QString between(const QDateTime &start, const QDateTime &end);
};
