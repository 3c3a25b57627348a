#include "tools/formathelper/FormatCard.h"

#include "platform/DiskCommand.h"
#include "platform/ToolRun.h"
#include "tools/formathelper/BootSector.h"
#include "tools/formathelper/CardDevice.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <vector>

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
    if (status == FormatStatus::otherSize)
        return std::to_string(facts.size) + " / " + std::to_string(facts.sizeSeen) + " bytes";
    return {};
}

ToolResult runPlain(std::vector<std::string> command, std::chrono::milliseconds limit)
{
    return platform::runTool(
        {std::move(command), limit, true, {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"}});
}

std::string lastLine(const std::string& text)
{
    const size_t end = text.find_last_of('\n');
    return end == std::string::npos ? text : text.substr(end + 1);
}

/// What a tool's failure is: a pulled card is told as that, not as the tool's last words.
FormatResult toolFailure(
    const std::string& tool, const ToolResult& run, FormatStatus otherwise, const CardDevice& card)
{
    if (run.end == ToolResult::End::missing)
        return {FormatStatus::toolMissing, tool + " (dosfstools)"};
    if (run.end == ToolResult::End::tookTooLong)
        return {FormatStatus::tookTooLong, tool};
    if (!card.isThere())
        return {FormatStatus::cardGone, lastLine(run.text)};
    if (card.isReadOnly())
        return {FormatStatus::writeProtected, lastLine(run.text)};
    return {otherwise, lastLine(run.text)};
}

FormatResult makeFileSystem(const FormatRequest& request, const FormatPolicy& policy, const CardDevice& card,
    const KernelDevice& device)
{
    std::vector<std::string> command{policy.mkfs, "-F", "32", "-n", "ZAVIK", "-f", "2", "-R", "32", "-a",
        "-b", "6", "-s", std::to_string(request.cluster), "--mbr=n"};
    if (device.whole)
        command.emplace_back("-I");
    command.push_back(card.path());
    const ToolResult made = runPlain(command, policy.mkfsLimit);
    if (!made.succeeded())
        return toolFailure("mkfs.fat", made, FormatStatus::toolFailed, card);

    std::vector<std::byte> start(checkedBytes);
    if (!card.readFromMedium(start))
        return {FormatStatus::cardGone, {}};
    if (std::string fault = fileSystemFault(start, {device.size, request.cluster}); !fault.empty())
        return {FormatStatus::notAsAsked, fault};

    const ToolResult checked = runPlain({policy.fsck, "-n", card.path()}, policy.fsckLimit);
    if (!checked.succeeded())
        return toolFailure("fsck.fat", checked, FormatStatus::notClean, card);
    return {};
}

} // namespace

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
    const KernelDevice device = platform::kernelDevice(request.device, policy.roots);
    const FormatFacts facts = gatheredFacts(request, policy, device);
    if (const FormatStatus status = mayFormat(facts); status != FormatStatus::ok)
        return {status, detailOf(status, facts, device)};

    CardDevice card(policy.roots.dev + "/" + request.device, device);
    if (const FormatStatus status = card.open(); status != FormatStatus::ok)
        return {status, card.reason()};
    // The device cannot get another name any more; the medium in it is looked at once again.
    const KernelDevice again = platform::kernelDevice(request.device, policy.roots);
    if (const FormatStatus status = mayFormat(gatheredFacts(request, policy, again));
        status != FormatStatus::ok)
        return {status, {}};
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
