#include "Card.h"
#include "CardStatus.h"
#include "Identifier.h"
#include "Mood.h"
#include "Priority.h"
#include "TimeSession.h"
#include "VeltoDate.h"

#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(BoardTitle, ShowsTheTitleUnlessItIsHorizontallyBlank)
{
    struct Case {
        const char *name;
        std::optional<QString> title;
        QString boardTitle;
        bool hasCustomTitle;
    };
    const QList<Case> cases{
        {"no title", std::nullopt, u"Report"_s, false},
        {"empty title", u""_s, u"Report"_s, false},
        {"spaces and a tab", u"   \t"_s, u"Report"_s, false},
        {"no-break and ideographic spaces", u"\u00A0\u3000"_s, u"Report"_s, false},
        {"padding is kept", u"  Q3 plan "_s, u"  Q3 plan "_s, true},
        {"a line feed is not blank", u"\n"_s, u"\n"_s, true},
        {"a line feed among spaces is not blank", u" \r\n "_s, u" \r\n "_s, true},
        {"the folder's own name", u"Report"_s, u"Report"_s, false},
        {"the folder's name with padding", u" Report"_s, u" Report"_s, true},
        {"a real title", u"Quarterly report"_s, u"Quarterly report"_s, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Card card;
        card.displayName = u"Report"_s;
        card.title = c.title;
        EXPECT_EQ(card.boardTitle(), c.boardTitle);
        EXPECT_EQ(card.hasCustomTitle(), c.hasCustomTitle);
    }
}

// Raw values are a stored format: each parses back to its own case, and nothing else parses, not
// even a different capitalisation or the case's own name where it differs from the word.
template <typename Vocabulary, typename Parse>
void expectRawValuesRoundTrip(const QList<Vocabulary> &cases, Parse parse)
{
    QSet<QString> words;
    for (Vocabulary value : cases) {
        const QString word = rawValue(value);
        SCOPED_TRACE(word.toStdString());
        EXPECT_EQ(parse(word), std::optional<Vocabulary>(value));
        EXPECT_EQ(parse(word.toUpper()), std::nullopt);
        EXPECT_EQ(parse(word + u' '), std::nullopt);
        words.insert(word);
    }
    EXPECT_EQ(words.size(), cases.size());
    EXPECT_EQ(parse(QString()), std::nullopt);
}

TEST(Vocabularies, RawValuesParseBackExactly)
{
    expectRawValuesRoundTrip(QList<CardStatus>(allCardStatuses.begin(), allCardStatuses.end()),
                             cardStatusFromRawValue);
    expectRawValuesRoundTrip(QList<Priority>(allPriorities.begin(), allPriorities.end()), priorityFromRawValue);
    expectRawValuesRoundTrip(QList<Mood>(allMoods.begin(), allMoods.end()), moodFromRawValue);
    expectRawValuesRoundTrip(QList<TimeSession::Source>{TimeSession::Source::manual, TimeSession::Source::automatic},
                             sourceFromRawValue);
    EXPECT_EQ(sourceFromRawValue(u"automatic"_s), std::nullopt);
    EXPECT_EQ(sourceFromRawValue(u"auto"_s), TimeSession::Source::automatic);
    EXPECT_EQ(priorityFromRawValue(u"thisWeek"_s), std::nullopt);
    EXPECT_EQ(cardStatusFromRawValue(u"Waiting"_s), std::nullopt);
}

TEST(Vocabularies, EveryStatusColourIsAHexTriplet)
{
    static const QRegularExpression hex(u"^#[0-9A-F]{6}$"_s);
    for (CardStatus status : allCardStatuses) {
        SCOPED_TRACE(rawValue(status).toStdString());
        QSet<QString> seen;
        for (const ColorPair &pair : {accentColor(status), columnFill(status), pillFill(status), pillText(status)}) {
            EXPECT_TRUE(hex.match(pair.dark).hasMatch()) << pair.dark.toStdString();
            EXPECT_TRUE(hex.match(pair.light).hasMatch()) << pair.light.toStdString();
            EXPECT_NE(pair.dark, pair.light);
            seen.insert(pair.light);
        }
        EXPECT_EQ(seen.size(), 4);
    }
}

TEST(Identifier, IsAnUpperCaseCanonicalRandomUuid)
{
    static const QRegularExpression canonical(
        u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s);
    QSet<QString> seen;
    for (int i = 0; i < 100; ++i) {
        const QString id = newIdentifier();
        EXPECT_EQ(id.size(), 36);
        EXPECT_TRUE(canonical.match(id).hasMatch()) << id.toStdString();
        seen.insert(id);
    }
    EXPECT_EQ(seen.size(), 100);
}

TEST(VeltoDate, StoresFlooredSecondsSince1970)
{
    struct Case {
        double secondsSinceReferenceDate;
        qint64 stored;
    };
    const QList<Case> cases{
        {0.0, 978307200},
        {0.999, 978307200},
        {1.0, 978307201},
        {-0.5, 978307199}, // floor, not truncation towards zero
        {-978307200.0, 0},
        {-978307201.25, -2},
        {721692800.75, 1700000000},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.secondsSinceReferenceDate);
        EXPECT_EQ(VeltoDate(c.secondsSinceReferenceDate).storedSeconds(), c.stored);
        EXPECT_EQ(VeltoDate::fromStoredSeconds(c.stored), VeltoDate(c.secondsSinceReferenceDate).floored());
    }
}

TEST(VeltoDate, AFlooredNowSurvivesTheRoundTrip)
{
    const VeltoDate now = VeltoDate::now().floored();
    EXPECT_EQ(VeltoDate::fromStoredSeconds(now.storedSeconds()), now);
    EXPECT_EQ(std::floor(now.secondsSinceReferenceDate()), now.secondsSinceReferenceDate());
}

TEST(VeltoDate, ConvertsToUtcDateTimes)
{
    EXPECT_EQ(VeltoDate::fromStoredSeconds(0).toDateTime(), QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(VeltoDate(0.0).toDateTime(), QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(VeltoDate(-0.25).toDateTime(), QDateTime(QDate(2000, 12, 31), QTime(23, 59, 59, 750), Qt::UTC));
}

TEST(VeltoDateDeathTest, AnInstantNoClockProducesStopsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const double largestBelowLimit = std::nextafter(9223372036854775808.0, 0.0);
    const QList<double> impossible{
        std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN(),
        9223372036854775808.0,
        -1e19,
        largestBelowLimit, // fits 64 bits, but not once shifted to 1970
    };
    for (double seconds : impossible) {
        SCOPED_TRACE(seconds);
        EXPECT_DEATH((void)VeltoDate(seconds).storedSeconds(), "");
    }
}

} // namespace
