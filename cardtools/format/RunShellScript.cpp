#include "cardtools/format/RunShellScript.h"

#include "common/Log.h"

namespace {

constexpr const char* numberEntry = "NSAppleScriptErrorNumber";
constexpr const char* messageEntry = "NSAppleScriptErrorMessage";
// The script language's number for a syntax error.
constexpr int syntaxError = -2741;

ErrorDictionary dictionary(const platform::ScriptResult& result)
{
    if (result.number == 0)
        return {};
    return {{numberEntry, result.number}, {messageEntry, result.message}};
}

std::string described(const ErrorDictionary& error)
{
    if (error.empty())
        return "{}";
    return formatted(
        "{%s = %d; %s = %s}", numberEntry, errorNumber(error), messageEntry, errorMessage(error).c_str());
}

} // namespace

ErrorDictionary runShellScript(
    platform::ScriptRunner& runner, const std::string& command, bool withAdministratorPrivileges)
{
    const bool quotable = command.find_first_of(std::string_view("\"\\\0", 3)) == std::string::npos;
    const ErrorDictionary error = dictionary(quotable
            ? runner.doShellScript(command, withAdministratorPrivileges)
            : platform::ScriptResult{syntaxError, "a command with a quote or a backslash is refused"});
    logFormat("ERROR=%s", described(error).c_str());
    return error;
}

int errorNumber(const ErrorDictionary& error)
{
    const auto entry = error.find(numberEntry);
    const int* const number = entry == error.end() ? nullptr : std::get_if<int>(&entry->second);
    return number ? *number : 0;
}

std::string errorMessage(const ErrorDictionary& error)
{
    const auto entry = error.find(messageEntry);
    const auto* const message = entry == error.end() ? nullptr : std::get_if<std::string>(&entry->second);
    return message ? *message : std::string();
}
