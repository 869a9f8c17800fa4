#include "LocalDay.h"

#include "AssignIfChanged.h"

#include <QFileInfo>

#include <algorithm>
#include <ctime>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

// Where the system keeps its time zone; a change of zone replaces the link or rewrites the file.
const QStringList zoneFiles{u"/etc/localtime"_s, u"/etc/timezone"_s};

} // namespace

LocalDay::LocalDay(QObject *parent)
    : LocalDay([] { return QDateTime::currentDateTimeUtc(); }, [] { return QTimeZone::systemTimeZone(); }, parent)
{
    watchTheSystemZone();
}

LocalDay::LocalDay(Clock clock, Zone zone, QObject *parent)
    : QObject(parent), m_clock(std::move(clock)), m_zone(std::move(zone))
{
    m_midnight.setSingleShot(true);
    connect(&m_midnight, &QTimer::timeout, this, &LocalDay::recheck);
    const QTimeZone zoneNow = m_zone();
    m_today = m_clock().toTimeZone(zoneNow).date();
    m_zoneID = zoneNow.id();
    m_midnight.start(int(std::min<qint64>(msecsUntilNextDay(m_clock(), zoneNow), std::numeric_limits<int>::max())));
}

qint64 LocalDay::msecsUntilNextDay(const QDateTime &now, const QTimeZone &zone)
{
    const QDate date = now.toTimeZone(zone).date();
    // A second past the start, so that a timer firing a little early still lands in the new day.
    return std::max<qint64>(now.msecsTo(date.addDays(1).startOfDay(zone)) + 1000, 1000);
}

void LocalDay::recheck()
{
    const QTimeZone zone = m_zone();
    const QDateTime now = m_clock();
    m_midnight.start(int(std::min<qint64>(msecsUntilNextDay(now, zone), std::numeric_limits<int>::max())));
    // A new zone can move a deadline to another day even when today stays the same date.
    const bool dayChanged = assignIfChanged(m_today, now.toTimeZone(zone).date());
    if (assignIfChanged(m_zoneID, zone.id()) || dayChanged)
        emit todayChanged();
}

void LocalDay::watchTheSystemZone()
{
    for (const QString &file : zoneFiles) {
        if (QFileInfo::exists(file))
            m_zoneFiles.addPath(file);
    }
    // The directory too: a zone set by replacing the link removes the watched file.
    m_zoneFiles.addPath(u"/etc"_s);
    const auto zoneMayHaveChanged = [this] {
        // The C library reads the zone once; this makes it read it again.
        tzset();
        for (const QString &file : zoneFiles) {
            if (QFileInfo::exists(file) && !m_zoneFiles.files().contains(file))
                m_zoneFiles.addPath(file);
        }
        recheck();
    };
    connect(&m_zoneFiles, &QFileSystemWatcher::fileChanged, this, zoneMayHaveChanged);
    connect(&m_zoneFiles, &QFileSystemWatcher::directoryChanged, this, zoneMayHaveChanged);
}
