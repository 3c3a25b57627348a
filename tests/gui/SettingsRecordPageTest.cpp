#include "lib/ButtonMatrix.h"
#include "platform/Texts.h"
#include "settings/pages/ThresholdField.h"
#include "settings/pages/ZVKCarNumberTextField.h"
#include "settings/pages/ZVKSettingForAudioViewController.h"
#include "settings/pages/ZVKSettingForAuxViewController.h"
#include "settings/pages/ZVKSettingForBasicViewController.h"
#include "settings/pages/ZVKSettingForGpsViewController.h"
#include "settings/pages/ZVKSettingForVideoViewController.h"
#include "tests/support/ShownPage.h"

namespace {

using Video = Shown<ZVKSettingForVideoViewController>;
struct Basic : Shown<ZVKSettingForBasicViewController> {
    using Shown::Shown;
    ThresholdField& driving(char axis)
    {
        const std::string name = std::string("gsensorSensitivityThreshold") + axis + "DrivingField";
        return control<ThresholdField>(name.c_str());
    }
};
using Aux = Shown<ZVKSettingForAuxViewController>;
using Gps = Shown<ZVKSettingForGpsViewController>;
using Audio = Shown<ZVKSettingForAudioViewController>;

} // namespace

TEST(SettingsRecordPage, EveryPageFitsTheWindowInBothLanguages)
{
    for (const char* language : {"en", "ko"}) {
        platform::setTextLanguage(language);
        Video video;
        Basic basic;
        Gps gps;
        Audio audio;
        Aux aux([](_FILEDATA& record) { record.sd_mem_event_ratio = 99; });
        basic.control<ZVKCarNumberTextField>("carNumberField").insert(QStringLiteral("가"));
        EXPECT_LE(aux.page.minimumSizeHint().width(), 760);
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

TEST(SettingsRecordPage, TheWheelScrollsThePageUnlessTheListHasTheFocus)
{
    Gps gps;
    QScrollArea area;
    auto* page = new QWidget;
    page->setFixedSize(400, 2000);
    gps.page.setParent(page);
    area.setWidget(page);
    area.resize(420, 200);
    area.show();
    QApplication::setActiveWindow(&area);
    auto& zones = gps.control<QComboBox>("timeGmtCombo");
    EXPECT_EQ((zones.currentText() + zones.itemText(23)).toStdString(), "+09:00+05:45");
    for (const bool isFocused : {false, true}) {
        isFocused ? zones.setFocus() : area.setFocus();
        const QPointF middle = zones.rect().center();
        QWheelEvent event(middle, zones.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
            Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(&zones, &event);
        EXPECT_EQ(zones.hasFocus(), isFocused);
        EXPECT_EQ(zones.currentIndex(), isFocused ? 29 : 28);
        EXPECT_GT(area.verticalScrollBar()->value(), 0);
    }
    gps.page.populate();
    EXPECT_EQ(gps.record.time_gmt, 29);
    gps.page.setParent(nullptr);
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
    const std::tuple<const char*, const char*, int32_t> cases[] = {{"0.29", "", 28}, {"", "", 0},
        {"0.5g", "", 50}, {"1.5", "", 150}, {"9.5", "msg.gsensor_outofrange_fmt", 0},
        {"abc", "msg.input_value_invalid_format", 0}};
    for (const auto& [text, wanted, stored] : cases) {
        SCOPED_TRACE(text);
        const bool detects = std::string(text) != "9.5";
        Basic basic;
        basic.page.show();
        QApplication::setActiveWindow(&basic.page);
        basic.choose("gsensorSensitivityDrivingSeg", 5);
        basic.driving('Y').setText(text);
        // A command by keyboard leaves the focus where it is.
        QWidget* const focused = detects ? &basic.driving('Y') : &basic.control<QWidget>("ledOffChk");
        focused->setFocus();
        basic.driving('Y').deselect();
        if (!detects)
            basic.control<QCheckBox>("gsensorEnableChk").click();
        const auto message = basic.page.validateUserInput();
        EXPECT_EQ(message.value_or(QString()).left(10), platform::localized(wanted).left(10));
        basic.desktop.dispatcher.advance(0ms);
        EXPECT_EQ(QApplication::focusWidget(), message ? &basic.driving('Y') : focused);
        EXPECT_EQ(basic.driving('Y').selectedText(), message ? text : "") << "typing replaces it";
        basic.choose("recordingmodeSeg", 1);
        basic.page.populate();
        EXPECT_EQ(basic.record.gsen_y_threshold, message ? 70 : stored);
        EXPECT_EQ(basic.record.event_only_mode_on, message ? 0u : 1u);
        QFocusEvent alert(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(&basic.driving('Y'), &alert);
        EXPECT_EQ(basic.driving('Y').selectedText(), message ? basic.driving('Y').text() : "");
        basic.choose("gsensorSensitivityDrivingSeg", 2);
        EXPECT_FALSE(basic.page.validateUserInput()) << "mended, with detection off, too";
    }
}

TEST(SettingsBasicPage, AStoredThresholdStaysExactUntilItIsTypedAnew)
{
    Basic basic([](_FILEDATA& record) {
        record.gsen_x_threshold = 115;
        record.gsen_z_threshold = 900; // out of the range
    });
    const auto& record = basic.record;
    const auto storedX = [&] {
        EXPECT_FALSE(basic.page.validateUserInput());
        basic.page.populate();
        basic.page.setFileData(&basic.record);
        return record.gsen_x_threshold;
    };
    basic.choose("gsensorSensitivityDrivingSeg", 5);
    EXPECT_EQ(storedX(), 115);
    basic.driving('X').selectAll();
    basic.driving('X').insert("1.14");
    EXPECT_EQ(storedX(), 113);
    EXPECT_EQ(storedX(), 113);
    EXPECT_EQ(record.gsen_z_threshold, 900);
    basic.choose("gsensorSensitivityDrivingSeg", 4);
    basic.choose("gsensorSensitivityParkingSeg", 4);
    EXPECT_EQ(storedX(), 45);
    EXPECT_EQ(record.parkmode_x_threshold, 8);
}

TEST(SettingsBasicPage, APlateNumberKeepsItsFirstEightLettersAndDigits)
{
    const std::pair<const char*, const char*> cases[] = {{"12가 3456-78", "12345678"}, {"ab-12", "ab12"},
        {"AB12CD34EF", "AB12CD34"}, {"가나", ""}, {"AB12cd34", "AB12cd34"}};
    for (const auto& [typed, kept] : cases) {
        SCOPED_TRACE(typed);
        Basic basic;
        auto& field = basic.control<ZVKCarNumberTextField>("carNumberField");
        const QWidget& hint = basic.control<QWidget>("carNumberHint");
        EXPECT_FALSE(hint.isVisibleTo(&basic.page));
        field.insert(QString::fromUtf8(typed));
        basic.page.populate();
        EXPECT_EQ(hint.isVisibleTo(&basic.page), std::string(typed) != kept) << "what is left out is told";
        EXPECT_EQ(field.text(), kept);
        std::array<char, 8> expected{};
        std::copy_n(kept, std::strlen(kept), expected.begin());
        EXPECT_EQ(basic.record.szPlateNumber, expected);
    }
}
