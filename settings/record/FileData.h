#pragma once

#include "common/FilePlace.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

/// The camera's settings: the file `config.bin` in the card's root is exactly one of these, little-endian and
/// without gaps. Fields called "carried" are not interpreted: they are kept bit for bit.
struct _FILEDATA {
    uint16_t cfg_ver; // record version code; never changed except by the defaults
    uint16_t checksum; // set before every write
    uint32_t
        disp_segment_mode; // on-screen display layout: 0 speed+time+date, 1 speed+time, 2 speed+date, 3 time
    uint32_t sd_mem_always_ratio; // percent of the card for always (continuous) recordings
    uint32_t sd_mem_event_ratio; // percent of the card for event recordings
    uint32_t sd_mem_motion_ratio; // percent of the card for motion recordings; the three ratios add up to 100
    uint32_t sd_mem_always_reserved; // carried, on cameras with OBD the power cut-off voltage in millivolts,
                                     // 11500–12400 in steps of 100
    uint32_t sd_mem_event_reserved; // carried, on cameras with OBD the external-power flag 0/1
    uint32_t sd_mem_motion_reserved; // carried
    uint32_t aud_enable; // carried
    uint32_t aud_codec_type; // carried
    uint32_t aud_sampling_freq; // carried
    uint32_t aud_bitrate; // carried
    uint32_t aud_input_vol; // microphone level 1, 2, 3
    uint32_t aud_output_vol; // speaker level; the page writes 39, 51 or 63
    uint32_t vid_enc_res; // recording resolution code 0 or 1
    uint32_t vid_enc_bitrate; // encoder bit rate in kbit/s: 6000–11000 step 1000 when `vid_enc_res` is 0,
                              // 3000–8000 step 1000 when it is 1
    uint32_t vid_framerate; // frames per second × 256; the page writes 6144 (24 fps) or 7680 (30 fps)
    uint32_t vid_brightness; // 124 + 4 × level, level 0–4 (124, 128, 132, 136, 140)
    uint32_t vid_contrast; // carried
    uint32_t vid_saturation; // carried
    uint32_t vid_sharpness; // sharpness level 1–5
    uint32_t vid_hue; // noise-filter level 1–5
    int32_t gsen_x_threshold; // driving-mode impact threshold, X axis, in hundredths of g
    int32_t gsen_y_threshold; // same, Y axis
    int32_t gsen_z_threshold; // same, Z axis
    uint32_t always_mode_timeout; // standby time before parking mode, in seconds: 180, 300, 420, 600 or 900
    int32_t parkmode_x_threshold; // parking-mode impact threshold, X axis, hundredths of g
    int32_t parkmode_y_threshold; // same, Y axis
    int32_t parkmode_z_threshold; // same, Z axis
    uint32_t motion1080pCValue; // motion-detection sensitivity value for FHD: 65, 70, 90, 100, 130
    uint32_t motion720pCValue; // motion-detection sensitivity value for HD: 50, 60, 75, 100, 150
    uint32_t motionBlock; // carried
    int32_t high_temp_threshold; // carried
    uint32_t high_temp_duration; // carried
    int32_t safe_temp_threshold; // carried
    uint32_t safe_temp_duration; // carried
    uint32_t composite_mode; // video-out (composite) mode, segment index of the basic page
    uint32_t osd_option; // carried
    int32_t osd_speed_flag; // speed shown in the recording: 0 off, 1 on
    int32_t osd_plate_flag; // 1 when a plate number is set; set before every write
    uint32_t plate_number; // carried
    uint32_t speed_disp_unit; // speed unit: 0 km/h, 1 mph
    int32_t time_gmt; // index 0–33 into the time zone list (28 is +09:00)
    uint32_t summer_time; // daylight saving time 0/1
    uint32_t nodriving_day; // weekly alarm day: 0 none, 1 Monday … 7 Sunday
    uint32_t auto_drive_in_mode_on; // automatic switch to driving mode 0/1
    uint32_t auto_park_in_mode_on; // automatic switch to parking mode 0/1
    uint32_t motion_detect_mode_on; // motion detection 0/1
    uint32_t event_only_mode_on; // recording mode: 0 always+event, 1 event only
    uint32_t g_sensor_enable; // impact (G-sensor) detection 0/1
    uint32_t audio_mux_enable; // voice recording 0/1
    uint32_t safe_temp_mode_on; // high-temperature safety mode 0/1
    uint32_t alarm_ontime_flag; // hourly notice 0/1
    uint32_t voiceEnable; // voice guidance 0/1
    uint32_t drivingSecurity; // carried; on cameras with OBD 100 − value is the low eco-drive bound
    uint32_t parkingSecurity; // carried; on cameras with OBD 100 − value is the high eco-drive bound
    uint32_t SaveDuration; // driving-route saving interval index 0–7 (none, 1, 3, 5, 10, 15, 30, 60 s),
                           // packed differently on cameras with OBD
    uint32_t MemConfig; // carried, on cameras with OBD the eco-drive flag
    uint32_t BrightnessFixed; // place of use: non-zero vehicle, 0 indoor; the page writes 1 or 0
    uint32_t DayTime; // night exposure setting: 0 low, 1 medium (sedan), 2 high (SUV)
    uint32_t NightTime; // GPS on in parking mode: 0 off, 1 on
    uint32_t Brightness1; // voice-guidance language code 0–20
    uint32_t ledoff; // security LED: 0 on, 1 off
    uint32_t Gamma; // mains frequency: 0 60Hz(30fps), 1 50Hz(25fps)
    std::array<char, 8> szPlateNumber; // vehicle plate number, ASCII letters and digits, zero-padded, not
                                       // terminated when 8 long
    uint32_t Tinting; // window tint: 0 not used, 1 CPL, 2 light, 3 dark
    uint32_t debug_mode; // carried
};
static_assert(std::endian::native == std::endian::little);
static_assert(std::is_trivially_copyable_v<_FILEDATA>);
static_assert(sizeof(_FILEDATA) == 272);
static_assert(offsetof(_FILEDATA, cfg_ver) == 0);
static_assert(offsetof(_FILEDATA, checksum) == 2);
static_assert(offsetof(_FILEDATA, disp_segment_mode) == 4);
static_assert(offsetof(_FILEDATA, sd_mem_always_ratio) == 8);
static_assert(offsetof(_FILEDATA, sd_mem_event_ratio) == 12);
static_assert(offsetof(_FILEDATA, sd_mem_motion_ratio) == 16);
static_assert(offsetof(_FILEDATA, sd_mem_always_reserved) == 20);
static_assert(offsetof(_FILEDATA, sd_mem_event_reserved) == 24);
static_assert(offsetof(_FILEDATA, sd_mem_motion_reserved) == 28);
static_assert(offsetof(_FILEDATA, aud_enable) == 32);
static_assert(offsetof(_FILEDATA, aud_codec_type) == 36);
static_assert(offsetof(_FILEDATA, aud_sampling_freq) == 40);
static_assert(offsetof(_FILEDATA, aud_bitrate) == 44);
static_assert(offsetof(_FILEDATA, aud_input_vol) == 48);
static_assert(offsetof(_FILEDATA, aud_output_vol) == 52);
static_assert(offsetof(_FILEDATA, vid_enc_res) == 56);
static_assert(offsetof(_FILEDATA, vid_enc_bitrate) == 60);
static_assert(offsetof(_FILEDATA, vid_framerate) == 64);
static_assert(offsetof(_FILEDATA, vid_brightness) == 68);
static_assert(offsetof(_FILEDATA, vid_contrast) == 72);
static_assert(offsetof(_FILEDATA, vid_saturation) == 76);
static_assert(offsetof(_FILEDATA, vid_sharpness) == 80);
static_assert(offsetof(_FILEDATA, vid_hue) == 84);
static_assert(offsetof(_FILEDATA, gsen_x_threshold) == 88);
static_assert(offsetof(_FILEDATA, gsen_y_threshold) == 92);
static_assert(offsetof(_FILEDATA, gsen_z_threshold) == 96);
static_assert(offsetof(_FILEDATA, always_mode_timeout) == 100);
static_assert(offsetof(_FILEDATA, parkmode_x_threshold) == 104);
static_assert(offsetof(_FILEDATA, parkmode_y_threshold) == 108);
static_assert(offsetof(_FILEDATA, parkmode_z_threshold) == 112);
static_assert(offsetof(_FILEDATA, motion1080pCValue) == 116);
static_assert(offsetof(_FILEDATA, motion720pCValue) == 120);
static_assert(offsetof(_FILEDATA, motionBlock) == 124);
static_assert(offsetof(_FILEDATA, high_temp_threshold) == 128);
static_assert(offsetof(_FILEDATA, high_temp_duration) == 132);
static_assert(offsetof(_FILEDATA, safe_temp_threshold) == 136);
static_assert(offsetof(_FILEDATA, safe_temp_duration) == 140);
static_assert(offsetof(_FILEDATA, composite_mode) == 144);
static_assert(offsetof(_FILEDATA, osd_option) == 148);
static_assert(offsetof(_FILEDATA, osd_speed_flag) == 152);
static_assert(offsetof(_FILEDATA, osd_plate_flag) == 156);
static_assert(offsetof(_FILEDATA, plate_number) == 160);
static_assert(offsetof(_FILEDATA, speed_disp_unit) == 164);
static_assert(offsetof(_FILEDATA, time_gmt) == 168);
static_assert(offsetof(_FILEDATA, summer_time) == 172);
static_assert(offsetof(_FILEDATA, nodriving_day) == 176);
static_assert(offsetof(_FILEDATA, auto_drive_in_mode_on) == 180);
static_assert(offsetof(_FILEDATA, auto_park_in_mode_on) == 184);
static_assert(offsetof(_FILEDATA, motion_detect_mode_on) == 188);
static_assert(offsetof(_FILEDATA, event_only_mode_on) == 192);
static_assert(offsetof(_FILEDATA, g_sensor_enable) == 196);
static_assert(offsetof(_FILEDATA, audio_mux_enable) == 200);
static_assert(offsetof(_FILEDATA, safe_temp_mode_on) == 204);
static_assert(offsetof(_FILEDATA, alarm_ontime_flag) == 208);
static_assert(offsetof(_FILEDATA, voiceEnable) == 212);
static_assert(offsetof(_FILEDATA, drivingSecurity) == 216);
static_assert(offsetof(_FILEDATA, parkingSecurity) == 220);
static_assert(offsetof(_FILEDATA, SaveDuration) == 224);
static_assert(offsetof(_FILEDATA, MemConfig) == 228);
static_assert(offsetof(_FILEDATA, BrightnessFixed) == 232);
static_assert(offsetof(_FILEDATA, DayTime) == 236);
static_assert(offsetof(_FILEDATA, NightTime) == 240);
static_assert(offsetof(_FILEDATA, Brightness1) == 244);
static_assert(offsetof(_FILEDATA, ledoff) == 248);
static_assert(offsetof(_FILEDATA, Gamma) == 252);
static_assert(offsetof(_FILEDATA, szPlateNumber) == 256);
static_assert(offsetof(_FILEDATA, Tinting) == 264);
static_assert(offsetof(_FILEDATA, debug_mode) == 268);

/// Reads the one record that the file holds. Why it failed, or nothing; then the record is left as it was.
/// Neither the version nor the checksum is verified.
[[nodiscard]] FileError readFileData(const FilePlace& place, _FILEDATA& record);
/// The same for the file that the user named, to which links are followed. True when a whole record was read.
bool loadFileData(const std::string& path, _FILEDATA& record);

/// A record as the camera takes it: with the two fields that follow from the others, osd_plate_flag and then
/// the checksum, the low 16 bits of the XOR of the record's 32-bit words from offset 4 on.
class FinishedFileData {
public:
    explicit FinishedFileData(const _FILEDATA& unfinished);
    const _FILEDATA& record() const { return finished; }

private:
    _FILEDATA finished;
};

/// Writes the record's bytes to the file, creating or replacing it: a reader of the file finds the old record
/// or the new one, never a mixture, also when the machine stops at any moment. Why it failed, or nothing;
/// then the file is as it was. A link is not followed.
[[nodiscard]] FileError saveFileData(const FinishedFileData& record, const FilePlace& place);
/// The same for a path, of which links are followed, and for a record as it stands. Nothing on success,
/// otherwise the text key "msg.file_open_fail"; the reason is logged.
[[nodiscard]] std::optional<std::string> saveFileData(const _FILEDATA& record, const std::string& path);

/// Sets the base defaults.
void initFileData(_FILEDATA& record);

/// The base defaults, then the four fields that differ between Korea and elsewhere.
void initFileDataForRegion(_FILEDATA& record, bool isKorean);

/// Writes the base defaults to the file as they are, not finished. Why it failed, or nothing.
[[nodiscard]] FileError writeDefaultFileData(const FilePlace& place);
