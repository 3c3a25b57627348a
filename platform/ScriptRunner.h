#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// A shell script's result.
struct ScriptResult {
    int number = 0; // 0: it ran and exited with status 0
    std::string message; // for the user; empty on success
};

/// A medium as the user saw it when choosing it.
struct ChosenMedium {
    std::string deviceName; // without "/dev/"
    uint64_t size = 0; // in bytes
};

/// Runs the application's command lines. Main thread only, unless an operation says otherwise.
class ScriptRunner {
public:
    virtual ~ScriptRunner() = default;

    /// Runs a plain command line without waiting for what it starts; 0 when it was started. The one that is
    /// known is "open PATH > /dev/null &", which shows a file in the desktop's viewer: PATH is absolute and
    /// taken as it stands, without quoting. Any other line is refused.
    virtual int system(const std::string& command) = 0;

    /// Starts the desktop's application for this purpose: "Disk Utility". False when there is none that could
    /// be started.
    virtual bool launchApplication(const std::string& name) = 0;

    /// Runs one shell command line and waits for its end; its output is not used. With administrator rights
    /// the user is asked first, and nothing runs without the user's agreement. Every command has a time
    /// limit. `number` is the exit status, or the runner's own (negative) number when the command could not
    /// run, was refused, or took too long. Any thread but the main one.
    ///
    /// The disk commands "diskutil umountDisk D", "diskutil umount D", "diskutil mount D" and
    /// "sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c N D" (D: a device's name without "/dev/") are
    /// carried out with this system's own tools, in any other form refused. The last one is carried out only
    /// on the chosen medium.
    virtual ScriptResult doShellScript(const std::string& command, bool withAdministratorPrivileges) = 0;

    /// The one medium that the next format command may touch; it counts for one command. If another medium is
    /// in its place by then, the command fails and writes nothing. Any thread.
    virtual void chooseMedium(const ChosenMedium& medium) = 0;
};

} // namespace platform
