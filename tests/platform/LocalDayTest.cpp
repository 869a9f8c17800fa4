#include "LocalDay.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QDateTime at(const char *iso, const QTimeZone &zone)
{
    return QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate).toTimeZone(zone);
}

// The wait for the next day is measured to that day's own start, which on a day of a change of
// clocks is not 24 hours after the last one.
TEST(LocalDay, WaitsUntilTheNextDayBegins)
{
    const QTimeZone berlin("Europe/Berlin");
    const QTimeZone santiago("America/Santiago");
    const struct {
        const char *name;
        QDateTime now;
        QTimeZone zone;
        qint64 seconds; // until the next day begins, before the added second
    } cases[] = {
        {"an ordinary evening", at("2026-11-23T22:30:00+01:00", berlin), berlin, 90 * 60},
        {"the evening before clocks go forward", at("2026-03-28T23:00:00+01:00", berlin), berlin, 60 * 60},
        {"the day clocks go forward is 23 hours", at("2026-03-29T00:00:00+01:00", berlin), berlin, 23 * 3600},
        {"the day clocks go back is 25 hours", at("2026-10-25T00:00:00+02:00", berlin), berlin, 25 * 3600},
        // Here the clocks go forward at midnight: the new day begins at 01:00, an hour of the old
        // day's evening later than 23:00 plus one.
        {"a day whose midnight is skipped", at("2026-09-05T23:00:00-04:00", santiago), santiago, 60 * 60},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(c.zone.isValid());
        EXPECT_EQ(LocalDay::msecsUntilNextDay(c.now, c.zone), c.seconds * 1000 + 1000);
    }
}

TEST(LocalDay, AnnouncesANewDayAndANewZoneOnly)
{
    QDateTime now = at("2026-11-23T23:59:00Z", QTimeZone::utc());
    QTimeZone zone = QTimeZone::utc();
    LocalDay day([&] { return now; }, [&] { return zone; });
    QSignalSpy announced(&day, &LocalDay::todayChanged);
    EXPECT_EQ(day.today(), QDate(2026, 11, 23));

    now = now.addSecs(30);
    day.recheck();
    EXPECT_EQ(announced.count(), 0);

    now = now.addSecs(60);
    day.recheck();
    EXPECT_EQ(day.today(), QDate(2026, 11, 24));
    EXPECT_EQ(announced.count(), 1);

    // Same date in Lisbon, but a deadline late in the evening may now fall on another day.
    zone = QTimeZone("Europe/Lisbon");
    day.recheck();
    EXPECT_EQ(day.today(), QDate(2026, 11, 24));
    EXPECT_EQ(announced.count(), 2);

    zone = QTimeZone("Pacific/Honolulu");
    day.recheck();
    EXPECT_EQ(day.today(), QDate(2026, 11, 23));
    EXPECT_EQ(announced.count(), 3);
}

} // namespace
