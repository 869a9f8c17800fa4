#include "AppGroupContainer.h"
#include "AppGroupError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString identifierNotConfiguredText =
    u"No App Group identifier. Set VELTO_APP_GROUP_IDENTIFIER when configuring the build, or set the "
    u"VELTO_APP_GROUP environment variable."_s;

AppGroupSources sources(std::optional<QString> bundle, QList<std::pair<QString, QString>> variables,
                        QString accountHome = u"/home/account"_s)
{
    QProcessEnvironment environment;
    for (const auto &[name, value] : variables)
        environment.insert(name, value);
    return {std::move(bundle), environment, std::move(accountHome)};
}

TEST(AppGroupContainer, UsableIdentifiers)
{
    const struct {
        QString value;
        bool usable;
    } cases[] = {
        {u"io.quillmere.Velto"_s, true},
        {u""_s, false},
        {u"$(TEAM_ID).io.quillmere.Velto"_s, false},
        {u"group.$(X)"_s, false},
        {u"$ (not a build setting)"_s, true},
        {u"REPLACE_WITH_TEAM.Velto"_s, false},
        {u"replace_with.Velto"_s, true},
        {u".io.quillmere.Velto"_s, false},
        {u" .leading blank"_s, true},
        {u"x"_s, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value.toStdString());
        EXPECT_EQ(AppGroupContainer::isUsableIdentifier(c.value), c.usable);
    }
}

TEST(AppGroupContainer, BuildValueWinsOverTheEnvironment)
{
    const struct {
        const char *name;
        AppGroupSources sources;
        std::optional<QString> expected; // absent: identifierNotConfigured
    } cases[] = {
        {"build value alone", sources(u"io.quillmere.Velto"_s, {}), u"io.quillmere.Velto"_s},
        {"build value beats a different variable", sources(u"a.b"_s, {{u"VELTO_APP_GROUP"_s, u"c.d"_s}}), u"a.b"_s},
        {"unexpanded build value, no variable", sources(u"$(TEAM).Velto"_s, {}), std::nullopt},
        {"unexpanded build value, usable variable", sources(u"$(TEAM).Velto"_s, {{u"VELTO_APP_GROUP"_s, u"c.d"_s}}), u"c.d"_s},
        {"leading dot refused", sources(u".io.quillmere.Velto"_s, {}), std::nullopt},
        {"no build value, usable variable", sources(std::nullopt, {{u"VELTO_APP_GROUP"_s, u"c.d"_s}}), u"c.d"_s},
        {"empty variable counts as absent", sources(std::nullopt, {{u"VELTO_APP_GROUP"_s, u""_s}}), std::nullopt},
        {"both unusable", sources(u"REPLACE_WITH_ME"_s, {{u"VELTO_APP_GROUP"_s, u".x"_s}}), std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::optional<QString> identifier;
        try {
            identifier = AppGroupContainer::configuredIdentifier(c.sources);
        } catch (const AppGroupError &error) {
            EXPECT_EQ(error.text(), identifierNotConfiguredText);
        }
        EXPECT_EQ(identifier, c.expected);
    }
}

TEST(AppGroupContainer, ResolvesTheDataDirectoryOrBuildsThePathByHand)
{
    using Route = AppGroupContainer::Route;
    const struct {
        const char *name;
        QList<std::pair<QString, QString>> variables;
        QString accountHome;
        AppGroupContainer expected;
    } cases[] = {
        {"XDG_DATA_HOME", {{u"XDG_DATA_HOME"_s, u"/data/xdg"_s}, {u"HOME"_s, u"/home/h"_s}}, u"/home/account"_s,
         {u"io.quillmere.Velto"_s, u"/data/xdg/io.quillmere.Velto"_s, Route::entitlement}},
        {"relative XDG_DATA_HOME is ignored", {{u"XDG_DATA_HOME"_s, u"data"_s}, {u"HOME"_s, u"/home/h"_s}}, u"/home/account"_s,
         {u"io.quillmere.Velto"_s, u"/home/h/.local/share/io.quillmere.Velto"_s, Route::entitlement}},
        {"HOME", {{u"HOME"_s, u"/home/h/"_s}}, u"/home/account"_s,
         {u"io.quillmere.Velto"_s, u"/home/h/.local/share/io.quillmere.Velto"_s, Route::entitlement}},
        {"neither: the account's home", {}, u"/home/account"_s,
         {u"io.quillmere.Velto"_s, u"/home/account/.local/share/io.quillmere.Velto"_s, Route::homeDirectoryFallback}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(AppGroupContainer::resolve(sources(u"io.quillmere.Velto"_s, c.variables, c.accountHome)), c.expected);
    }
}

TEST(AppGroupContainer, RouteRawValuesRoundTrip)
{
    for (auto route : {AppGroupContainer::Route::entitlement, AppGroupContainer::Route::homeDirectoryFallback})
        EXPECT_EQ(routeFromRawValue(rawValue(route)), route);
    EXPECT_EQ(rawValue(AppGroupContainer::Route::homeDirectoryFallback), u"homeDirectoryFallback"_s);
    EXPECT_EQ(routeFromRawValue(u"Entitlement"_s), std::nullopt);
}

TEST(AppGroupContainer, EnsureExistsMakesParentsAndAcceptsAnExistingDirectory)
{
    QTemporaryDir dir;
    const AppGroupContainer container{u"id"_s, dir.filePath(u"a/b/id"_s), AppGroupContainer::Route::entitlement};
    container.ensureExists();
    EXPECT_TRUE(QDir(container.path).exists());
    QFile marker(container.path + u"/marker"_s);
    ASSERT_TRUE(marker.open(QIODevice::WriteOnly));
    marker.close();
    container.ensureExists();
    EXPECT_TRUE(marker.exists());
}

TEST(AppGroupContainer, UnreachableContainerNamesThePathAndTheRoute)
{
    QTemporaryDir dir;
    QFile blocker(dir.filePath(u"file"_s));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();

    const struct {
        AppGroupContainer::Route route;
        QString routeText;
    } cases[] = {
        {AppGroupContainer::Route::entitlement, u"Resolved through the user's data directory (XDG_DATA_HOME or HOME)."_s},
        {AppGroupContainer::Route::homeDirectoryFallback,
         u"The user's data directory is NOT known to this process (neither XDG_DATA_HOME nor HOME is set); this path "
         u"was constructed by hand from the account's home directory."_s},
    };
    for (const auto &c : cases) {
        const AppGroupContainer container{u"id"_s, dir.filePath(u"file/id"_s), c.route};
        try {
            container.ensureExists();
            FAIL() << "a directory under a file cannot be made";
        } catch (const AppGroupError &error) {
            EXPECT_EQ(error.text(), u"Could not use the App Group container at "_s + container.path + u".\n"_s
                                        + c.routeText + u"\nUnderlying error: Not a directory"_s);
        }
    }
}

} // namespace
