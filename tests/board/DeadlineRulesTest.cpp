#include "Card.h"
#include "DeadlineRules.h"

#include <QColor>
#include <QDateTime>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// An instant written as ISO 8601 with its offset, so each case shows the wall clock it means.
VeltoDate at(const char *iso)
{
    const QDateTime moment = QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate);
    EXPECT_TRUE(moment.isValid()) << iso;
    return VeltoDate::fromStoredSeconds(moment.toSecsSinceEpoch());
}

TEST(DeadlineRules, CountsCalendarDaysAndNamesThem)
{
    const struct {
        const char *name;
        const char *deadline;
        const char *now;
        const char *zone; // empty: a zone that gives no answer
        bool isComplete;
        int days;
        DeadlineUrgency urgency;
        QString text;
    } cases[] = {
        {"earlier today, asked at 23:59", "2024-05-14T08:00:00+02:00", "2024-05-14T23:59:00+02:00",
         "Europe/Berlin", false, 0, DeadlineUrgency::near, u"Due today"_s},
        {"tomorrow, one minute away", "2024-05-15T00:00:00+02:00", "2024-05-14T23:59:00+02:00",
         "Europe/Berlin", false, 1, DeadlineUrgency::near, u"Due tomorrow"_s},
        {"2 days", "2024-05-16T09:00:00Z", "2024-05-14T17:00:00Z", "UTC", false, 2, DeadlineUrgency::near,
         u"Due in 2 days"_s},
        {"3 days", "2024-05-17T09:00:00Z", "2024-05-14T17:00:00Z", "UTC", false, 3, DeadlineUrgency::soon,
         u"Due in 3 days"_s},
        {"7 days, whatever the hour", "2024-05-21T23:59:00Z", "2024-05-14T00:00:00Z", "UTC", false, 7,
         DeadlineUrgency::soon, u"Due in 7 days"_s},
        {"8 days, whatever the hour", "2024-05-22T00:00:00Z", "2024-05-14T23:59:00Z", "UTC", false, 8,
         DeadlineUrgency::none, u"Due in 8 days"_s},
        {"yesterday, one minute ago", "2024-05-13T23:59:00Z", "2024-05-14T00:00:00Z", "UTC", false, -1,
         DeadlineUrgency::overdue, u"Overdue by 1 day"_s},
        {"across a year's end", "2023-12-31T12:00:00Z", "2024-03-01T08:00:00Z", "UTC", false, -61,
         DeadlineUrgency::overdue, u"Overdue by 61 days"_s},
        {"completed and overdue", "2024-05-11T12:00:00Z", "2024-05-14T08:00:00Z", "UTC", true, -3,
         DeadlineUrgency::none, u"Overdue by 3 days"_s},
        // 36.5 hours across the 23-hour day of the spring change.
        {"over the spring change", "2024-04-01T00:30:00+02:00", "2024-03-30T12:00:00+01:00", "Europe/Berlin",
         false, 2, DeadlineUrgency::near, u"Due in 2 days"_s},
        // 25 h 40 min across the 25-hour day of the autumn change.
        {"over the autumn change", "2024-10-28T00:10:00+01:00", "2024-10-26T23:30:00+02:00", "Europe/Berlin",
         false, 2, DeadlineUrgency::near, u"Due in 2 days"_s},
        // Only 191 hours from one start of day to the other: still eight days, so not soon.
        {"eight days with a short one among them", "2024-04-01T10:00:00+02:00", "2024-03-24T09:00:00+01:00",
         "Europe/Berlin", false, 8, DeadlineUrgency::none, u"Due in 8 days"_s},
        {"within the autumn change's repeated hour", "2024-10-27T02:59:00+01:00", "2024-10-27T02:01:00+02:00",
         "Europe/Berlin", false, 0, DeadlineUrgency::near, u"Due today"_s},
        // Two hours apart on one day in UTC, but in Auckland midnight has already passed between them.
        {"a zone where the day has turned", "2024-03-10T12:00:00Z", "2024-03-10T10:00:00Z", "Pacific/Auckland",
         false, 1, DeadlineUrgency::near, u"Due tomorrow"_s},
        {"a zone where it is already yesterday's deadline", "2024-03-10T10:30:00Z", "2024-03-10T11:30:00Z",
         "Pacific/Auckland", false, -1, DeadlineUrgency::overdue, u"Overdue by 1 day"_s},
        {"a zone that gives no answer", "2024-05-20T12:00:00Z", "2024-05-14T08:00:00Z", "", false, 0,
         DeadlineUrgency::near, u"Due today"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const QTimeZone zone = *c.zone ? QTimeZone(c.zone) : QTimeZone();
        ASSERT_EQ(zone.isValid(), *c.zone != '\0');
        Card card;
        card.deadline = at(c.deadline);
        card.status = c.isComplete ? CardStatus::complete : CardStatus::waiting;
        const VeltoDate now = at(c.now);
        EXPECT_EQ(DeadlineRules::daysUntil(*card.deadline, now, zone), c.days);
        EXPECT_EQ(DeadlineRules::deadlineUrgency(card, now, zone), c.urgency);
        EXPECT_EQ(DeadlineRules::deadlineText(*card.deadline, now, zone), c.text);
        card.deadline.reset();
        EXPECT_EQ(DeadlineRules::deadlineUrgency(card, now, zone), DeadlineUrgency::none);
    }
}

// The badge as the views place it, reading the present moment and the system's zone.
class DeadlineBadgeTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&m_engine);
        component.setData("import Velto\nDeadlineBadge {}", QUrl());
        m_badge.reset(qobject_cast<QQuickItem *>(component.create()));
        ASSERT_NE(m_badge, nullptr) << component.errorString().toStdString();
        m_text = m_badge->findChild<QQuickItem *>(u"deadlineText"_s);
        m_symbol = m_badge->findChild<QQuickItem *>(u"deadlineSymbol"_s);
        ASSERT_NE(m_text, nullptr);
        ASSERT_NE(m_symbol, nullptr);
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_badge;
    QQuickItem *m_text = nullptr;
    QQuickItem *m_symbol = nullptr;
};

// The words, symbol and colour of the urgency, on the present moment in the system's zone; a
// deadline taken away leaves nothing.
TEST_F(DeadlineBadgeTest, ShowsWordsSymbolAndColourOfTheUrgency)
{
    const QColor secondary = m_text->property("color").value<QColor>();
    const struct {
        std::optional<int> daysAhead;
        bool isComplete;
        QString text;
        QString symbol;
        bool tinted;
    } cases[] = {
        {1, false, u"Due tomorrow"_s, u"clock.badge.exclamationmark"_s, true},
        {5, false, u"Due in 5 days"_s, u"calendar"_s, false},
        {12, false, u"Due in 12 days"_s, QString(), false},
        {-3, false, u"Overdue by 3 days"_s, u"exclamationmark.triangle.fill"_s, true},
        {-3, true, u"Overdue by 3 days"_s, QString(), false},
        {std::nullopt, false, QString(), QString(), false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text.toStdString() + (c.isComplete ? " (complete)" : ""));
        m_badge->setProperty("isComplete", c.isComplete);
        m_badge->setProperty("deadline", c.daysAhead ? QVariant(QDateTime::currentDateTime().addDays(*c.daysAhead))
                                                     : QVariant());
        EXPECT_EQ(m_badge->isVisible(), c.daysAhead.has_value());
        EXPECT_EQ(m_text->property("text").toString(), c.text);
        EXPECT_EQ(m_text->property("color").value<QColor>() != secondary, c.tinted);
        EXPECT_EQ(m_badge->property("symbolName").toString(), c.symbol);
        EXPECT_EQ(m_symbol->isVisible(), !c.symbol.isEmpty());
        if (!c.symbol.isEmpty()) { // the symbol has its drawing in the module
            EXPECT_TRUE(QFile::exists(u":/qt/qml/Velto/app/symbols/"_s + c.symbol + u".svg"_s));
        }
    }
}

} // namespace
