#include "platform/disks/QtScriptRunner.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/Testing.h"

namespace {

/// Programs that are shell scripts, first or alone in PATH.
class ScriptRunner : public testing::Test {
protected:
    ~ScriptRunner() override { setenv("PATH", path.c_str(), 1); }

    platform::ScriptResult run(const std::string& command, bool privileged = false)
    {
        setenv("PATH", (folder.path() + ":" + path).c_str(), 1);
        return runner.doShellScript(command, privileged);
    }
    std::string said() const { return contents(folder.path("said")); }
    std::string say() const { return "echo \"$@\" >> " + folder.path("said") + "\n"; }

    const std::string path = getenv("PATH");
    TempFolder folder;
    platform::DiskToolLimits limits{20s, 300ms, {}};
    platform::QtScriptRunner runner{folder.program("helper", ""), limits, 300ms};
    const std::string format = "sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c 32 sdz1";
};

} // namespace

TEST_F(ScriptRunner, ShellCommandAnswersItsStatusAndItsErrorText)
{
    EXPECT_EQ(run("echo out").number, 0);
    const platform::ScriptResult failed = run("echo out; echo why >&2; exit 3");
    EXPECT_EQ(failed.number, 3);
    EXPECT_EQ(failed.message, "why");
    EXPECT_EQ(run("exit 1").number, 1);
    const platform::ScriptResult slow = run("sleep 600");
    EXPECT_LT(slow.number, 0);
    EXPECT_THAT(slow.message, HasSubstr("too long"));
    EXPECT_LT(run("kill -9 $$").number, 0);
    // What it leaves running is not waited for.
    EXPECT_EQ(run("sleep 600 & exit 0").number, 0);
}

TEST_F(ScriptRunner, DiskCommandsGoToTheDisksOwnTool)
{
    folder.program("udisksctl", say());
    EXPECT_EQ(run("diskutil umount sdz1").number, 0);
    EXPECT_EQ(run("diskutil umountDisk sdz").number, 0);
    EXPECT_EQ(run("diskutil mount sdz1").number, 0);
    EXPECT_EQ(said(),
        "unmount -b /dev/sdz1 --no-user-interaction\nunmount -b /dev/sdz --no-user-interaction\n"
        "mount -b /dev/sdz1 --no-user-interaction\n");
    folder.program("udisksctl", "echo 'Error: NotMounted' >&2; exit 1\n");
    EXPECT_EQ(run("diskutil umount sdz1").number, 0);
    folder.program("udisksctl", "echo 'target is busy' >&2; exit 1\n");
    EXPECT_EQ(run("diskutil umount sdz1").message, "target is busy");
    // The system needs some tries until it knows the new file system.
    folder.program("udisksctl",
        "[ -e " + folder.path("seen") + " ] && exit 0; touch " + folder.path("seen")
            + "; echo 'Object is not a mountable filesystem.' >&2; exit 1\n");
    EXPECT_EQ(run("diskutil mount sdz1").number, 0);
}

TEST_F(ScriptRunner, FormatsOnlyTheChosenMediumAndThatOnce)
{
    folder.program("pkexec", say() + "exit 25\n");
    EXPECT_LT(run(format, true).number, 0);
    runner.chooseMedium({"sdy1", 1024});
    EXPECT_LT(run(format, true).number, 0);
    EXPECT_EQ(said(), "");
    runner.chooseMedium({"sdz1", 1024});
    EXPECT_EQ(run(format, true).number, 25);
    EXPECT_LT(run(format, true).number, 0);
    EXPECT_EQ(said(), folder.path("helper") + " sdz1 32 1024 -\n");
}

TEST_F(ScriptRunner, OddDiskCommandsNeverReachAShell)
{
    folder.program("pkexec", say());
    folder.program("diskutil", say());
    for (const std::string& command : {std::string("diskutil umount sdz1; sdz2"), format + "; reboot",
             " " + format, std::string("diskutil eraseDisk sdz")})
        EXPECT_LT(run(command, true).number, 0) << command;
    EXPECT_EQ(said(), "");
}

TEST_F(ScriptRunner, TellsWhoSaidNoAndWhatIsMissing)
{
    const auto answered = [&](const std::string& pkexec) {
        folder.program("pkexec", pkexec);
        runner.chooseMedium({"sdz1", 1024});
        return run(format, true);
    };
    EXPECT_EQ(answered("exit 126\n").number, -128);
    EXPECT_THAT(answered("exit 126\n").message, HasSubstr("cancelled"));
    EXPECT_THAT(answered("echo 'Not authorized' >&2; exit 127\n").message, HasSubstr("Not authorized"));
    const auto nobodyAsks =
        answered("echo \"Error creating textual authentication agent: Error opening current"
                 " controlling terminal for the process ('/dev/tty')\" >&2; exit 127\n");
    EXPECT_THAT(nobodyAsks.message, HasSubstr("password"));
    EXPECT_THAT(nobodyAsks.message, testing::Not(HasSubstr("tty")));
    EXPECT_THAT(answered("sleep 600\n").message, HasSubstr("too long"));
    CountedCalls calls;
    calls.fail("kill", EPERM);
    EXPECT_THAT(answered("sleep 1\n").message, HasSubstr("still works on the card"));

    setenv("PATH", folder.path("empty").c_str(), 1);
    EXPECT_THAT(runner.doShellScript("diskutil mount sdz1", false).message, HasSubstr("udisksctl"));
    runner.chooseMedium({"sdz1", 1024});
    EXPECT_THAT(runner.doShellScript(format, true).message, HasSubstr("pkexec"));
    platform::QtScriptRunner without("/nowhere/zavik-format-card");
    without.chooseMedium({"sdz1", 1024});
    EXPECT_THAT(without.doShellScript(format, true).message, HasSubstr("zavik-format-card"));
    setenv("FLATPAK_ID", "org.zavik.zavik", 1);
    EXPECT_THAT(run(format, true).message, HasSubstr("package \"zavik\""));
    unsetenv("FLATPAK_ID");
}

TEST_F(ScriptRunner, OpensAPathAsItStandsAndRunsNoOtherSystemCommand)
{
    // A fifo tells when the desktop's opener has run.
    ::mkfifo(folder.path("arguments").c_str(), 0600);
    folder.program(
        "xdg-open", "echo noise >&2; printf '%s|' \"$#\" \"$@\" > " + folder.path("arguments") + "\n");
    setenv("PATH", (folder.path() + ":" + path).c_str(), 1);
    for (const std::string file : {"/tmp/zavik_capture.jpg", "/tmp/a b/it's \"$(touch x)\"; & > y.jpg"}) {
        ASSERT_EQ(runner.system("open " + file + " > /dev/null &"), 0);
        EXPECT_EQ(contents(folder.path("arguments")), "1|" + file + "|");
    }
    const CollectedLog log;
    for (const std::string command :
        {"", "open  > /dev/null &", "open relative.jpg > /dev/null &", "open -a > /dev/null &",
            "rm -rf /tmp/x", "open /tmp/x", "open /tmp/x > /dev/null", "sh -c 'open /tmp/x > /dev/null &"})
        EXPECT_NE(runner.system(command), 0) << command;
    EXPECT_EQ(log.lines.size(), 8u);
    setenv("PATH", "", 1);
    EXPECT_NE(runner.system("open /tmp/x > /dev/null &"), 0) << "no opener";
}
