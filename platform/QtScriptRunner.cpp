#include "platform/QtScriptRunner.h"

#include "common/Log.h"

#include <QFile>
#include <QProcess>

#include <optional>
#include <string_view>

namespace platform {

namespace {

// What a shell answers.
constexpr int notExecutable = 126;
constexpr int notFound = 127;

std::optional<std::string> pathToOpen(std::string_view command)
{
    constexpr std::string_view before = "open ";
    constexpr std::string_view after = " > /dev/null &";
    if (command.size() <= before.size() + after.size() || !command.starts_with(before)
        || !command.ends_with(after))
        return {};
    command.remove_prefix(before.size());
    command.remove_suffix(after.size());
    if (!command.starts_with('/') || command.find('\0') != std::string_view::npos)
        return {};
    return std::string(command);
}

} // namespace

int QtScriptRunner::system(const std::string& command)
{
    const auto path = pathToOpen(command);
    if (!path) {
        logFormat("command refused: %s", command.c_str());
        return notExecutable;
    }
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({QFile::decodeName(path->c_str())});
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    if (opener.startDetached())
        return 0;
    logFormat("cannot start xdg-open: %s", opener.errorString().toStdString().c_str());
    return notFound;
}

} // namespace platform
