#include "Card.h"
#include "VeltoDate.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(BoardTitle, ShowsTheTitleUnlessItIsHorizontallyBlank)
{
    const struct {
        const char *name;
        std::optional<QString> title;
        QString boardTitle;
        bool hasCustomTitle;
    } cases[] = {
        {"no title", std::nullopt, u"Report"_s, false},
        {"spaces and a tab", u"   \t"_s, u"Report"_s, false},
        {"no-break and ideographic spaces", u"\u00A0\u3000"_s, u"Report"_s, false},
        {"a line feed among spaces is not blank", u" \r\n "_s, u" \r\n "_s, true},
        {"the folder's own name", u"Report"_s, u"Report"_s, false},
        {"the folder's name with padding", u" Report"_s, u" Report"_s, true},
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

TEST(VeltoDate, StoresFlooredSecondsSince1970)
{
    const struct {
        double secondsSinceReferenceDate;
        qint64 stored;
        QDateTime dateTime;
    } cases[] = {
        {0.0, 978307200, QDateTime(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC)},
        {0.999, 978307200, QDateTime(QDate(2001, 1, 1), QTime(0, 0, 0, 999), Qt::UTC)},
        {-0.25, 978307199, QDateTime(QDate(2000, 12, 31), QTime(23, 59, 59, 750), Qt::UTC)}, // floor, not truncation
        {-978307201.25, -2, QDateTime(QDate(1969, 12, 31), QTime(23, 59, 58, 750), Qt::UTC)},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.secondsSinceReferenceDate);
        EXPECT_EQ(VeltoDate(c.secondsSinceReferenceDate).storedSeconds(), c.stored);
        EXPECT_EQ(VeltoDate::fromStoredSeconds(c.stored), VeltoDate(c.secondsSinceReferenceDate).floored());
        EXPECT_EQ(VeltoDate(c.secondsSinceReferenceDate).toDateTime(), c.dateTime);
    }
}

} // namespace
