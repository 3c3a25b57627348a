#pragma once

#include "platform/ScriptRunner.h"

namespace platform {

/// Commands on QProcess and the desktop's own opener.
class QtScriptRunner final : public ScriptRunner {
public:
    int system(const std::string& command) override;
    bool launchApplication(const std::string& name) override;
};

} // namespace platform
