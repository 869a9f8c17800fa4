#include "AppGroupError.h"

#include "PlatformText.h"

using namespace Qt::StringLiterals;

namespace {

QString describe(const AppGroupError::Reason &reason)
{
    if (std::holds_alternative<AppGroupError::IdentifierNotConfigured>(reason))
        return PlatformText::identifierNotConfigured(u"VELTO_APP_GROUP"_s);

    const auto &unreachable = std::get<AppGroupError::ContainerUnreachable>(reason);
    const QString how = unreachable.container.route == AppGroupContainer::Route::entitlement
        ? PlatformText::containerFoundThroughDataDirectory()
        : PlatformText::containerBuiltFromAccountHome();
    return u"Could not use the App Group container at "_s + unreachable.container.path + u".\n"_s + how
        + u"\nUnderlying error: "_s + unreachable.underlying;
}

} // namespace

AppGroupError::AppGroupError(Reason reason) : VeltoError(describe(reason)), m_reason(std::move(reason)) {}
