#include "cardtools/CardFormat.h"
#include "cardtools/Volumes.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestDiskArbitration.h"
#include "tests/support/TestPrinting.h"

#include <gmock/gmock.h>

#include <cerrno>

// No kill shows a missing one: what a process wrote outlives it, but not a pulled card.
TEST(Sync, FormattedCardIsDoneWhenItsFileSystemIsOnTheMedium)
{
    const TempFolder card;
    TestScriptRunner scripts;
    TestDiskArbitration disks;
    disks.volumes = {TestDiskArbitration::card(card.path())};
    CardFormat format(scripts, disks, [](const std::string&) {});
    CountedCalls calls;
    const auto made = format.run(usbDiskEntities(disks).front());
    EXPECT_EQ(made.step, CardFormat::Step::done) << made.text;
    ASSERT_FALSE(calls.names().empty());
    EXPECT_EQ(calls.names().back(), "syncfs");
    calls.fail("syncfs", EIO);
    const auto lost = format.run(made.card);
    EXPECT_EQ(lost.step, CardFormat::Step::foldersFailed);
    EXPECT_NE(lost.text, "");
}
