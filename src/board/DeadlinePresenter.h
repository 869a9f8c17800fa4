#pragma once

#include "DeadlineUrgency.h"
#include "LocalDay.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The deadline rules as the views ask for them. A view passes `today` into each call, so that its
// binding is evaluated again when the day or the time zone changes. An invalid deadline means the
// card has none.
class DeadlinePresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QDate today READ today NOTIFY todayChanged)

public:
    // DeadlineUrgency as QML reads it; QML looks up only enum keys that start with a capital.
    enum class Urgency {
        None = int(DeadlineUrgency::none),
        Soon = int(DeadlineUrgency::soon),
        Near = int(DeadlineUrgency::near),
        Overdue = int(DeadlineUrgency::overdue),
    };
    Q_ENUM(Urgency)

    explicit DeadlinePresenter(QObject *parent = nullptr);

    static DeadlinePresenter *create(QQmlEngine *qmlEngine, QJSEngine *jsEngine);

    [[nodiscard]] QDate today() const { return m_day.today(); }

    Q_INVOKABLE [[nodiscard]] QString text(const QDateTime &deadline, QDate today) const;
    Q_INVOKABLE [[nodiscard]] int urgency(const QDateTime &deadline, bool isComplete, QDate today) const;
    Q_INVOKABLE [[nodiscard]] QString symbolName(int urgency) const;
    // The deadline's date in full, without the time, as the user's locale writes it.
    Q_INVOKABLE [[nodiscard]] QString helpText(const QDateTime &deadline) const;

signals:
    void todayChanged();

private:
    LocalDay m_day;
};
