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
        {"home itself leaves nothing", u"/home/ada"_s, home, u""_s},
        {"outside home the leading pieces stay", u"/srv/work/Client/Site"_s, home, u"srv/work/Client"_s},
        {"a one-piece path outside home stands as it is", u"/Thesis"_s, home, u"/Thesis"_s},
        {"a home that only begins a name is not cut", u"/home/adam/Thesis"_s, home, u"home/adam"_s},
        {"doubled and trailing slashes make no empty pieces", u"/home/ada//Projects///Thesis/"_s, home,
         u"Projects"_s},
        {"a home given with its slash", u"/home/ada/Projects/Thesis"_s, u"/home/ada/"_s, u"Projects"_s},
        {"no known home keeps the whole path", u"/home/ada/Projects/Thesis"_s, u""_s, u"home/ada/Projects"_s},
        {"an empty path stays empty", u""_s, home, u""_s},
        {"spaces and non-ASCII names pass through", u"/home/ada/Écrits et notes/Roman 2/Chapitre"_s, home,
         u"Écrits et notes/Roman 2"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CardFacePaths::shortPath(c.displayPath, c.home), c.shortPath);
    }
}

} // namespace
