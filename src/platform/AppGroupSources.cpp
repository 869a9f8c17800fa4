#include "AppGroupSources.h"

#include <pwd.h>
#include <unistd.h>

AppGroupSources AppGroupSources::ofThisProcess()
{
    QString accountHome;
    if (const passwd *entry = getpwuid(getuid()); entry != nullptr && entry->pw_dir != nullptr)
        accountHome = QString::fromLocal8Bit(entry->pw_dir);
    return {QStringLiteral(VELTO_APP_GROUP_IDENTIFIER), QProcessEnvironment::systemEnvironment(), accountHome};
}

std::optional<QString> AppGroupSources::variable(const QString &name) const
{
    if (!environment.contains(name))
        return std::nullopt;
    return environment.value(name);
}
