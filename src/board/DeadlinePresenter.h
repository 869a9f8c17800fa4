#pragma once

#include "DeadlineUrgency.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The deadline rules as the views ask for them: each call reads the present moment and the
// system's time zone, so a view that redraws after midnight or after a zone change follows.
// An invalid deadline means the card has none.
class DeadlinePresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    // DeadlineUrgency as QML reads it; QML looks up only enum keys that start with a capital.
    enum class Urgency {
        None = int(DeadlineUrgency::none),
        Soon = int(DeadlineUrgency::soon),
        Near = int(DeadlineUrgency::near),
        Overdue = int(DeadlineUrgency::overdue),
    };
    Q_ENUM(Urgency)

    using QObject::QObject;

    static DeadlinePresenter *create(QQmlEngine *qmlEngine, QJSEngine *jsEngine);

    Q_INVOKABLE [[nodiscard]] QString text(const QDateTime &deadline) const;
    Q_INVOKABLE [[nodiscard]] int urgency(const QDateTime &deadline, bool isComplete) const;
    Q_INVOKABLE [[nodiscard]] QString symbolName(int urgency) const;
    // The deadline's date in full, without the time, as the user's locale writes it.
    Q_INVOKABLE [[nodiscard]] QString helpText(const QDateTime &deadline) const;
};
