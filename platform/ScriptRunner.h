#pragma once

#include <string>

namespace platform {

/// Runs the application's command lines. Main thread only.
class ScriptRunner {
public:
    virtual ~ScriptRunner() = default;

    /// Runs a plain command line without waiting for what it starts; 0 when it was started. The one that is
    /// known is "open PATH > /dev/null &", which shows a file in the desktop's viewer: PATH is absolute and
    /// taken as it stands, without quoting. Any other line is refused.
    virtual int system(const std::string& command) = 0;

    /// Starts the desktop's application that does what is known as this name: "Disk Utility". False when
    /// there is none that could be started.
    virtual bool launchApplication(const std::string& name) = 0;
};

} // namespace platform
