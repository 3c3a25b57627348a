#include "platform/disks/DiskCommand.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace platform {

namespace {

struct Form {
    std::string_view start;
    DiskCommand::Kind kind;
};

constexpr std::array forms = {
    Form{"diskutil umountDisk ", DiskCommand::Kind::unmountDisk},
    Form{"diskutil umount ", DiskCommand::Kind::unmount},
    Form{"diskutil mount ", DiskCommand::Kind::mount},
    Form{"sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c ", DiskCommand::Kind::format},
};

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

} // namespace

bool isPlainDeviceName(std::string_view name)
{
    return !name.empty() && name.size() < 64 && name.front() != '-'
        && std::ranges::all_of(name, isNameCharacter);
}

std::optional<DiskCommand> parsedDiskCommand(std::string_view command)
{
    const auto* const form =
        std::ranges::find_if(forms, [&](const Form& one) { return command.starts_with(one.start); });
    if (form == forms.end())
        return {};
    std::string_view rest = command.substr(form->start.size());
    DiskCommand read{form->kind, 0, {}};
    if (read.kind == DiskCommand::Kind::format) {
        const char* const end = rest.data() + rest.size();
        const auto number = std::from_chars(rest.data(), end, read.cluster);
        if (number.ec != std::errc() || number.ptr == end || *number.ptr != ' ')
            return {};
        rest.remove_prefix(static_cast<size_t>(number.ptr - rest.data()) + 1);
    }
    if (!isPlainDeviceName(rest))
        return {};
    read.device = rest;
    return read;
}

} // namespace platform
