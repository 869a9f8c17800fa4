#include "CardFacePaths.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(CardFacePaths, ShortPathTellsWhereTheFolderStandsRelativeToHome)
{
    const QString home = u"/home/ada"_s;
    const struct {
        const char *name;
        QString displayPath;
        QString home;
        QString shortPath;
    } cases[] = {
        {"a folder deep in home", u"/home/ada/Projects/Thesis/Draft"_s, home, u"Projects/Thesis"_s},
        {"a folder directly in home stands as it is", u"/home/ada/Thesis"_s, home, u"/Thesis"_s},
        {"outside home the leading pieces stay", u"/srv/work/Client/Site"_s, home, u"srv/work/Client"_s},
        {"a home that only begins a name is not cut", u"/home/adam/Thesis"_s, home, u"home/adam"_s},
        {"doubled and trailing slashes make no empty pieces", u"/home/ada//Projects///Thesis/"_s, home,
         u"Projects"_s},
        {"a home given with its slash", u"/home/ada/Projects/Thesis"_s, u"/home/ada/"_s, u"Projects"_s},
        {"no known home keeps the whole path", u"/home/ada/Projects/Thesis"_s, u""_s, u"home/ada/Projects"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CardFacePaths::shortPath(c.displayPath, c.home), c.shortPath);
    }
}

} // namespace
