#include "Await.h"
#include "FakeFileManager.h"
#include "FileManagerReveal.h"

#include <QDBusConnection>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(FileManagerRevealTest, TheFileManagerShowsTheFolderOrTheDesktopOpensTheOneAroundIt)
{
    const QUrl folder = QUrl::fromLocalFile(u"/home/ada/Thesis"_s);
    const struct {
        const char *name;
        bool fileManager;
        bool bus;
        bool fallbackOpens;
        bool shown;
        QList<QUrl> fallbackAsked;
    } cases[] = {
        {"a file manager answers", true, true, true, true, {}},
        {"none answers, the folder around it opens", false, true, true, true, {QUrl::fromLocalFile(u"/home/ada"_s)}},
        {"none answers and nothing opens", false, true, false, false, {QUrl::fromLocalFile(u"/home/ada"_s)}},
        {"no bus at all", false, false, false, false, {QUrl::fromLocalFile(u"/home/ada"_s)}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::optional<FakeFileManager> fileManager;
        if (c.fileManager)
            fileManager.emplace();
        QList<QUrl> fallbackAsked;
        const bool shown = await(revealInFileManager(
            folder, c.bus ? QDBusConnection::sessionBus() : QDBusConnection(u"no-bus"_s), [&](const QUrl &url) {
                fallbackAsked.append(url);
                return c.fallbackOpens;
            }));
        EXPECT_EQ(shown, c.shown);
        EXPECT_EQ(fallbackAsked, c.fallbackAsked);
        if (fileManager) {
            EXPECT_EQ(fileManager->shown, QStringList{folder.toString()});
        }
    }
}

} // namespace
