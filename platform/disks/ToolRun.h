#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace platform {

/// One run of another program.
struct ToolRequest {
    std::vector<std::string> command; // the program, looked for in PATH unless it has a folder, and arguments
    std::chrono::milliseconds limit{60'000};
    bool outputToo = false; // gather standard output as well as standard error
    std::vector<std::string> environment = {}; // "NAME=value"; empty: as ours
    bool endsWithUs = false; // killed when the thread that runs it ends, by whatever it ends
};

struct ToolResult {
    enum class End {
        exited,
        missing, // there is no such program
        failed, // it could not be started, or a signal ended it
        tookTooLong, // it was stopped
        stillRuns, // it took too long and cannot be stopped: it has other rights, or waits for a dead device
    };
    End end = End::failed;
    int status = 0; // what it exited with
    std::string text; // what it wrote, without line ends around it; at most 64 kB
    bool succeeded() const { return end == End::exited && status == 0; }
};

/// Runs a program without input and waits for its end, no longer than its time limit: then it is killed with
/// everything it started. One that cannot be killed is no longer waited for; when it ends, it is cleaned up.
/// Callable from any thread.
ToolResult runTool(const ToolRequest& request);

} // namespace platform
