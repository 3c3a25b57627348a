#include "media/RecordingName.h"

#include "common/Text.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array recordingNameTemplates = {
    RecordingNameTemplate{"alwa_yyyymmdd_hhmiss", "alwa_", 0},
    RecordingNameTemplate{"motion_yyyymmdd_hhmiss", "motion_", 1},
    RecordingNameTemplate{"event_yyyymmdd_hhmiss", "event_", 2},
};

bool isAscii(char16_t unit)
{
    return unit < 0x80;
}

} // namespace

bool hasRecordingNameLength(std::string_view units)
{
    return std::ranges::any_of(
        recordingNameTemplates, [&](const auto& known) { return known.text.size() == units.size(); });
}

const RecordingNameTemplate* recordingNameTemplate(std::string_view units)
{
    const auto found = std::ranges::find_if(
        recordingNameTemplates, [&](const auto& known) { return units.starts_with(known.prefix); });
    return found == recordingNameTemplates.end() ? nullptr : &*found;
}

RecordingNameUnits::RecordingNameUnits(std::string_view name)
    : units(name)
{
    if (std::ranges::all_of(name, [](char byte) { return isAscii(static_cast<uint8_t>(byte)); }))
        return;
    for (const char16_t unit : utf16Units(name))
        converted += isAscii(unit) ? static_cast<char>(unit) : '?';
    units = converted;
}
