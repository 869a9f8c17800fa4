#include "BoardFilter.h"
#include "ProjectFilter.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

Card card(std::optional<QString> projectID = u"P1"_s, std::optional<QString> title = {},
          const QString &displayName = u"Quarterly Report"_s)
{
    Card card;
    card.title = std::move(title);
    card.displayName = displayName;
    card.displayPath = u"~/Documents/"_s + displayName;
    card.status = CardStatus::inProgress;
    card.priority = Priority::today;
    card.projectID = std::move(projectID);
    card.goal = u"ship the budget"_s;
    return card;
}

BoardFilter with(auto change)
{
    BoardFilter filter;
    change(filter);
    return filter;
}

ProjectFilter only(const QString &id) { return {ProjectFilter::Project{id}}; }

TEST(BoardFilter, TestsEveryFacet)
{
    const ProjectFilter unassigned{ProjectFilter::Unassigned{}};
    const QSet<QString> tags{u"T1"_s, u"T2"_s};
    const struct {
        const char *name;
        BoardFilter filter;
        Card card;
        QSet<QString> cardTagIDs;
        bool matches;
    } cases[] = {
        {"the default filter", {}, card(std::nullopt), {}, true},
        {"unassigned, card with project", with([&](auto &f) { f.project = unassigned; }), card(), {}, false},
        {"another project", with([](auto &f) { f.project = only(u"P2"_s); }), card(), {}, false},
        {"a project, card without one", with([](auto &f) { f.project = only(u""_s); }), card(std::nullopt), {}, false},
        {"two tags narrow: both carried", with([](auto &f) { f.tagIDs = {u"T1"_s, u"T2"_s}; }), card(), tags, true},
        {"two tags narrow: one missing", with([](auto &f) { f.tagIDs = {u"T1"_s, u"T3"_s}; }), card(), tags, false},
        {"two priorities widen", with([](auto &f) { f.priorities = {Priority::now, Priority::today}; }), card(), {}, true},
        {"another priority", with([](auto &f) { f.priorities = {Priority::now}; }), card(), {}, false},
        {"a hidden status", with([](auto &f) { f.visibleStatuses.erase(CardStatus::inProgress); }), card(), {}, false},
        {"only white space", with([](auto &f) { f.searchText = u" \t\r\n\u00A0\u2028"_s; }), card(), {}, true},
        {"padding is trimmed", with([](auto &f) { f.searchText = u"\n report \t"_s; }), card(), {}, true},
        {"the goal is not searched", with([](auto &f) { f.searchText = u"budget"_s; }), card(), {}, false},
        {"one failing facet among passing ones", with([&](auto &f) {
             f.project = only(u"P1"_s);
             f.tagIDs = {u"T2"_s};
             f.priorities = {Priority::today};
             f.searchText = u"annual"_s;
         }), card(), tags, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.filter.matches(c.card, c.cardTagIDs), c.matches);
    }
}

TEST(BoardFilter, SearchesTitleNameAndPathWithoutCaseOrDiacritics)
{
    const struct {
        std::optional<QString> title;
        QString displayName;
        QString search;
        bool matches;
    } cases[] = {
        {{}, u"Café Menu"_s, u"cafe"_s, true},
        {{}, u"Cafe\u0301"_s, u"café"_s, true},
        {{}, u"Tiếng Việt"_s, u"tieng viet"_s, true},
        {{}, u"Café"_s, u"cafa"_s, false},
        {{}, u"Straße"_s, u"STRASSE"_s, true},
        {{}, u"GROẞ"_s, u"gross"_s, true},
        {{}, u"O\uFB03ce"_s, u"office"_s, true},
        {{}, u"ΟΔΟΣ"_s, u"οδος"_s, true},
        {{}, u"İstanbul"_s, u"istanbul"_s, true},
        {{}, u"KAPI"_s, u"kapı"_s, false},
        {{}, u"Notes 𐐀"_s, u"𐐨"_s, true},
        {u"Q3"_s, u"Budget"_s, u"q3 budget"_s, true},
        {{}, u"Budget"_s, u"budget ~/documents"_s, true},
        {u"Q3 "_s, u"Budget"_s, u"q3  budget"_s, true},
        {u"Q3"_s, u"Budget"_s, u"budget q3"_s, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE((c.displayName + u" / "_s + c.search).toStdString());
        BoardFilter filter;
        filter.searchText = c.search;
        EXPECT_EQ(filter.matches(card(u"P1"_s, c.title, c.displayName), {}), c.matches);
    }
}

TEST(ProjectFilter, ComparesAndHashesByCaseAndPayload)
{
    const QList<ProjectFilter> distinct{{}, {ProjectFilter::Unassigned{}}, only(u""_s), only(u"P1"_s), only(u"p1"_s)};
    const QSet<ProjectFilter> lanes(distinct.begin(), distinct.end());
    EXPECT_EQ(lanes.size(), distinct.size());
    for (const ProjectFilter &filter : distinct)
        EXPECT_TRUE(lanes.contains(ProjectFilter(filter)));
}

} // namespace
