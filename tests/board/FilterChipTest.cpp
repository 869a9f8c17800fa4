#include "FilterChip.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QList<Project> projects{{u"P1"_s, u"Work"_s, u"#2A78D6"_s}, {u"P2"_s, u"Home"_s, u"#E34948"_s}};
// The board's tag order, which is not the order of their ids.
const QList<Tag> tags{{u"T2"_s, u"urgent"_s, u"#008300"_s}, {u"T1"_s, u"client"_s, u"#8E8E93"_s}};

BoardFilter with(auto change)
{
    BoardFilter filter;
    change(filter);
    return filter;
}

FilterChip plain(const QString &id, const QString &label)
{
    return {id, label, std::nullopt};
}

TEST(FilterChip, StatesEachRestrictionInForceInOrder)
{
    const ProjectFilter unassigned{ProjectFilter::Unassigned{}};
    const struct {
        const char *name;
        BoardFilter filter;
        bool sortByPriority;
        QList<FilterChip> chips;
    } cases[] = {
        {"nothing restricted", {}, false, {}},
        {"no project", with([&](auto &f) { f.project = unassigned; }), false, {plain(u"project"_s, u"No Project"_s)}},
        {"a project has its name and colour", with([](auto &f) { f.project = {ProjectFilter::Project{u"P2"_s}}; }),
         false, {{u"project"_s, u"Home"_s, u"#E34948"_s}}},
        {"a deleted project", with([](auto &f) { f.project = {ProjectFilter::Project{u"P9"_s}}; }), false,
         {plain(u"project"_s, u"Project"_s)}},
        {"priorities in their own order",
         with([](auto &f) { f.priorities = {Priority::later, Priority::now, Priority::thisWeek}; }), false,
         {plain(u"priority-now"_s, u"Priority: Now"_s), plain(u"priority-this_week"_s, u"Priority: This Week"_s),
          plain(u"priority-later"_s, u"Priority: Later"_s)}},
        {"tags in the board's order", with([](auto &f) { f.tagIDs = {u"T1"_s, u"T2"_s}; }), false,
         {{u"tag-T2"_s, u"urgent"_s, u"#008300"_s}, {u"tag-T1"_s, u"client"_s, u"#8E8E93"_s}}},
        {"a tag that no longer exists", with([](auto &f) { f.tagIDs = {u"T1"_s, u"T9"_s}; }), false,
         {{u"tag-T1"_s, u"client"_s, u"#8E8E93"_s}}},
        {"two columns hidden", with([](auto &f) { f.visibleStatuses = {CardStatus::waiting, CardStatus::complete}; }),
         false,
         {plain(u"columns"_s, u"2 columns hidden"_s)}},
        {"all at once",
         with([](auto &f) {
             f.project = {ProjectFilter::Project{u"P1"_s}};
             f.priorities = {Priority::next};
             f.tagIDs = {u"T1"_s};
             f.visibleStatuses.erase(CardStatus::complete);
             f.searchText = u"report"_s;
         }),
         true,
         {{u"project"_s, u"Work"_s, u"#2A78D6"_s}, plain(u"priority-next"_s, u"Priority: Next"_s),
          {u"tag-T1"_s, u"client"_s, u"#8E8E93"_s}, plain(u"columns"_s, u"1 column hidden"_s),
          plain(u"sort"_s, u"Sorted by priority"_s)}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const QList<FilterChip> chips = FilterChip::activeChips(c.filter, c.sortByPriority, projects, tags);
        EXPECT_EQ(chips, c.chips);
    }
}

TEST(FilterChip, ClearingRemovesOnlyThatRestriction)
{
    const BoardFilter restricted = with([](BoardFilter &f) {
        f.project = {ProjectFilter::Project{u"P9"_s}};
        f.priorities = {Priority::now, Priority::later};
        f.tagIDs = {u"T1"_s, u"T2"_s};
        f.visibleStatuses = {CardStatus::inProgress};
        f.searchText = u"report"_s;
    });
    const struct {
        QString id;
        BoardFilter expected;
    } cases[] = {
        {u"project"_s, with([&](BoardFilter &f) { f = restricted; f.project = {}; })},
        {u"priority-later"_s, with([&](BoardFilter &f) { f = restricted; f.priorities = {Priority::now}; })},
        {u"tag-T2"_s, with([&](BoardFilter &f) { f = restricted; f.tagIDs = {u"T1"_s}; })},
        {u"columns"_s, with([&](BoardFilter &f) { f = restricted; f.visibleStatuses = BoardFilter{}.visibleStatuses; })},
        // Sorting is not part of the filter, and ids that name nothing change nothing.
        {u"sort"_s, restricted},
        {u"priority-someday"_s, restricted},
        {u"tag-T9"_s, restricted},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.id.toStdString());
        EXPECT_EQ(FilterChip::clearing(c.id, restricted), c.expected);
    }
}

} // namespace
