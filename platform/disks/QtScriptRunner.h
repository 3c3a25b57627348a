#pragma once

#include "platform/ScriptRunner.h"
#include "platform/disks/DiskTools.h"

#include <chrono>
#include <string>

namespace platform {

/// Commands on QProcess and the desktop's own opener; shell scripts on /bin/sh, the disk commands on the
/// system's own tools.
class QtScriptRunner final : public ScriptRunner {
public:
    /// `shell` is the time limit of a command that is none of the disk commands.
    explicit QtScriptRunner(std::string formatHelper = {}, DiskToolLimits limits = {},
        std::chrono::milliseconds shell = std::chrono::minutes(10));

    int system(const std::string& command) override;
    bool launchApplication(const std::string& name) override;
    ScriptResult doShellScript(const std::string& command, bool withAdministratorPrivileges) override;
    void chooseMedium(const ChosenMedium& medium) override;

private:
    DiskTools diskTools;
    std::chrono::milliseconds shellLimit;
};

} // namespace platform
