#include "cardtools/RunShellScript.h"
#include "platform/DiskCommand.h"
#include "tests/support/CollectedLog.h"
#include "tests/support/TestPrinting.h"

#include <gtest/gtest.h>

TEST(ShellScript, ErrorHoldsNumberAndMessageAndIsLogged)
{
    TestScriptRunner runner;
    const CollectedLog log;
    EXPECT_TRUE(runShellScript(runner, "true", false).empty());
    runner.script = [](const std::string&, bool) { return platform::ScriptResult{1, "no card"}; };
    const ErrorDictionary error = runShellScript(runner, "false", true);
    EXPECT_EQ(std::get<int>(error.at("NSAppleScriptErrorNumber")), 1);
    EXPECT_EQ(std::get<std::string>(error.at("NSAppleScriptErrorMessage")), "no card");
    EXPECT_EQ(runner.commands, (std::vector<std::string>{"true", "false as administrator"}));
    EXPECT_EQ(log.lines,
        (std::vector<std::string>{
            "ERROR={}", "ERROR={NSAppleScriptErrorNumber = 1; NSAppleScriptErrorMessage = no card}"}));
}

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
    EXPECT_EQ(platform::parsedDiskCommand("diskutil umountDisk sdb")->kind, Kind::unmountDisk);
    EXPECT_EQ(platform::parsedDiskCommand("diskutil umount sdb1")->kind, Kind::unmount);
    EXPECT_EQ(platform::parsedDiskCommand("diskutil mount sdb1")->kind, Kind::mount);

    for (const std::string& wrong : {format + "sdb1", format + "32 /dev/sdb1", format + "32 ../sda",
             format + "32", format + "32 sdb1 sdc1", format + "32 -x", std::string("diskutil mount "),
             std::string("diskutil mount a;b"), std::string("diskutil eraseDisk sdb")})
        EXPECT_FALSE(platform::parsedDiskCommand(wrong)) << wrong;
}
