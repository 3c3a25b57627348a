#include "tools/formathelper/FormatCard.h"

#include "common/CardFiles.h"
#include "platform/disks/DiskCommand.h"
#include "tools/formathelper/BootSector.h"
#include "tools/formathelper/CardDevice.h"
#include "tools/formathelper/DiskParts.h"
#include "tools/formathelper/FormatTool.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

using platform::KernelDevice;
using platform::ToolResult;

template <typename Number> bool readNumber(std::string_view text, Number& value)
{
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() && text.front() != '-';
}

/// What the user needs to know beyond the reason itself.
std::string detailOf(FormatStatus status, const FormatFacts& facts, const KernelDevice& device)
{
    for (const KernelDevice::Use& mount : device.mounts) {
        const bool isReason = status == FormatStatus::stillMounted ? mount.own : isSystemPlace(mount.place);
        if ((status == FormatStatus::stillMounted || status == FormatStatus::systemDisk) && isReason)
            return mount.place;
    }
    if (status == FormatStatus::stillMounted && !device.users.empty())
        return device.users.front().name + " (" + std::to_string(device.users.front().process) + ")";
    if (status == FormatStatus::otherSize)
        return std::to_string(facts.size) + " / " + std::to_string(facts.sizeSeen) + " bytes";
    return {};
}

/// Programs that only inspect a new device, as the system does after each change, close it a moment later.
KernelDevice settledDevice(const std::string& name, const FormatPolicy& policy)
{
    constexpr std::chrono::milliseconds pause(100);
    auto patience = policy.patience;
    KernelDevice device = platform::kernelDevice(name, policy.roots);
    for (; !device.users.empty() && device.mounts.empty() && patience >= pause; patience -= pause) {
        std::this_thread::sleep_for(pause);
        device = platform::kernelDevice(name, policy.roots);
    }
    return device;
}

/// The status for a tool's failure; a fault of the card itself comes first.
FormatResult toolFailure(const std::string& tool, const ToolResult& run, FormatStatus otherwise,
    CardDevice& card, const FormatPolicy& policy)
{
    if (run.end == ToolResult::End::missing)
        return {FormatStatus::toolMissing, tool + " (dosfstools)"};
    if (run.end == ToolResult::End::tookTooLong)
        return {FormatStatus::tookTooLong, tool};
    if (run.end == ToolResult::End::stillRuns)
        return {FormatStatus::stillWorking, tool};
    const FormatStatus trouble = card.trouble(policy.patience);
    return {trouble == FormatStatus::ok ? otherwise : trouble, errorLine(tool, run.text)};
}

FormatResult makeFileSystem(
    const FormatRequest& request, const FormatPolicy& policy, CardDevice& card, const KernelDevice& device)
{
    std::vector<std::string> command{policy.mkfs, "-F", "32", "-n", cardFiles::label, "-f", "2", "-R", "32",
        "-a", "-b", "6", "-s", std::to_string(request.cluster), "--mbr=n"};
    if (device.whole)
        command.emplace_back("-I");
    command.push_back(card.path());
    // Its banner is all that it writes to standard output.
    const ToolResult made = runFormatTool(command, policy.mkfsLimit, ToolOutput::errors);
    if (!made.succeeded())
        return toolFailure("mkfs.fat", made, FormatStatus::toolFailed, card, policy);

    std::vector<std::byte> start(checkedBytes);
    if (const FormatStatus read = card.readFromMedium(start); read != FormatStatus::ok) {
        std::string reason = card.reason();
        const FormatStatus trouble = card.trouble(policy.patience);
        return {trouble == FormatStatus::ok ? read : trouble, std::move(reason)};
    }
    if (std::string fault = fileSystemFault(start, {device.size, request.cluster}); !fault.empty())
        return {FormatStatus::notAsAsked, fault};

    const ToolResult checked =
        runFormatTool({policy.fsck, "-n", card.path()}, policy.fsckLimit, ToolOutput::all);
    if (!checked.succeeded())
        return toolFailure("fsck.fat", checked, FormatStatus::notClean, card, policy);
    return {};
}

} // namespace

// Read here, not by the command line library of the other programs: four words at fixed places need none of
// its forms (--name=value, help, option files), and what runs with administrator rights stays small. The
// manual's page comes from the table of commands all the same.
bool readRequest(std::span<const std::string_view> arguments, FormatRequest& request)
{
    if (arguments.size() != 4 || std::ranges::any_of(arguments, &std::string_view::empty))
        return false;
    request.device = arguments[0];
    request.sequenceSeen = arguments[3];
    return readNumber(arguments[1], request.cluster) && readNumber(arguments[2], request.sizeSeen);
}

FormatFacts gatheredFacts(
    const FormatRequest& request, const FormatPolicy& policy, const KernelDevice& device)
{
    FormatFacts facts;
    facts.device = platform::isPlainDeviceName(request.device) && device.known;
    for (const KernelDevice::Use& mount : device.mounts) {
        facts.systemDisk = facts.systemDisk || isSystemPlace(mount.place);
        facts.mounted = facts.mounted || mount.own;
    }
    facts.mounted = facts.mounted || !device.users.empty();
    facts.swapSpace = device.swap;
    facts.held = device.held;
    facts.card =
        (device.usb && device.removable) || device.sdCard || (policy.acceptsLoopDevices && device.loop);
    facts.writable = !device.readOnly;
    facts.size = device.size;
    facts.sizeSeen = request.sizeSeen;
    facts.medium = device.sequence;
    facts.mediumSeen = request.sequenceSeen;
    facts.cluster = request.cluster;
    return facts;
}

FormatResult formatCard(const FormatRequest& request, const FormatPolicy& policy)
{
    const KernelDevice device = settledDevice(request.device, policy);
    const FormatFacts facts = gatheredFacts(request, policy, device);
    if (const FormatStatus status = mayFormat(facts); status != FormatStatus::ok)
        return {status, detailOf(status, facts, device)};

    CardDevice card(policy.roots.dev + "/" + request.device, device);
    if (const FormatStatus status = card.open(); status != FormatStatus::ok)
        return {status, card.reason()};
    if (policy.opened)
        policy.opened();
    // From here on the device keeps its number; checks it and its medium again.
    KernelDevice again = platform::kernelDevice(request.device, policy.roots);
    std::erase_if(again.users, [](const KernelDevice::User& user) { return user.process == getpid(); });
    const FormatFacts factsNow = gatheredFacts(request, policy, again);
    if (const FormatStatus status = mayFormat(factsNow); status != FormatStatus::ok)
        return {status, detailOf(status, factsNow, again)};
    if (std::string part = foreignPart(request.device, again, policy.roots.dev); !part.empty())
        return {FormatStatus::heldByOthers, part};
    card.letOthersOpen();
    return makeFileSystem(request, policy, card, again);
}

int formatHelperMain(int argc, char** argv, const FormatPolicy& policy)
{
    const std::vector<std::string_view> arguments(argv + std::min(argc, 1), argv + argc);
    FormatRequest request;
    if (!readRequest(arguments, request)) {
        std::fputs("usage: zavik-format-card DEVICE SECTORS-PER-CLUSTER SIZE MEDIUM\n", stderr);
        return static_cast<int>(FormatStatus::wrongUse);
    }
    const FormatResult result = formatCard(request, policy);
    if (!result.detail.empty())
        std::fprintf(stderr, "%s\n", result.detail.c_str());
    return static_cast<int>(result.status);
}
