#include "TimerMenuContent.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Entry = TimerMenuContent::Entry;
using Action = Entry::Action;

Card card(const QString &name, CardStatus status, Priority priority)
{
    Card made;
    made.id = u"id-"_s + name;
    made.displayName = name;
    made.status = status;
    made.priority = priority;
    return made;
}

QStringList names(const QList<Card> &cards)
{
    QStringList list;
    for (const Card &c : cards)
        list.append(c.displayName);
    return list;
}

TEST(TimerMenuContent, TheWorkListKeepsWhatIsUnderWayByPriorityThenName)
{
    using enum CardStatus;
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    QList<Card> twelve;
    for (int i = 1; i <= 12; ++i)
        twelve.append(card(u"Job %1"_s.arg(i), inProgress, i <= 4 ? Priority::now : Priority::later));
    const struct {
        const char *name;
        QList<Card> cards;
        QStringList expected;
    } cases[] = {
        {"in progress of any priority, or now in any column",
         {card(u"Waiting"_s, waiting, Priority::now), card(u"Done"_s, complete, Priority::now),
          card(u"Idle"_s, notStarted, Priority::next), card(u"Busy"_s, inProgress, Priority::later),
          card(u"Parked"_s, waiting, Priority::next)},
         {u"Done"_s, u"Waiting"_s, u"Busy"_s}},
        {"numbers in names read as numbers",
         {card(u"Report 10"_s, inProgress, Priority::today), card(u"Report 9"_s, inProgress, Priority::today),
          card(u"report 2"_s, inProgress, Priority::today)},
         {u"report 2"_s, u"Report 9"_s, u"Report 10"_s}},
        {"priority before name",
         {card(u"Alpha"_s, inProgress, Priority::later), card(u"Zulu"_s, inProgress, Priority::next)},
         {u"Zulu"_s, u"Alpha"_s}},
        {"twelve candidates: the eight of the highest priorities", twelve,
         {u"Job 1"_s, u"Job 2"_s, u"Job 3"_s, u"Job 4"_s, u"Job 5"_s, u"Job 6"_s, u"Job 7"_s, u"Job 8"_s}},
        {"nothing under way", {card(u"Idle"_s, notStarted, Priority::later)}, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(names(TimerMenuContent::workList(c.cards, english)), c.expected);
    }
}

TEST(TimerMenuContent, ANameIsCutAfterTwentyTwoUserPerceivedCharacters)
{
    const QString accented = u"e\u0301"_s; // one character of two code units
    const QString flag = u"\U0001F1EB\U0001F1F7"_s; // one character of four code units
    const struct {
        QString name;
        QString expected;
    } cases[] = {
        {QString(22, u'a'), QString(22, u'a')},
        {QString(23, u'a'), QString(21, u'a') + u"…"_s},
        {accented.repeated(22), accented.repeated(22)},
        {accented.repeated(23), accented.repeated(21) + u"…"_s},
        {flag.repeated(22), flag.repeated(22)},
        {flag.repeated(23), flag.repeated(21) + u"…"_s},
        {u""_s, u""_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name.toStdString());
        EXPECT_EQ(TimerMenuContent::shortenedName(c.name), c.expected);
    }
}

TEST(TimerMenuContent, TheMenuListsTheTimerTheWorkAndShowVelto)
{
    const Entry separator = Entry::separator();
    const Entry show = Entry::button(u"Show Velto"_s, Action::show);
    const Card report = card(u"Report"_s, CardStatus::inProgress, Priority::now);
    const Card thesis = card(u"Thesis"_s, CardStatus::inProgress, Priority::next);
    const struct {
        const char *name;
        std::optional<QString> runningName;
        QString runningID;
        QList<Card> cards;
        QList<Entry> expected;
    } cases[] = {
        {"nothing at all", std::nullopt, {}, {card(u"Idle"_s, CardStatus::notStarted, Priority::later)},
         {Entry::line(u"No timer running"_s), separator, Entry::line(u"Nothing in progress"_s), separator, show}},
        {"running: its own entry is disabled", u"Report"_s, report.id, {report, thesis},
         {Entry::line(u"Tracking Report"_s), Entry::line(u"2h 5m"_s), separator,
          Entry::button(u"Stop Timer"_s, Action::stop), separator,
          Entry::button(u"Report"_s, Action::start, false, report.id),
          Entry::button(u"Thesis"_s, Action::start, true, thesis.id), separator, show}},
        {"a session without a name reads as none, its card still disabled", std::nullopt, report.id, {report},
         {Entry::line(u"No timer running"_s), separator, Entry::button(u"Report"_s, Action::start, false, report.id),
          separator, show}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(TimerMenuContent::entries(c.runningName, 7500, c.runningID, c.cards), c.expected);
    }
}

} // namespace
