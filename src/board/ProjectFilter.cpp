#include "ProjectFilter.h"

bool ProjectFilter::admits(const std::optional<QString> &projectID) const
{
    if (std::holds_alternative<Any>(value))
        return true;
    if (std::holds_alternative<Unassigned>(value))
        return !projectID;
    return projectID == std::get<Project>(value).id;
}

size_t qHash(const ProjectFilter &filter, size_t seed) noexcept
{
    const auto *project = std::get_if<ProjectFilter::Project>(&filter.value);
    return qHashMulti(seed, filter.value.index(), project ? project->id : QString());
}
