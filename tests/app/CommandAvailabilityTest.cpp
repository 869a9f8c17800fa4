#include "CommandAvailability.h"
#include "InstallLocation.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct AvailabilityCase {
    const char *name;
    CommandContext context;
    CommandAvailability expected;
};

} // namespace

// Which menu commands a user can reach at each stage: before start-up only the windows with their
// own waiting panel; a card's commands only with a card selected; the moves never while the
// columns sort themselves.
TEST(CommandAvailabilityTest, EnablesEachCommandOnlyWhereItsModelsAre)
{
    const AvailabilityCase cases[] = {
        {"no board yet", {}, {}},
        {"a timer but no board", {.hasTimer = true, .timerIsRunning = true}, {.stopTimer = true}},
        {"a board, nothing selected",
         {.hasBoard = true, .hasTimer = true},
         {.addFolder = true, .refresh = true, .manageTaxonomy = true, .toggleSortByPriority = true}},
        {"a card selected",
         {.hasBoard = true, .hasSelection = true, .hasTimer = true},
         {.addFolder = true, .openInFileManager = true, .refresh = true, .manageTaxonomy = true, .move = true,
          .setStatus = true, .toggleSortByPriority = true, .startTimer = true}},
        {"a card selected while sorting by priority",
         {.hasBoard = true, .hasSelection = true, .sortsByPriority = true, .hasTimer = true},
         {.addFolder = true, .openInFileManager = true, .refresh = true, .manageTaxonomy = true, .move = false,
          .setStatus = true, .toggleSortByPriority = true, .startTimer = true}},
        {"a selection left over without a board", {.hasSelection = true, .hasTimer = true}, {}},
        {"a timer running",
         {.hasBoard = true, .hasTimer = true, .timerIsRunning = true},
         {.addFolder = true, .refresh = true, .manageTaxonomy = true, .toggleSortByPriority = true,
          .stopTimer = true}},
        {"a selection but no timer yet",
         {.hasBoard = true, .hasSelection = true},
         {.addFolder = true, .openInFileManager = true, .refresh = true, .manageTaxonomy = true, .move = true,
          .setStatus = true, .toggleSortByPriority = true}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(CommandAvailability::in(c.context), c.expected);
    }
}

// A temporary copy is on a read-only mount as well, and must still be told apart from it.
TEST(InstallLocationTest, JudgesThePathBeforeTheVolume)
{
    using InstallLocation::Verdict;
    const struct {
        QString path;
        bool readOnly;
        Verdict expected;
    } cases[] = {
        {u"/private/var/folders/x/AppTranslocation/1234/d/Velto.app"_s, true, Verdict::Translocated},
        {u"/private/var/folders/x/AppTranslocation/1234/d/Velto.app"_s, false, Verdict::Translocated},
        {u"/media/usb/.local/share/io.quillmere.Velto"_s, true, Verdict::ReadOnlyVolume},
        {u"/home/ann/.local/share/io.quillmere.Velto"_s, false, Verdict::Ok},
        {u"/home/ann/AppTranslocations/io.quillmere.Velto"_s, false, Verdict::Ok},
        {QString(), false, Verdict::Ok},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        EXPECT_EQ(InstallLocation::verdict(c.path, c.readOnly), c.expected);
    }
}

// On a first launch the data folder does not exist yet: the volume of the folder above it answers.
TEST(InstallLocationTest, AsksTheNearestFolderThatExists)
{
    EXPECT_FALSE(InstallLocation::isOnReadOnlyVolume(u"/tmp/velto-never-made/a/b/io.quillmere.Velto"_s));
    EXPECT_FALSE(InstallLocation::isOnReadOnlyVolume(QString()));
    // The kernel's own tree is mounted read-only wherever it is mounted at all.
    if (InstallLocation::isOnReadOnlyVolume(u"/sys/nothing-here"_s) != InstallLocation::isOnReadOnlyVolume(u"/sys"_s))
        ADD_FAILURE() << "a missing folder was not judged by the folder above it";
}
