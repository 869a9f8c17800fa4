#include "AppGroupContainer.h"

#include "AppGroupError.h"
#include "RawValueLookup.h"

#include <QDir>

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace {

const QString environmentVariable = u"VELTO_APP_GROUP"_s;

QString dataDirectoryBelow(const QString &home, const QString &identifier)
{
    return QDir::cleanPath(home + u"/.local/share/"_s + identifier);
}

} // namespace

QString rawValue(AppGroupContainer::Route route)
{
    switch (route) {
    case AppGroupContainer::Route::entitlement:
        return u"entitlement"_s;
    case AppGroupContainer::Route::homeDirectoryFallback:
        return u"homeDirectoryFallback"_s;
    }
    Q_UNREACHABLE();
}

std::optional<AppGroupContainer::Route> routeFromRawValue(const QString &raw)
{
    return caseWithRawValue<AppGroupContainer::Route>(
        {AppGroupContainer::Route::entitlement, AppGroupContainer::Route::homeDirectoryFallback}, raw);
}

bool AppGroupContainer::isUsableIdentifier(const QString &value)
{
    return !value.isEmpty()
        && !value.contains(u"$("_s)
        && !value.contains(u"REPLACE_WITH"_s)
        && !value.startsWith(u'.');
}

QString AppGroupContainer::configuredIdentifier(const AppGroupSources &sources)
{
    if (sources.bundleValue && isUsableIdentifier(*sources.bundleValue))
        return *sources.bundleValue;
    if (auto value = sources.variable(environmentVariable); value && isUsableIdentifier(*value))
        return *value;
    throw AppGroupError(AppGroupError::IdentifierNotConfigured{});
}

QString AppGroupContainer::userHomeDirectory(const AppGroupSources &sources)
{
    // The account database, not the process, so the path is the one another process would see.
    if (!sources.accountHome.isEmpty())
        return sources.accountHome;
    return QDir::homePath();
}

std::optional<QString> AppGroupContainer::systemContainer(const QString &identifier, const AppGroupSources &sources)
{
    if (auto dataHome = sources.variable(u"XDG_DATA_HOME"_s); dataHome && QDir::isAbsolutePath(*dataHome))
        return QDir::cleanPath(*dataHome + u'/' + identifier);
    if (auto home = sources.variable(u"HOME"_s); home && !home->isEmpty())
        return dataDirectoryBelow(*home, identifier);
    return std::nullopt;
}

AppGroupContainer AppGroupContainer::resolve(const AppGroupSources &sources)
{
    const QString identifier = configuredIdentifier(sources);
    if (auto path = systemContainer(identifier, sources))
        return {identifier, *path, Route::entitlement};
    return {identifier, dataDirectoryBelow(userHomeDirectory(sources), identifier), Route::homeDirectoryFallback};
}

void AppGroupContainer::ensureExists() const
{
    const std::filesystem::path directory(path.toStdString());
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (!error && !std::filesystem::is_directory(directory, error) && !error)
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        throw AppGroupError(AppGroupError::ContainerUnreachable{*this, QString::fromStdString(error.message())});
}
