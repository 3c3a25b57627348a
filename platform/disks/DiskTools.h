#pragma once

#include "platform/ScriptRunner.h"
#include "platform/disks/DiskCommand.h"
#include "platform/disks/ToolRun.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

/// How long the disk commands may take.
struct DiskToolLimits {
    std::chrono::milliseconds tool{60'000};
    // Includes the time for typing a password. The helper's own limit is shorter than the rest.
    std::chrono::milliseconds format{20 * 60'000};
    // The system needs a moment to see the new file system.
    std::chrono::milliseconds betweenMounts{500};
};

/// Carries out the application's disk commands: mounts through udisksctl, formats through pkexec and the
/// format helper, which checks all of its arguments. Callable from any thread.
class DiskTools {
public:
    /// The format helper's path; by itself it is looked for beside the program and where it is installed.
    explicit DiskTools(std::string formatHelper = {}, DiskToolLimits times = {});

    ScriptResult run(const DiskCommand& command);
    void chooseMedium(const ChosenMedium& medium);

private:
    struct Chosen {
        ChosenMedium medium;
        std::string sequence; // the medium's, when it was chosen
    };

    ScriptResult unmount(const DiskCommand& command) const;
    ScriptResult mount(const std::string& device) const;
    ScriptResult format(const DiskCommand& command);

    std::string helper;
    DiskToolLimits limits;
    std::mutex mutex; // guards `chosen`
    std::optional<Chosen> chosen;
};

/// The command's result for a tool's result.
ScriptResult scriptResult(const std::string& tool, const ToolResult& run);

/// The same of a tool that was started with administrator rights: the user may have said no.
ScriptResult privilegedResult(const std::string& tool, const ToolResult& run);

} // namespace platform
