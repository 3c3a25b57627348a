#include "common/CardRoot.h"
#include "common/ReplaceFile.h"
#include "common/StreamedFile.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/Testing.h"

#include <sys/file.h>

namespace {

size_t entriesIn(const std::string& folder)
{
    return size_t(std::distance(fs::directory_iterator(folder), {}));
}

TEST(CardRoot, NoWayLeadsThroughALinkOrOutOfTheCard)
{
    const TempFolder folder;
    fs::create_directories(folder.path("card/real/deep"));
    fs::create_directory(folder.path("home"));
    const std::string secret = folder.file("home/key", "secret");
    folder.file("card/real/deep/log", "log");
    fs::create_symlink("../home/key", folder.path("card/link"));
    fs::create_symlink("nowhere", folder.path("card/dangling"));
    fs::create_symlink("../home", folder.path("card/DrvInfo"));
    fs::create_symlink("real", folder.path("card/inside"));
    ASSERT_EQ(::mkfifo(folder.path("card/pipe").c_str(), 0600), 0);
    for (const CardRoot::Walk walk : {CardRoot::Walk::byKernel, CardRoot::Walk::stepByStep}) {
        const CardRoot card(folder.path("card"), walk);
        FileError why;
        EXPECT_EQ(card.file("real/deep/log").contents(100, why), "log");
        EXPECT_EQ(card.file("real/missing").isThere(), false);
        using Row = std::pair<std::string, int>;
        for (const auto& [name, reason] : {Row{"link", FileError::link}, {"dangling", FileError::link},
                 {"DrvInfo/key", FileError::link}, {"inside/deep/log", FileError::link},
                 {"real", FileError::noPlainFile}, {"pipe", FileError::noPlainFile}, {"../home/key", EXDEV},
                 {"real/../../home/key", EXDEV}, {folder.path("home/key"), EXDEV}, {"..", EINVAL}}) {
            SCOPED_TRACE(name);
            const FilePlace place = card.file(name);
            EXPECT_FALSE(place.open(why));
            EXPECT_EQ(why.code, reason) << why.text();
            EXPECT_FALSE(place.size());
            EXPECT_TRUE(replaceFile(place, "attack"));
        }
        EXPECT_EQ(contents(secret), "secret");
        EXPECT_EQ(card.makeFolder("DrvInfo").code, FileError::link);
        EXPECT_EQ(card.makeFolder("pipe").code, FileError::noPlainFile);
        EXPECT_FALSE(card.makeFolder("EventMovie"));
        EXPECT_FALSE(card.makeFolder("EventMovie")) << "it is there";
    }
    EXPECT_EQ(entriesIn(folder.path("home")), 1u);
    EXPECT_EQ(entriesIn(folder.path("card")), 7u) << "nothing is left beside";
}

TEST(FilePlace, AChosenLinkIsFollowedOnceAndItsTargetReplaced)
{
    const TempFolder folder;
    fs::create_directory(folder.path("home"));
    folder.file("home/real", "old");
    fs::create_symlink("home/real", folder.path("link"));
    const FilePlace place = FilePlace::chosen(folder.path("link"));
    fs::remove(folder.path("link"));
    EXPECT_FALSE(replaceFile(place, "newer"));
    EXPECT_EQ(contents(folder.path("home/real")), "newer");
    fs::create_symlink("loop", folder.path("loop"));
    EXPECT_TRUE(replaceFile(FilePlace::chosen(folder.path("loop")), "x"));
}

TEST(ReplaceFile, IsOnTheMediumBeforeItIsInPlaceAndStaysThere)
{
    const TempFolder folder;
    const FilePlace place = FilePlace::chosen(folder.file("config.bin", "old"));
    CountedCalls calls;
    EXPECT_FALSE(replaceFile(place, "new"));
    EXPECT_THAT(calls.names(), ElementsAre("fsync", "rename", "fsync", "fsync folder"));
    for (const char* const call : {"fsync", "rename"}) {
        SCOPED_TRACE(call);
        calls.fail(call, EIO);
        EXPECT_EQ(replaceFile(place, "newer").code, EIO);
        EXPECT_EQ(contents(folder.path("config.bin")), "new");
        EXPECT_EQ(entriesIn(folder.path()), 1u);
        calls.fail(call, 0);
    }
    // What is in place may be another program's by now: nothing is taken back.
    calls.fail("fsync folder", EIO);
    EXPECT_EQ(replaceFile(place, "newest").code, EIO);
    EXPECT_EQ(contents(folder.path("config.bin")), "newest");
}

TEST(ReplaceFile, LeftoversOfKilledProgramsGoAndThoseOfOthersStay)
{
    const TempFolder folder;
    const FilePlace place = FilePlace::chosen(folder.path("export.csv"));
    for (const char* const name : {".zvk00000001.tmp", ".zvk0000002.tmp", ".zvkzzzzzzzz.tmp", "mine.tmp"})
        folder.file(name, "x");
    fs::create_symlink("mine.tmp", folder.path(".zvk00000003.tmp"));
    StreamedFile running(place);
    EXPECT_TRUE(running.write("a long export"));
    EXPECT_FALSE(replaceFile(FilePlace::chosen(folder.path("config.bin")), "settings"));
    EXPECT_FALSE(fs::exists(folder.path(".zvk00000001.tmp")));
    EXPECT_FALSE(running.finish()) << "another save took it for a leftover";
    EXPECT_EQ(contents(folder.path("export.csv")), "a long export");
    EXPECT_EQ(entriesIn(folder.path()), 6u);
}

TEST(SaveLock, WaitsForAnotherSaveButNotForEver)
{
    const TempFolder folder;
    const FilePlace place = FilePlace::chosen(folder.path("config.bin"));
    const Descriptor other(::open(folder.path().c_str(), O_RDONLY | O_DIRECTORY));
    ASSERT_EQ(::flock(other.get(), LOCK_EX), 0);
    EXPECT_EQ(SaveLock(place, 40ms).error().code, FileError::locked);
    ASSERT_EQ(::flock(other.get(), LOCK_UN), 0);
    EXPECT_FALSE(SaveLock(place).error());
}

} // namespace
