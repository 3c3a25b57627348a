#include "platform/disks/DiskTools.h"

#include "platform/Texts.h"
#include "platform/disks/KernelDevice.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdlib>
#include <filesystem>
#include <thread>
#include <utility>
#include <vector>

namespace platform {

namespace {

namespace fs = std::filesystem;

// The runner's own numbers.
constexpr int cannotRun = -1;
constexpr int tookTooLong = -1712;
constexpr int stillRuns = -1713;
constexpr int cancelled = -128;
constexpr int notAllowed = -60005;

constexpr const char* helperName = "zavik-format-card";
constexpr int mountTries = 10;

ScriptResult failure(int number, std::string_view key, const std::string& detail = {})
{
    std::string text = localized(key).toStdString();
    if (!detail.empty())
        text += "\n" + detail;
    return {number, std::move(text)};
}

std::string installedHelper()
{
    const fs::path program = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
    for (const fs::path& folder : {program / "../libexec/zavik", program}) {
        std::error_code error;
        const fs::path found = fs::canonical(folder / helperName, error);
        if (!error)
            return found;
    }
    return {};
}

ToolResult disksCommand(const char* verb, const std::string& device, std::chrono::milliseconds limit)
{
    return runTool({{"udisksctl", verb, "-b", "/dev/" + device, "--no-user-interaction"}, limit});
}

bool says(const ToolResult& run, std::string_view words)
{
    return run.end == ToolResult::End::exited && run.text.find(words) != std::string::npos;
}

std::vector<std::string> partitions(const std::string& disk)
{
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/sys/class/block/" + disk, error)) {
        if (fs::exists(entry.path() / "partition", error))
            names.push_back(entry.path().filename());
    }
    return names;
}

} // namespace

ScriptResult scriptResult(const std::string& tool, const ToolResult& run)
{
    using End = ToolResult::End;
    if (run.succeeded())
        return {};
    if (run.end == End::missing)
        return failure(cannotRun, "script.tool_missing", tool);
    if (run.end == End::tookTooLong)
        return failure(tookTooLong, "script.took_too_long", tool);
    if (run.end == End::stillRuns)
        return failure(stillRuns, "script.still_running", tool);
    if (run.end == End::failed)
        return failure(cannotRun, "script.stopped", run.text.empty() ? tool : run.text);
    return {run.status, run.text.empty() ? tool + ": " + std::to_string(run.status) : run.text};
}

ScriptResult privilegedResult(const std::string& tool, const ToolResult& run)
{
    if (run.end == ToolResult::End::missing)
        return failure(cannotRun, "script.tool_missing", "pkexec");
    if (run.end == ToolResult::End::exited && run.status == 126)
        return failure(cancelled, "script.cancelled");
    if (says(run, "authentication agent") && run.status == 127)
        return failure(notAllowed, "script.nobody_asks");
    if (run.end == ToolResult::End::exited && run.status == 127)
        return failure(notAllowed, "script.not_allowed", run.text);
    return scriptResult(tool, run);
}

DiskTools::DiskTools(std::string formatHelper, DiskToolLimits times)
    : helper(std::move(formatHelper)),
      limits(times)
{
}

ScriptResult DiskTools::run(const DiskCommand& command)
{
    // A sandbox has neither the tools nor the helper, and nothing in it gets administrator rights.
    if (std::getenv("FLATPAK_ID"))
        return failure(cannotRun, "script.needs_package");
    switch (command.kind) {
    case DiskCommand::Kind::unmountDisk:
    case DiskCommand::Kind::unmount:
        return unmount(command);
    case DiskCommand::Kind::mount:
        return mount(command.device);
    case DiskCommand::Kind::format:
        break;
    }
    return format(command);
}

void DiskTools::chooseMedium(const ChosenMedium& medium)
{
    std::string sequence = kernelDevice(medium.deviceName).sequence;
    const std::lock_guard lock(mutex);
    chosen = Chosen{medium, std::move(sequence)};
}

ScriptResult DiskTools::unmount(const DiskCommand& command) const
{
    std::vector<std::string> devices{command.device};
    if (command.kind == DiskCommand::Kind::unmountDisk) {
        for (const std::string& partition : partitions(command.device))
            devices.push_back(partition);
    }
    for (const std::string& device : devices) {
        const ToolResult run = disksCommand("unmount", device, limits.tool);
        const bool wasNot = says(run, "NotMounted") || says(run, "is not mounted")
            || says(run, "is not a mountable filesystem");
        if (!run.succeeded() && !wasNot)
            return scriptResult("udisksctl (udisks2)", run);
    }
    return {};
}

ScriptResult DiskTools::mount(const std::string& device) const
{
    ToolResult run;
    for (int tries = 0; tries < mountTries; ++tries) {
        run = disksCommand("mount", device, limits.tool);
        if (run.succeeded() || says(run, "AlreadyMounted") || says(run, "already mounted"))
            return {};
        if (!says(run, "is not a mountable filesystem") && !says(run, "Error looking up object"))
            break;
        std::this_thread::sleep_for(limits.betweenMounts);
    }
    return scriptResult("udisksctl (udisks2)", run);
}

ScriptResult DiskTools::format(const DiskCommand& command)
{
    std::optional<Chosen> target;
    {
        const std::lock_guard lock(mutex);
        target = std::exchange(chosen, std::nullopt);
    }
    if (!target || target->medium.deviceName != command.device)
        return failure(cannotRun, "script.not_chosen", command.device);
    const std::string program = helper.empty() ? installedHelper() : helper;
    std::error_code error;
    if (program.empty() || !fs::exists(program, error))
        return failure(cannotRun, "script.tool_missing", helperName);
    return privilegedResult(helperName,
        runTool({{"pkexec", program, command.device, std::to_string(command.cluster),
                     std::to_string(target->medium.size), target->sequence.empty() ? "-" : target->sequence},
            limits.format}));
}

} // namespace platform
