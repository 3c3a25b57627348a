#include "common/Text.h"
#include "platform/ButtonMatrix.h"
#include "platform/Texts.h"
#include "settings/ThresholdField.h"
#include "settings/ZVKCarNumberTextField.h"
#include "settings/ZVKSettingForAudioViewController.h"
#include "settings/ZVKSettingForAuxViewController.h"
#include "settings/ZVKSettingForBasicViewController.h"
#include "settings/ZVKSettingForGpsViewController.h"
#include "settings/ZVKSettingForObdViewController.h"
#include "settings/ZVKSettingForVideoViewController.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/ShownPage.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLayout>
#include <QRadioButton>

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

using platform::ButtonMatrix;

using Video = Shown<ZVKSettingForVideoViewController>;
struct Basic : Shown<ZVKSettingForBasicViewController> {
    using Shown::Shown;
    ThresholdField& driving(char axis)
    {
        const std::string name = std::string("gsensorSensitivityThreshold") + axis + "DrivingField";
        return control<ThresholdField>(name.c_str());
    }
};
using Gps = Shown<ZVKSettingForGpsViewController>;
using Audio = Shown<ZVKSettingForAudioViewController>;

/// Any bytes, with values that the controls know strewn in.
_FILEDATA randomRecord(std::mt19937& random)
{
    std::array<uint32_t, 68> words;
    const auto below = [&](uint32_t end) { return uint32_t(random() % end); };
    const std::array<uint32_t, 3> scales{4, 32, 260};
    for (uint32_t& word : words)
        word = below(4) == 0 ? uint32_t(random()) : below(scales[below(3)]);
    words[16] = below(50) << 8; // frame rate
    if (below(4) != 0) {
        for (const size_t word : {22, 23, 24, 26, 27, 28}) // thresholds
            words[word] = 5 + below(146);
    }
    if (below(2) == 0)
        words[65] = 0x42003141; // a plate's last part, with a byte behind its end
    _FILEDATA record;
    std::memcpy(&record, words.data(), sizeof record);
    return record;
}

void expectVideo(_FILEDATA& record)
{
    const uint32_t rate = record.vid_framerate >> 8;
    if (rate == 3 || rate == 30)
        record.vid_framerate = 7680;
    else if (!std::set<uint32_t>{5, 7, 10, 12, 15}.contains(rate))
        record.vid_framerate = 6144;
}

void expectAudio(_FILEDATA& record)
{
    for (uint32_t* flag : {&record.audio_mux_enable, &record.voiceEnable, &record.alarm_ontime_flag})
        *flag = *flag != 0;
    const uint32_t level = record.aud_output_vol;
    record.aud_output_vol = level <= 39 ? 39 : level <= 51 ? 51 : level <= 63 ? 63 : level;
}

void expectBasic(_FILEDATA& record)
{
    const std::array<int32_t*, 6> thresholds{&record.gsen_x_threshold, &record.gsen_y_threshold,
        &record.gsen_z_threshold, &record.parkmode_x_threshold, &record.parkmode_y_threshold,
        &record.parkmode_z_threshold};
    for (const int32_t* value : thresholds) {
        if (*value < 5 || *value > 150)
            return; // refused as a whole
    }
    const std::set<int32_t> shrinking{29, 57, 58, 113, 114, 115, 116};
    for (int32_t* value : thresholds)
        *value -= shrinking.contains(*value) ? 1 : 0;
    for (uint32_t* flag : {&record.g_sensor_enable, &record.safe_temp_mode_on, &record.auto_drive_in_mode_on,
             &record.auto_park_in_mode_on, &record.ledoff})
        *flag = *flag != 0;
    if (!std::set<uint32_t>{180, 300, 420, 600, 900}.contains(record.always_mode_timeout))
        record.always_mode_timeout = 420;
    auto& plate = record.szPlateNumber;
    const auto end = std::find(plate.begin(), plate.end(), '\0');
    if (isValidUtf8({plate.data(), size_t(end - plate.begin())}))
        std::fill(end, plate.end(), '\0');
}

/// The free fields are the page's own: it may set them to what it can show.
template <typename Page, auto... free> void expectUntouched(void (*rules)(_FILEDATA&))
{
    std::mt19937 random(20);
    TestPlatform desktop;
    for (int round = 0; round < 100; ++round) {
        const _FILEDATA before = randomRecord(random);
        _FILEDATA expected = before;
        rules(expected);
        _FILEDATA record = before;
        Page page(desktop.pieces);
        page.setFileData(&record);
        _FILEDATA shown = record;
        ((shown.*free = before.*free), ...);
        ASSERT_EQ(bytesOf(shown), bytesOf(before)) << "display, round " << round;
        page.populate();
        ((expected.*free = record.*free), ...);
        const std::string found = bytesOf(record);
        const std::string wanted = bytesOf(expected);
        const auto at = std::mismatch(found.begin(), found.end(), wanted.begin()).first - found.begin();
        ASSERT_EQ(found, wanted) << "round " << round << ", offset " << at;
    }
}

} // namespace

TEST(SettingsRecordPage, AnUntouchedPageKeepsWhatItDoesNotOwnOrCannotShow)
{
    expectUntouched<ZVKSettingForVideoViewController>(expectVideo);
    expectUntouched<ZVKSettingForBasicViewController>(expectBasic);
    expectUntouched<ZVKSettingForAudioViewController>(expectAudio);
    expectUntouched<ZVKSettingForGpsViewController>(
        [](_FILEDATA& record) { record.summer_time = record.summer_time != 0; });
    expectUntouched<ZVKSettingForAuxViewController, &_FILEDATA::sd_mem_event_ratio,
        &_FILEDATA::BrightnessFixed, &_FILEDATA::motion_detect_mode_on, &_FILEDATA::motion720pCValue,
        &_FILEDATA::motion1080pCValue>([](_FILEDATA&) {});
    expectUntouched<ZVKSettingForObdViewController, &_FILEDATA::SaveDuration,
        &_FILEDATA::sd_mem_event_reserved>([](_FILEDATA& record) {
        record.summer_time = record.summer_time != 0;
        record.MemConfig = record.MemConfig != 0;
    });
}

TEST(SettingsRecordPage, EveryPageFitsTheWindowInBothLanguages)
{
    for (const char* language : {"en", "ko"}) {
        platform::setTextLanguage(language);
        Video video;
        Basic basic;
        Gps gps;
        Audio audio;
        for (QWidget* page :
            std::initializer_list<QWidget*>{&video.page, &basic.page, &gps.page, &audio.page}) {
            SCOPED_TRACE(std::string(language) + " " + page->objectName().toStdString());
            page->ensurePolished();
            EXPECT_LE(page->minimumSizeHint().width(), 760);
            EXPECT_LE(page->layout()->totalHeightForWidth(760), 520);
        }
    }
    platform::setTextLanguage("en");
}

TEST(SettingsVideoPage, TheRateFollowsTheResolutionAndChoicesReachTheRecord)
{
    Video video;
    video.choose("videoResolution", 1);
    EXPECT_EQ(video.control<ButtonMatrix>("videoEncodingBitrate").title(3), "6");
    video.choose("videoBrightness", 4);
    video.page.populate();
    EXPECT_EQ(video.record.vid_enc_res, 1u);
    EXPECT_EQ(video.record.vid_enc_bitrate, 6000u);
    EXPECT_EQ(video.record.vid_brightness, 140u);
}

TEST(SettingsGpsPage, ChoicesReachTheRecordAsIndexes)
{
    Gps gps;
    EXPECT_EQ(gps.control<QComboBox>("timeGmtCombo").currentText(), "+09:00");
    EXPECT_EQ(gps.control<QComboBox>("timeGmtCombo").itemText(23), "+05:45");
    gps.control<QComboBox>("timeGmtCombo").setCurrentIndex(33);
    gps.choose("speedDisplayUnitSeg", 1);
    gps.choose("drivingDaySeg", 7);
    gps.choose("saveDurationSeg", 7);
    gps.page.populate();
    EXPECT_EQ(gps.record.time_gmt, 33);
    EXPECT_EQ(gps.record.speed_disp_unit, 1u);
    EXPECT_EQ(gps.record.nodriving_day, 7u);
    EXPECT_EQ(gps.record.SaveDuration, 7u);
}

TEST(SettingsAudioPage, OneLanguageIsChosenAmongTheMatrixAndTheSeparateButton)
{
    Audio audio;
    auto& malay = audio.control<QRadioButton>("malaysianRadio");
    auto& matrix = audio.control<ButtonMatrix>("voiceLangRadio");
    EXPECT_EQ(matrix.selectedCell(), 1);
    malay.click();
    malay.click();
    EXPECT_EQ(audio.record.Brightness1, 20u);
    EXPECT_EQ(matrix.selectedCell(), -1);
    matrix.cell(2)->click();
    EXPECT_FALSE(malay.isChecked());
    audio.page.populate();
    EXPECT_EQ(audio.record.Brightness1, 2u);
    malay.click();
    audio.page.populate();
    EXPECT_EQ(audio.record.Brightness1, 20u);
}

TEST(SettingsBasicPage, ACustomThresholdIsCheckedBeforeAnythingIsStored)
{
    struct {
        const char* text;
        const char* message;
        int32_t stored;
    } const cases[] = {{"0.29", "", 28}, {"0.55", "", 55}, {"", "", 0}, {"0.5g", "", 50}, {"1.5", "", 150},
        {"0.049", "msg.gsensor_outofrange_fmt", 0}, {"9.99", "msg.gsensor_outofrange_fmt", 0},
        {"abc", "msg.input_value_invalid_format", 0}, {".", "msg.input_value_invalid_format", 0}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.text);
        const bool detects = &each - cases != 6;
        Basic basic;
        basic.page.show();
        QApplication::setActiveWindow(&basic.page);
        basic.choose("gsensorSensitivityDrivingSeg", 5);
        basic.driving('Y').setText(each.text);
        if (!detects)
            basic.control<QCheckBox>("gsensorEnableChk").click();
        const auto message = basic.page.validateUserInput();
        const QString known = platform::localized(each.message);
        EXPECT_EQ(message.value_or(QString()).left(10), known.left(10));
        basic.desktop.dispatcher.advance(std::chrono::milliseconds(0));
        EXPECT_EQ(basic.driving('Y').hasFocus(), message.has_value());
        basic.choose("recordingmodeSeg", 1);
        basic.page.populate();
        EXPECT_EQ(basic.record.gsen_y_threshold, message ? 70 : each.stored);
        EXPECT_EQ(basic.record.event_only_mode_on, message ? 0u : 1u);
        basic.choose("gsensorSensitivityDrivingSeg", 2);
        EXPECT_FALSE(basic.page.validateUserInput()) << "mended, with detection off, too";
    }
}

TEST(SettingsBasicPage, APlateNumberKeepsItsFirstEightLettersAndDigits)
{
    const std::pair<const char*, const char*> cases[] = {
        {"12가 3456-78", "12345678"}, {"ab-12", "ab12"}, {"AB12CD34EF", "AB12CD34"}, {"가나", ""}};
    for (const auto& [typed, kept] : cases) {
        SCOPED_TRACE(typed);
        Basic basic;
        auto& field = basic.control<ZVKCarNumberTextField>("carNumberField");
        field.insert(QString::fromUtf8(typed));
        basic.page.populate();
        EXPECT_EQ(field.text(), kept);
        std::array<char, 8> expected{};
        std::copy_n(kept, std::strlen(kept), expected.begin());
        EXPECT_EQ(basic.record.szPlateNumber, expected);
    }
}
