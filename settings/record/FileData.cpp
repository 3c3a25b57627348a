#include "settings/record/FileData.h"

#include "common/Log.h"
#include "common/ReplaceFile.h"

#include <cstring>

namespace {

FileError written(const _FILEDATA& record, const FilePlace& place)
{
    return replaceFile(place, {reinterpret_cast<const char*>(&record), sizeof record});
}

} // namespace

FileError readFileData(const FilePlace& place, _FILEDATA& record)
{
    FileError why;
    const auto bytes = place.beginning(sizeof record, why);
    if (bytes && bytes->size() < sizeof record)
        why.code = FileError::tooShort;
    if (!why)
        std::memcpy(&record, bytes->data(), sizeof record);
    return why;
}

bool loadFileData(const std::string& path, _FILEDATA& record)
{
    return !readFileData(FilePlace::chosen(path), record);
}

FinishedFileData::FinishedFileData(const _FILEDATA& unfinished)
    : finished(unfinished)
{
    finished.osd_plate_flag = finished.szPlateNumber[0] != 0 ? 1 : 0;
    const auto words = std::bit_cast<std::array<uint32_t, sizeof finished / sizeof(uint32_t)>>(finished);
    finished.checksum = 0;
    for (size_t i = 1; i < words.size(); ++i)
        finished.checksum = static_cast<uint16_t>(finished.checksum ^ words[i]);
}

FileError saveFileData(const FinishedFileData& record, const FilePlace& place)
{
    return written(record.record(), place);
}

std::optional<std::string> saveFileData(const _FILEDATA& record, const std::string& path)
{
    const FileError failure = written(record, FilePlace::chosen(path));
    if (!failure)
        return std::nullopt;
    logFormat("cannot save %s: %s", path.c_str(), failure.text().c_str());
    return "msg.file_open_fail";
}

void initFileData(_FILEDATA& record)
{
    record = {};
    record.cfg_ver = 22310;
    record.disp_segment_mode = 1;
    record.sd_mem_always_ratio = 70;
    record.sd_mem_event_ratio = 20;
    record.sd_mem_motion_ratio = 10;
    record.sd_mem_always_reserved = 12100;
    record.aud_enable = 3;
    record.aud_sampling_freq = 1;
    record.aud_bitrate = 1;
    record.aud_input_vol = 3;
    record.aud_output_vol = 48;
    record.vid_enc_bitrate = 8000;
    record.vid_framerate = 7680;
    record.vid_brightness = 128;
    record.vid_contrast = 128;
    record.vid_saturation = 128;
    record.vid_sharpness = 3;
    record.vid_hue = 2;
    record.gsen_x_threshold = 55;
    record.gsen_y_threshold = 70;
    record.gsen_z_threshold = 50;
    record.always_mode_timeout = 300;
    record.parkmode_x_threshold = 15;
    record.parkmode_y_threshold = 15;
    record.parkmode_z_threshold = 15;
    record.motion1080pCValue = 100;
    record.motion720pCValue = 100;
    record.motionBlock = 4095;
    record.high_temp_threshold = 97;
    record.high_temp_duration = 3600;
    record.safe_temp_threshold = 92;
    record.safe_temp_duration = 60;
    record.osd_speed_flag = 1;
    record.time_gmt = 28;
    record.auto_drive_in_mode_on = 1;
    record.auto_park_in_mode_on = 1;
    record.motion_detect_mode_on = 1;
    record.g_sensor_enable = 1;
    record.audio_mux_enable = 1;
    record.safe_temp_mode_on = 1;
    record.alarm_ontime_flag = 1;
    record.voiceEnable = 1;
    record.drivingSecurity = 1;
    record.parkingSecurity = 1;
    record.SaveDuration = 3;
    record.MemConfig = 11;
    record.BrightnessFixed = 3000;
    record.DayTime = 1;
    record.debug_mode = 1;
}

void initFileDataForRegion(_FILEDATA& record, bool isKorean)
{
    initFileData(record);
    record.vid_enc_bitrate = isKorean ? 8000 : 9000;
    record.motion1080pCValue = isKorean ? 100 : 90;
    record.motion720pCValue = isKorean ? 100 : 75;
    record.Brightness1 = isKorean ? 0 : 1;
}

FileError writeDefaultFileData(const FilePlace& place)
{
    _FILEDATA record;
    initFileData(record);
    return written(record, place);
}
