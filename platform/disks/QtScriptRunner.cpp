#include "platform/disks/QtScriptRunner.h"

#include "common/Log.h"
#include "platform/Texts.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <optional>
#include <string_view>
#include <utility>

namespace platform {

namespace {

// The exit statuses of a shell.
constexpr int notExecutable = 126;
constexpr int notFound = 127;
// The runner's own number.
constexpr int refused = -1;

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

bool startDetached(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (process.startDetached())
        return true;
    logFormat(
        "cannot start %s: %s", program.toStdString().c_str(), process.errorString().toStdString().c_str());
    return false;
}

} // namespace

QtScriptRunner::QtScriptRunner(
    std::string formatHelper, DiskToolLimits limits, std::chrono::milliseconds shell)
    : diskTools(std::move(formatHelper), limits),
      shellLimit(shell)
{
}

int QtScriptRunner::system(const std::string& command)
{
    const auto path = pathToOpen(command);
    if (!path) {
        logFormat("command refused: %s", command.c_str());
        return notExecutable;
    }
    return startDetached(QStringLiteral("xdg-open"), {QFile::decodeName(path->c_str())}) ? 0 : notFound;
}

bool QtScriptRunner::launchApplication(const std::string& name)
{
    if (name != "Disk Utility")
        return false;
    for (const char* program : {"gnome-disks", "partitionmanager", "blivet-gui", "gparted"}) {
        const QString path = QStandardPaths::findExecutable(QLatin1String(program));
        if (!path.isEmpty() && startDetached(path, {}))
            return true;
    }
    return false;
}

ScriptResult QtScriptRunner::doShellScript(const std::string& command, bool withAdministratorPrivileges)
{
    if (const auto disk = parsedDiskCommand(command))
        return diskTools.run(*disk);
    // Disk commands are never given to a shell, least of all with administrator rights.
    if (command.starts_with("diskutil ") || command.find("newfs_msdos") != std::string::npos)
        return {refused, localized("script.not_chosen").toStdString() + "\n" + command};
    ToolRequest request{{"/bin/sh", "-c", command}, shellLimit};
    if (!withAdministratorPrivileges)
        return scriptResult("/bin/sh", runTool(request));
    request.command.insert(request.command.begin(), "pkexec");
    return privilegedResult("/bin/sh", runTool(request));
}

void QtScriptRunner::chooseMedium(const ChosenMedium& medium)
{
    diskTools.chooseMedium(medium);
}

} // namespace platform
