#include "cardtools/format/CardFormat.h"
#include "cardtools/volumes/Volumes.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/TestDiskArbitration.h"
#include "tests/support/TestPrinting.h"
#include "tests/support/Testing.h"

// No kill shows a missing one: what a process wrote outlives it, but not a pulled card.
TEST(Sync, FormattedCardIsDoneWhenItsFileSystemIsOnTheMedium)
{
    const TempFolder card;
    const TempFolder copies;
    TestScriptRunner scripts;
    TestDiskArbitration disks;
    disks.volumes = {TestDiskArbitration::card(card.path())};
    const auto formatted = [&] {
        CardFormat format(scripts, disks, copies.path(), [](CardFormat::Phase) {});
        EXPECT_EQ(format.prepare(formattableDisks(disks).front()).step, CardFormat::Step::done);
        return format.run();
    };
    CountedCalls calls;
    const auto made = formatted();
    EXPECT_EQ(made.step, CardFormat::Step::done) << made.text;
    ASSERT_FALSE(calls.names().empty());
    EXPECT_EQ(calls.names().back(), "syncfs");
    calls.fail("syncfs", EIO);
    const auto lost = formatted();
    EXPECT_EQ(lost.step, CardFormat::Step::foldersFailed);
    EXPECT_NE(lost.text, "");
    EXPECT_EQ(contents(lost.keptCopy), contents(card.path("config.bin"))) << "it may not be on the medium";
}
