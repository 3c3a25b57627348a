#pragma once

#include "platform/ScriptRunner.h"

#include <map>
#include <string>
#include <variant>

/// Empty on success. Otherwise it holds "NSAppleScriptErrorNumber" (the command's exit status, or the script
/// runner's own number) and "NSAppleScriptErrorMessage" (text for the user).
using ErrorDictionary = std::map<std::string, std::variant<int, std::string>>;

/// Runs one command line and waits for its end, so never on the main thread. A command with a double quote or
/// a backslash is refused and does not run.
ErrorDictionary runShellScript(
    platform::ScriptRunner& runner, const std::string& command, bool withAdministratorPrivileges);

/// The two entries; 0 and an empty text where they are missing.
int errorNumber(const ErrorDictionary& error);
std::string errorMessage(const ErrorDictionary& error);
