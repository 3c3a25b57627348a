#include "settings/record/FileDataFields.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

using Type = FileDataField::Type;

constexpr FileDataField fields[] = {
    {"cfg_ver", offsetof(_FILEDATA, cfg_ver), Type::unsigned16},
    {"checksum", offsetof(_FILEDATA, checksum), Type::unsigned16},
    {"disp_segment_mode", offsetof(_FILEDATA, disp_segment_mode), Type::unsigned32},
    {"sd_mem_always_ratio", offsetof(_FILEDATA, sd_mem_always_ratio), Type::unsigned32},
    {"sd_mem_event_ratio", offsetof(_FILEDATA, sd_mem_event_ratio), Type::unsigned32},
    {"sd_mem_motion_ratio", offsetof(_FILEDATA, sd_mem_motion_ratio), Type::unsigned32},
    {"sd_mem_always_reserved", offsetof(_FILEDATA, sd_mem_always_reserved), Type::unsigned32},
    {"sd_mem_event_reserved", offsetof(_FILEDATA, sd_mem_event_reserved), Type::unsigned32},
    {"sd_mem_motion_reserved", offsetof(_FILEDATA, sd_mem_motion_reserved), Type::unsigned32},
    {"aud_enable", offsetof(_FILEDATA, aud_enable), Type::unsigned32},
    {"aud_codec_type", offsetof(_FILEDATA, aud_codec_type), Type::unsigned32},
    {"aud_sampling_freq", offsetof(_FILEDATA, aud_sampling_freq), Type::unsigned32},
    {"aud_bitrate", offsetof(_FILEDATA, aud_bitrate), Type::unsigned32},
    {"aud_input_vol", offsetof(_FILEDATA, aud_input_vol), Type::unsigned32},
    {"aud_output_vol", offsetof(_FILEDATA, aud_output_vol), Type::unsigned32},
    {"vid_enc_res", offsetof(_FILEDATA, vid_enc_res), Type::unsigned32},
    {"vid_enc_bitrate", offsetof(_FILEDATA, vid_enc_bitrate), Type::unsigned32},
    {"vid_framerate", offsetof(_FILEDATA, vid_framerate), Type::unsigned32},
    {"vid_brightness", offsetof(_FILEDATA, vid_brightness), Type::unsigned32},
    {"vid_contrast", offsetof(_FILEDATA, vid_contrast), Type::unsigned32},
    {"vid_saturation", offsetof(_FILEDATA, vid_saturation), Type::unsigned32},
    {"vid_sharpness", offsetof(_FILEDATA, vid_sharpness), Type::unsigned32},
    {"vid_hue", offsetof(_FILEDATA, vid_hue), Type::unsigned32},
    {"gsen_x_threshold", offsetof(_FILEDATA, gsen_x_threshold), Type::signed32},
    {"gsen_y_threshold", offsetof(_FILEDATA, gsen_y_threshold), Type::signed32},
    {"gsen_z_threshold", offsetof(_FILEDATA, gsen_z_threshold), Type::signed32},
    {"always_mode_timeout", offsetof(_FILEDATA, always_mode_timeout), Type::unsigned32},
    {"parkmode_x_threshold", offsetof(_FILEDATA, parkmode_x_threshold), Type::signed32},
    {"parkmode_y_threshold", offsetof(_FILEDATA, parkmode_y_threshold), Type::signed32},
    {"parkmode_z_threshold", offsetof(_FILEDATA, parkmode_z_threshold), Type::signed32},
    {"motion1080pCValue", offsetof(_FILEDATA, motion1080pCValue), Type::unsigned32},
    {"motion720pCValue", offsetof(_FILEDATA, motion720pCValue), Type::unsigned32},
    {"motionBlock", offsetof(_FILEDATA, motionBlock), Type::unsigned32},
    {"high_temp_threshold", offsetof(_FILEDATA, high_temp_threshold), Type::signed32},
    {"high_temp_duration", offsetof(_FILEDATA, high_temp_duration), Type::unsigned32},
    {"safe_temp_threshold", offsetof(_FILEDATA, safe_temp_threshold), Type::signed32},
    {"safe_temp_duration", offsetof(_FILEDATA, safe_temp_duration), Type::unsigned32},
    {"composite_mode", offsetof(_FILEDATA, composite_mode), Type::unsigned32},
    {"osd_option", offsetof(_FILEDATA, osd_option), Type::unsigned32},
    {"osd_speed_flag", offsetof(_FILEDATA, osd_speed_flag), Type::signed32},
    {"osd_plate_flag", offsetof(_FILEDATA, osd_plate_flag), Type::signed32},
    {"plate_number", offsetof(_FILEDATA, plate_number), Type::unsigned32},
    {"speed_disp_unit", offsetof(_FILEDATA, speed_disp_unit), Type::unsigned32},
    {"time_gmt", offsetof(_FILEDATA, time_gmt), Type::signed32},
    {"summer_time", offsetof(_FILEDATA, summer_time), Type::unsigned32},
    {"nodriving_day", offsetof(_FILEDATA, nodriving_day), Type::unsigned32},
    {"auto_drive_in_mode_on", offsetof(_FILEDATA, auto_drive_in_mode_on), Type::unsigned32},
    {"auto_park_in_mode_on", offsetof(_FILEDATA, auto_park_in_mode_on), Type::unsigned32},
    {"motion_detect_mode_on", offsetof(_FILEDATA, motion_detect_mode_on), Type::unsigned32},
    {"event_only_mode_on", offsetof(_FILEDATA, event_only_mode_on), Type::unsigned32},
    {"g_sensor_enable", offsetof(_FILEDATA, g_sensor_enable), Type::unsigned32},
    {"audio_mux_enable", offsetof(_FILEDATA, audio_mux_enable), Type::unsigned32},
    {"safe_temp_mode_on", offsetof(_FILEDATA, safe_temp_mode_on), Type::unsigned32},
    {"alarm_ontime_flag", offsetof(_FILEDATA, alarm_ontime_flag), Type::unsigned32},
    {"voiceEnable", offsetof(_FILEDATA, voiceEnable), Type::unsigned32},
    {"drivingSecurity", offsetof(_FILEDATA, drivingSecurity), Type::unsigned32},
    {"parkingSecurity", offsetof(_FILEDATA, parkingSecurity), Type::unsigned32},
    {"SaveDuration", offsetof(_FILEDATA, SaveDuration), Type::unsigned32},
    {"MemConfig", offsetof(_FILEDATA, MemConfig), Type::unsigned32},
    {"BrightnessFixed", offsetof(_FILEDATA, BrightnessFixed), Type::unsigned32},
    {"DayTime", offsetof(_FILEDATA, DayTime), Type::unsigned32},
    {"NightTime", offsetof(_FILEDATA, NightTime), Type::unsigned32},
    {"Brightness1", offsetof(_FILEDATA, Brightness1), Type::unsigned32},
    {"ledoff", offsetof(_FILEDATA, ledoff), Type::unsigned32},
    {"Gamma", offsetof(_FILEDATA, Gamma), Type::unsigned32},
    {"szPlateNumber", offsetof(_FILEDATA, szPlateNumber), Type::text8},
    {"Tinting", offsetof(_FILEDATA, Tinting), Type::unsigned32},
    {"debug_mode", offsetof(_FILEDATA, debug_mode), Type::unsigned32},
};

std::byte* bytesOf(_FILEDATA& record, const FileDataField& field)
{
    return reinterpret_cast<std::byte*>(&record) + field.offset;
}

template <typename Number> Number loaded(const _FILEDATA& record, const FileDataField& field)
{
    Number number;
    std::memcpy(&number, reinterpret_cast<const std::byte*>(&record) + field.offset, sizeof number);
    return number;
}

template <typename Number> bool store(_FILEDATA& record, const FileDataField& field, std::string_view value)
{
    Number number = 0;
    const char* end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, number);
    if (error != std::errc() || stop != end)
        return false;
    std::memcpy(bytesOf(record, field), &number, sizeof number);
    return true;
}

bool isPlateCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

std::span<const FileDataField> fileDataFields()
{
    return fields;
}

std::string fieldText(const _FILEDATA& record, const FileDataField& field)
{
    switch (field.type) {
    case Type::unsigned16:
        return std::to_string(loaded<uint16_t>(record, field));
    case Type::unsigned32:
        return std::to_string(loaded<uint32_t>(record, field));
    case Type::signed32:
        return std::to_string(loaded<int32_t>(record, field));
    case Type::text8:
        break;
    }
    const auto text = loaded<std::array<char, 8>>(record, field);
    return {text.begin(), std::find(text.begin(), text.end(), '\0')};
}

bool setField(_FILEDATA& record, const FileDataField& field, std::string_view value)
{
    switch (field.type) {
    case Type::unsigned16:
        return store<uint16_t>(record, field, value);
    case Type::unsigned32:
        return store<uint32_t>(record, field, value);
    case Type::signed32:
        return store<int32_t>(record, field, value);
    case Type::text8:
        break;
    }
    std::array<char, 8> text{};
    if (value.size() > text.size() || !std::ranges::all_of(value, isPlateCharacter))
        return false;
    std::ranges::copy(value, text.begin());
    std::memcpy(bytesOf(record, field), text.data(), text.size());
    return true;
}
