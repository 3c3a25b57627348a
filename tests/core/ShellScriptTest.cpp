#include "cardtools/format/RunShellScript.h"
#include "platform/disks/DiskCommand.h"
#include "tests/support/TestPrinting.h"

#include <gtest/gtest.h>

TEST(ShellScript, CommandThatCouldLeaveItsQuotesDoesNotRun)
{
    TestScriptRunner runner;
    for (const std::string command : {"echo \"x\"", "echo \\n", "diskutil mount sdb1\""}) {
        const ErrorDictionary error = runShellScript(runner, command, false);
        EXPECT_NE(errorNumber(error), 0) << command;
        EXPECT_NE(errorMessage(error), "") << command;
    }
    EXPECT_TRUE(runner.commands.empty());
}

TEST(DiskCommand, IsReadOnlyWhenEveryWordIsAsKnown)
{
    using Kind = platform::DiskCommand::Kind;
    const std::string format = "sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c ";
    const auto read = platform::parsedDiskCommand(format + "128 mmcblk0p1");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->kind, Kind::format);
    EXPECT_EQ(read->cluster, 128);
    EXPECT_EQ(read->device, "mmcblk0p1");

    for (const std::string& wrong : {format + "sdb1", format + "32 /dev/sdb1", format + "32 ../sda",
             format + "32", format + "32 sdb1 sdc1", format + "32 -x", std::string("diskutil mount "),
             std::string("diskutil mount a;b"), std::string("diskutil eraseDisk sdb")})
        EXPECT_FALSE(platform::parsedDiskCommand(wrong)) << wrong;
}
