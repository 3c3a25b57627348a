#include "platform/disks/ToolRun.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/Testing.h"

#include <sys/prctl.h>
#include <sys/wait.h>

#include <thread>

namespace {

using platform::runTool;

/// What the file says, as soon as it does.
pid_t toldProcess(const std::string& file)
{
    std::string text;
    for (const auto end = std::chrono::steady_clock::now() + 20s;
         !text.ends_with('\n') && std::chrono::steady_clock::now() < end; text = contents(file))
        std::this_thread::yield();
    return text.empty() ? -1 : std::stoi(text);
}

TEST(ToolRun, WhatCannotBeStoppedIsToldAndLeavesNothingWhenItEnds)
{
    const TempFolder folder;
    CountedCalls calls;
    calls.fail("kill", EPERM);
    const auto run = runTool({{"sh", "-c", "echo $$ > " + folder.path("pid") + "; exec sleep 600"}, 500ms});
    EXPECT_EQ(run.end, platform::ToolResult::End::stillRuns);
    calls.fail("kill", 0);
    const pid_t process = toldProcess(folder.path("pid"));
    ASSERT_EQ(kill(process, SIGKILL), 0);
    siginfo_t info{};
    for (const auto end = std::chrono::steady_clock::now() + 20s; std::chrono::steady_clock::now() < end
         && waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0;)
        std::this_thread::yield();
    EXPECT_EQ(errno, ECHILD) << "it is still there, if only as a zombie";
}

TEST(ToolRun, ToolEndsWithTheOneWhoRunsIt)
{
    const TempFolder folder;
    ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    const pid_t runner = fork();
    if (runner == 0) {
        runTool({{"sh", "-c", "echo $$ > " + folder.path("pid") + "; exec sleep 20"}, 60s, false, {}, true});
        _exit(0);
    }
    const pid_t tool = toldProcess(folder.path("pid"));
    ASSERT_EQ(kill(runner, SIGKILL), 0);
    EXPECT_EQ(waitpid(runner, nullptr, 0), runner);
    int status = 0;
    EXPECT_EQ(waitpid(tool, &status, 0), tool);
    EXPECT_TRUE(WIFSIGNALED(status));
    prctl(PR_SET_CHILD_SUBREAPER, 0);
}

} // namespace
