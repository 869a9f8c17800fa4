#include "FilterChip.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString priorityPrefix = u"priority-"_s;
const QString tagPrefix = u"tag-"_s;

std::optional<FilterChip> projectChip(const ProjectFilter &filter, const QList<Project> &projects)
{
    if (std::holds_alternative<ProjectFilter::Unassigned>(filter.value))
        return FilterChip{u"project"_s, u"No Project"_s, std::nullopt};
    const auto *chosen = std::get_if<ProjectFilter::Project>(&filter.value);
    if (!chosen)
        return std::nullopt;
    const auto found = std::ranges::find(projects, chosen->id, &Project::id);
    // A project deleted meanwhile still restricts the board until the chip is cleared.
    if (found == projects.cend())
        return FilterChip{u"project"_s, u"Project"_s, std::nullopt};
    return FilterChip{u"project"_s, found->name, found->color};
}

QString hiddenColumnsLabel(size_t visible)
{
    const size_t hidden = allCardStatuses.size() - visible;
    return hidden == 1 ? u"1 column hidden"_s : u"%1 columns hidden"_s.arg(hidden);
}

} // namespace

QList<FilterChip> FilterChip::activeChips(const BoardFilter &filter, bool sortByPriority,
                                          const QList<Project> &projects, const QList<Tag> &tags)
{
    QList<FilterChip> chips;
    if (auto chip = projectChip(filter.project, projects))
        chips.append(*chip);
    for (Priority priority : allPriorities) {
        if (filter.priorities.contains(priority))
            chips.append({priorityPrefix + rawValue(priority), u"Priority: "_s + ::label(priority), std::nullopt});
    }
    for (const Tag &tag : tags) {
        if (filter.tagIDs.contains(tag.id))
            chips.append({tagPrefix + tag.id, tag.name, tag.color});
    }
    if (filter.visibleStatuses.size() < allCardStatuses.size())
        chips.append({u"columns"_s, hiddenColumnsLabel(filter.visibleStatuses.size()), std::nullopt});
    if (sortByPriority)
        chips.append({u"sort"_s, u"Sorted by priority"_s, std::nullopt});
    return chips;
}

BoardFilter FilterChip::clearing(const QString &id, BoardFilter filter)
{
    if (id == u"project"_s) {
        filter.project = {};
    } else if (id.startsWith(priorityPrefix)) {
        if (const auto priority = priorityFromRawValue(id.mid(priorityPrefix.size())))
            filter.priorities.erase(*priority);
    } else if (id.startsWith(tagPrefix)) {
        filter.tagIDs.remove(id.mid(tagPrefix.size()));
    } else if (id == u"columns"_s) {
        filter.visibleStatuses = {allCardStatuses.begin(), allCardStatuses.end()};
    }
    return filter;
}
