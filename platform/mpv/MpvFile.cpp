#include "platform/mpv/MpvFile.h"

#include <algorithm>
#include <mpv/client.h>
#include <string_view>

namespace platform {

double plausibleSeconds(double claimed)
{
    constexpr double longestRecording = 24 * 60 * 60;
    return claimed > 0 && claimed <= longestRecording ? claimed : 0;
}

double MpvFile::seconds(const SeekTarget& place) const
{
    return place.unit == SeekTarget::Unit::fraction ? place.value * duration : place.value;
}

bool MpvFile::leadsToEnd(const SeekTarget& place) const
{
    constexpr double halfMillisecond = 0.0005;
    return duration > 0 && seconds(place) > duration - halfMillisecond;
}

double MpvFile::currentTime() const
{
    if (target)
        return duration > 0 ? std::min(seconds(*target), duration) : seconds(*target);
    return ended && !breaksOff ? std::max(duration, time) : time;
}

double MpvFile::currentFraction() const
{
    if (target && target->unit == SeekTarget::Unit::fraction)
        return target->value;
    if (ended && !breaksOff && !target)
        return 1;
    return duration > 0 ? std::clamp(currentTime() / duration, 0.0, 1.0) : 0;
}

std::string mpvFailureReason(int error)
{
    switch (error) {
    case MPV_ERROR_LOADING_FAILED:
        return "The file can't be opened or read";
    case MPV_ERROR_UNKNOWN_FORMAT:
        return "It is no AVI file, or too damaged to be opened";
    case 0:
    case MPV_ERROR_GENERIC:
    case MPV_ERROR_NOTHING_TO_PLAY:
        return "It holds no picture or sound in a form that cameras record, or its picture is too large";
    default:
        return mpv_error_string(error);
    }
}

double propertyNumber(const mpv_event_property& property)
{
    if (property.format == MPV_FORMAT_DOUBLE)
        return *static_cast<const double*>(property.data);
    if (property.format == MPV_FORMAT_INT64)
        return static_cast<double>(*static_cast<const int64_t*>(property.data));
    return 0;
}

bool propertyFlag(const mpv_event_property& property)
{
    return property.format == MPV_FORMAT_FLAG && *static_cast<const int*>(property.data) != 0;
}

std::span<const mpv_node> nodeList(const mpv_node& list)
{
    if (list.format != MPV_FORMAT_NODE_ARRAY)
        return {};
    return {list.u.list->values, static_cast<size_t>(list.u.list->num)};
}

const mpv_node* nodeField(const mpv_node& map, std::string_view name)
{
    if (map.format != MPV_FORMAT_NODE_MAP)
        return nullptr;
    for (int i = 0; i < map.u.list->num; ++i) {
        if (map.u.list->keys[i] == name)
            return &map.u.list->values[i];
    }
    return nullptr;
}

std::vector<int> audioTracksOf(const mpv_node& trackList)
{
    std::vector<int> numbers;
    for (const auto& track : nodeList(trackList)) {
        const auto* type = nodeField(track, "type");
        const auto* id = nodeField(track, "id");
        const bool isAudio =
            type && type->format == MPV_FORMAT_STRING && std::string_view(type->u.string) == "audio";
        if (isAudio && id && id->format == MPV_FORMAT_INT64 && !nodeField(track, "external-filename"))
            numbers.push_back(static_cast<int>(id->u.int64));
    }
    return numbers;
}

} // namespace platform
