#include "AppGroupContainer.h"
#include "AppGroupError.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

AppGroupSources sources(std::optional<QString> bundle, QList<std::pair<QString, QString>> variables = {})
{
    QProcessEnvironment environment;
    for (const auto &[name, value] : variables)
        environment.insert(name, value);
    return {std::move(bundle), environment, u"/home/account"_s};
}

TEST(AppGroupContainer, TakesTheFirstUsableIdentifierAndResolvesItsFolder)
{
    using Route = AppGroupContainer::Route;
    const QString id = u"io.quillmere.Velto"_s;
    const std::pair<QString, QString> variable{u"VELTO_APP_GROUP"_s, u"c.d"_s};
    const struct {
        const char *name;
        AppGroupSources sources;
        std::optional<AppGroupContainer> expected; // absent: no usable identifier
    } cases[] = {
        {"build value beats the variable; no data directory known", sources(id, {variable}),
         {{id, u"/home/account/.local/share/"_s + id, Route::homeDirectoryFallback}}},
        {"unexpanded build value falls to the variable",
         sources(u"$(TEAM).Velto"_s, {variable, {u"HOME"_s, u"/home/h/"_s}}),
         {{u"c.d"_s, u"/home/h/.local/share/c.d"_s, Route::entitlement}}},
        {"no build value", sources(std::nullopt, {variable, {u"XDG_DATA_HOME"_s, u"/data"_s}}),
         {{u"c.d"_s, u"/data/c.d"_s, Route::entitlement}}},
        {"relative XDG_DATA_HOME is ignored",
         sources(id, {{u"XDG_DATA_HOME"_s, u"data"_s}, {u"HOME"_s, u"/home/h"_s}}),
         {{id, u"/home/h/.local/share/"_s + id, Route::entitlement}}},
        {"placeholder and leading dot refused",
         sources(u"REPLACE_WITH_TEAM.Velto"_s, {{u"VELTO_APP_GROUP"_s, u".x"_s}}), std::nullopt},
        {"an empty variable counts as absent", sources(std::nullopt, {{u"VELTO_APP_GROUP"_s, u""_s}}), std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        try {
            EXPECT_EQ(AppGroupContainer::resolve(c.sources), c.expected);
        } catch (const AppGroupError &error) {
            EXPECT_FALSE(c.expected);
            EXPECT_TRUE(error.text().startsWith(u"No App Group identifier. Set VELTO_APP_GROUP_IDENTIFIER"_s));
        }
    }
}

TEST(AppGroupContainer, UnreachableContainerNamesThePathAndHowItWasFound)
{
    QTemporaryDir dir;
    QFile blocker(dir.filePath(u"file"_s));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const struct {
        AppGroupContainer::Route route;
        QString routeText;
    } cases[] = {
        {AppGroupContainer::Route::entitlement,
         u"Resolved through the user's data directory (XDG_DATA_HOME or HOME)."_s},
        {AppGroupContainer::Route::homeDirectoryFallback,
         u"The user's data directory is NOT known to this process (neither XDG_DATA_HOME nor HOME is set); this path "
         u"was constructed by hand from the account's home directory."_s},
    };
    for (const auto &c : cases) {
        const AppGroupContainer container{u"id"_s, dir.filePath(u"file/id"_s), c.route};
        try {
            container.ensureExists();
            ADD_FAILURE() << "a directory under a file cannot be made";
        } catch (const AppGroupError &error) {
            EXPECT_EQ(error.text(), u"Could not use the App Group container at "_s + container.path + u".\n"_s
                                        + c.routeText + u"\nUnderlying error: Not a directory"_s);
        }
    }
}

} // namespace
