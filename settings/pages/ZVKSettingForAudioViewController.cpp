#include "settings/pages/ZVKSettingForAudioViewController.h"

#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "settings/record/FileData.h"
#include "ui_ZVKSettingForAudioViewController.h"

using platform::localized;

namespace {

constexpr std::array<uint32_t, 3> speakerLevels{39, 51, 63};

/// In the order of the voice language codes; the code after them is Malay.
constexpr std::array<const char*, 20> languages{"Korean", "English", "French", "Spanish.Europe", "Arabic",
    "Chinese", "Russian", "Japanese", "Thai", "BahasaIndonesia", "Vietnamese", "Mongolian",
    "Spanish.SouthAmerica", "German", "Turkish", "Italian", "Hindi", "Cantonese", "Czech", "Portuguese"};
constexpr uint32_t malaysianCode = 20;

QStringList volumeLabels()
{
    return {remarkedLabel("1", "setting.aux.volume_down"), "2", remarkedLabel("3", "setting.aux.volume_up")};
}

} // namespace

ZVKSettingForAudioViewController::ZVKSettingForAudioViewController(platform::Platform&, QWidget* parent)
    : RecordPage(parent),
      outlets(std::make_unique<Ui::ZVKSettingForAudioViewController>())
{
    outlets->setupUi(this);
    awakeFromNib();
    nameControls();
    bindControls();
    connectActions();
}

ZVKSettingForAudioViewController::~ZVKSettingForAudioViewController() = default;

void ZVKSettingForAudioViewController::awakeFromNib()
{
    auto& o = *outlets;
    o.boxOfMic->setTitle(localized("setting.aux.record_settings"));
    o.useVoiceRecordingChk->setText(localized("setting.aux.enable_voice_recording"));
    o.boxOfMicVolume->setTitle(localized("setting.aux.mic_volume"));
    o.boxOfSpeaker->setTitle(localized("setting.aux.speaker_volume"));
    o.useVoiceGuidanceChk->setText(localized("setting.aux.enable_voice_guidance"));
    o.useEveryHourNoticeChk->setText(localized("setting.aux.enable_hourly_alarm"));
    o.boxOfSpeakerVolume->setTitle(localized("setting.aux.speaker_volume"));
    o.boxOfVoiceLang->setTitle(localized("setting.aux.voice_guidance_lang_setting"));
    setSegmentLabels(*o.micSeg, volumeLabels());
    setSegmentLabels(*o.speakerSeg, volumeLabels());

    QStringList titles;
    for (const char* language : languages)
        titles += localized(language);
    setCellTitles(*o.voiceLangRadio, titles);
    o.malaysianRadio->setText(localized("Malaysia"));
    o.boxOfVoiceLang->setStyleSheet(QStringLiteral("QRadioButton { font-size: 12px; }"));
}

void ZVKSettingForAudioViewController::nameControls()
{
    auto& o = *outlets;
    o.micSeg->setAccessibleName(o.boxOfMicVolume->title());
    o.speakerSeg->setAccessibleName(o.boxOfSpeakerVolume->title());
    o.voiceLangRadio->setAccessibleName(o.boxOfVoiceLang->title());
}

void ZVKSettingForAudioViewController::connectActions()
{
    using Page = ZVKSettingForAudioViewController;
    const auto& o = *outlets;
    connect(o.useVoiceRecordingChk, &QCheckBox::clicked, this, &Page::clickVoiceRecordingChk);
    connect(o.useVoiceGuidanceChk, &QCheckBox::clicked, this, &Page::clickVoiceGuidanceChk);
    connect(o.voiceLangRadio, &ButtonMatrix::cellClicked, this, &Page::voiceLangMatrixSelected);
    connect(o.malaysianRadio, &QRadioButton::clicked, this, &Page::malaysianRadioSelected);
}

void ZVKSettingForAudioViewController::showRecord(const _FILEDATA& record)
{
    auto& o = *outlets;
    o.useVoiceRecordingChk->setChecked(record.audio_mux_enable != 0);
    updateVoiceRecordingUI();
    o.micSeg->setSelectedSegment(qint64(record.aud_input_vol) - 1);
    o.useVoiceGuidanceChk->setChecked(record.voiceEnable != 0);
    updateVoiceGuidanceUI();
    o.useEveryHourNoticeChk->setChecked(record.alarm_ontime_flag != 0);
    const auto level = std::lower_bound(speakerLevels.begin(), speakerLevels.end(), record.aud_output_vol);
    if (level != speakerLevels.end())
        o.speakerSeg->setSelectedSegment(level - speakerLevels.begin());
    o.malaysianRadio->setChecked(record.Brightness1 == malaysianCode);
    o.voiceLangRadio->selectCell(record.Brightness1);
}

void ZVKSettingForAudioViewController::updateVoiceRecordingUI()
{
    outlets->micSeg->setEnabled(fileData->audio_mux_enable != 0);
}

void ZVKSettingForAudioViewController::updateVoiceGuidanceUI()
{
    outlets->speakerSeg->setEnabled(fileData->voiceEnable != 0);
}

void ZVKSettingForAudioViewController::clickVoiceRecordingChk()
{
    if (!fileData)
        return;
    fileData->audio_mux_enable = outlets->useVoiceRecordingChk->isChecked() ? 1 : 0;
    updateVoiceRecordingUI();
}

void ZVKSettingForAudioViewController::clickVoiceGuidanceChk()
{
    if (!fileData)
        return;
    fileData->voiceEnable = outlets->useVoiceGuidanceChk->isChecked() ? 1 : 0;
    updateVoiceGuidanceUI();
}

void ZVKSettingForAudioViewController::voiceLangMatrixSelected()
{
    if (outlets->voiceLangRadio->selectedCell() >= 0)
        outlets->malaysianRadio->setChecked(false);
}

void ZVKSettingForAudioViewController::malaysianRadioSelected()
{
    // It is in no group, so a second click would uncheck it.
    outlets->malaysianRadio->setChecked(true);
    outlets->voiceLangRadio->deselectAllCells();
    if (fileData)
        fileData->Brightness1 = malaysianCode;
}

void ZVKSettingForAudioViewController::bindControls()
{
    auto& o = *outlets;
    addFlag(o.useVoiceRecordingChk, &_FILEDATA::audio_mux_enable);
    addFlag(o.useVoiceGuidanceChk, &_FILEDATA::voiceEnable);
    addFlag(o.useEveryHourNoticeChk, &_FILEDATA::alarm_ontime_flag);
    addSegments(o.micSeg, &_FILEDATA::aud_input_vol, 1);
    addSegments(o.speakerSeg, &_FILEDATA::aud_output_vol, speakerLevels);
    addSetting({o.voiceLangRadio, o.malaysianRadio}, [this](_FILEDATA& record) {
        const int cell = outlets->voiceLangRadio->selectedCell();
        if (outlets->malaysianRadio->isChecked())
            record.Brightness1 = malaysianCode;
        else if (cell >= 0)
            record.Brightness1 = uint32_t(cell);
    });
}
