#include "fuzz/Require.h"
#include "platform/disks/DiskCommand.h"
#include "tools/formathelper/BootSector.h"
#include "tools/formathelper/FormatCard.h"
#include "tools/formathelper/FormatTool.h"

using namespace platform;

namespace {

/// Whatever is asked for, nothing that the facts forbid is allowed.
void askFor(std::string_view text)
{
    std::vector<std::string_view> arguments;
    while (!text.empty())
        arguments.push_back(nextPart(text, '\n'));
    FormatRequest request;
    if (!readRequest(arguments, request))
        return;
    KernelDevice device;
    device.known = device.usb = device.removable = true;
    device.size = request.sizeSeen;
    device.sequence = request.sequenceSeen;
    const FormatFacts facts = gatheredFacts(request, {}, device);
    if (mayFormat(facts) == FormatStatus::ok)
        require(isPlainDeviceName(request.device) && (request.cluster == 32 || request.cluster == 128));
    device.mounts = {{.place = "/home", .own = false}};
    require(mayFormat(gatheredFacts(request, {}, device)) != FormatStatus::ok);
}

} // namespace

void fuzz(std::string_view text)
{
    askFor(text);
    if (const auto command = parsedDiskCommand(text)) {
        require(isPlainDeviceName(command->device) && command->device.find('/') == std::string::npos);
        require(command->cluster == 0 || command->kind == DiskCommand::Kind::format);
    }
    // Of a tool's words one line is told, and it is one of them.
    const std::string line = errorLine("mkfs.fat", std::string(text));
    require(line.find('\n') == line.npos && text.find(line) != text.npos);
    // A file system whose boot sector differs from its copy is never taken for whole.
    const auto bytes = std::as_bytes(std::span(text));
    const uint64_t volume = uint64_t{text.size()} << 20;
    if (text.size() >= checkedBytes && fileSystemFault(bytes, {.size = volume, .cluster = 32}).empty())
        require(text.substr(0, 512) == text.substr(6 * 512, 512));
}
