#pragma once

#include <QDate>
#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QTimeZone>
#include <QTimer>

#include <functional>

// The date on the user's wall clock. It is announced again at each local midnight and when the
// system's time zone changes, so that words such as "Due tomorrow" never outlive their day.
class LocalDay : public QObject {
    Q_OBJECT
    Q_PROPERTY(QDate today READ today NOTIFY todayChanged)

public:
    // The present moment and the zone it is read in; tests give their own.
    using Clock = std::function<QDateTime()>;
    using Zone = std::function<QTimeZone()>;

    // Follows the system's clock and time zone.
    explicit LocalDay(QObject *parent = nullptr);
    LocalDay(Clock clock, Zone zone, QObject *parent = nullptr);

    [[nodiscard]] QDate today() const { return m_today; }

    // How long from `now` until the next day begins in `zone`; a day that begins at 01:00 because
    // its midnight was skipped begins then.
    [[nodiscard]] static qint64 msecsUntilNextDay(const QDateTime &now, const QTimeZone &zone);

    // Reads the day again and waits for the next one; announces a new day or a new zone.
    void recheck();

signals:
    void todayChanged();

private:
    void watchTheSystemZone();

    Clock m_clock;
    Zone m_zone;
    QDate m_today;
    QByteArray m_zoneID;
    QTimer m_midnight;
    QFileSystemWatcher m_zoneFiles;
};
