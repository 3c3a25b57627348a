#include "settings/pages/ZVKSettingForAuxViewController.h"

#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "settings/pages/ValidationText.h"
#include "settings/record/FileData.h"
#include "ui_ZVKSettingForAuxViewController.h"

#include <algorithm>
#include <array>
#include <limits>

using platform::localized;

namespace {

/// Stored sensitivities in the order of the segments, least sensitive first.
constexpr std::array<uint32_t, 5> hdSensitivities{50, 60, 75, 100, 150};
constexpr std::array<uint32_t, 5> fhdSensitivities{65, 70, 90, 100, 130};
constexpr std::array<uint32_t, 2> placesOfUse{1, 0}; // vehicle, indoors

std::optional<QString> checkedShare(int64_t percent)
{
    constexpr int64_t limit = std::numeric_limits<int>::max();
    const int share = static_cast<int>(std::clamp(percent, -limit, limit));
    return localizedMessage(ZVKValidator::validateSDCardSizeRatio(share));
}

} // namespace

ZVKSettingForAuxViewController::ZVKSettingForAuxViewController(platform::Platform&, QWidget* parent)
    : RecordPage(parent),
      outlets(std::make_unique<Ui::ZVKSettingForAuxViewController>())
{
    outlets->setupUi(this);
    awakeFromNib();
}

ZVKSettingForAuxViewController::~ZVKSettingForAuxViewController() = default;

void ZVKSettingForAuxViewController::awakeFromNib()
{
    setUpTexts();
    setUpSlider();
    bindControls();
    connect(
        outlets->useMotionChk, &QCheckBox::clicked, this, &ZVKSettingForAuxViewController::clickUseMotionChk);
}

void ZVKSettingForAuxViewController::setUpTexts()
{
    auto& o = *outlets;
    o.boxOfSdcardCapatity->setTitle(localized("setting.aux.sdcard_capacity"));
    o.boxOfMotion->setTitle(localized("setting.aux.motion_sense_setting"));
    o.boxOfNightAE->setTitle(localized("setting.aux.night_ae_setting"));
    o.boxOfAcFrequency->setTitle(localized("setting.aux.country_ac_power_setting"));
    o.boxOfPlaceofUse->setTitle(localized("setting.aux.place_of_use"));
    o.useMotionChk->setText(localized("setting.aux.motion_sense_use"));
    const std::pair<QLabel*, const char*> texts[] = {
        {o.alwaysLabel, "setting.aux.always"},
        {o.motionLabel, "setting.aux.motion"},
        {o.eventLabel, "setting.aux.event"},
        {o.sdcardCapacityGuideLabel, "setting.aux.sdcard_capacity_guide"},
        {o.sdcardCapacityWarningLabel, "msg.memconfig_warning"},
        {o.shareSumLabel, "setting.aux.share_sum"},
        {o.HDMotionSensitivityLabel, "setting.aux.hd_sensitivity"},
        {o.FHDMotionSensitivityLabel, "setting.aux.fhd_sensitivity"},
        {o.nightAEGuideLabel, "setting.aux.night_ae_guide"},
        {o.acFrequencyGuideLabel, "setting.aux.country_ac_power_guide"},
        {o.environmentLabel, "setting.aux.place_of_use_guide"},
    };
    for (const auto& [label, key] : texts)
        label->setText(localized(key));
    o.sdcardCapacityWarningLabel->hide();

    setSegmentLabels(*o.HDSensitivitySeg, sensitivityLabels());
    setSegmentLabels(*o.FHDSensitivitySeg, sensitivityLabels());
    setSegmentLabels(*o.dayTimeAESeg,
        {localized("setting.aux.low"), localized("setting.aux.medium_sedan"),
            localized("setting.aux.high_suv")});
    setSegmentLabels(*o.gammaSeg, {"60Hz(30fps)", "50Hz(25fps)"});
    setSegmentLabels(*o.useEnvironmentSeg,
        {localized("setting.aux.place_of_use_vehicle"), localized("setting.aux.place_of_use_indoor")});

    o.sdRatioSlider->setAccessibleName(o.boxOfSdcardCapatity->title());
    o.alwaysField->setAccessibleName(o.alwaysLabel->text());
    o.motionField->setAccessibleName(o.motionLabel->text());
    o.eventField->setAccessibleName(o.eventLabel->text());
    o.HDSensitivitySeg->setAccessibleName(o.HDMotionSensitivityLabel->text());
    o.FHDSensitivitySeg->setAccessibleName(o.FHDMotionSensitivityLabel->text());
    o.dayTimeAESeg->setAccessibleName(o.boxOfNightAE->title());
    o.gammaSeg->setAccessibleName(o.boxOfAcFrequency->title());
    o.useEnvironmentSeg->setAccessibleName(o.boxOfPlaceofUse->title());
}

void ZVKSettingForAuxViewController::setUpSlider()
{
    SMDoubleSlider& slider = *outlets->sdRatioSlider;
    slider.setTrackingLoKnob(true);
    slider.setMinValue(0);
    slider.setMaxValue(100);
    slider.setAltIncrementValue(1.0);
    objController.setContent(this);
    slider.bind("objectLoValue", &objController, "content.ratioLoValue");
    slider.bind("objectHiValue", &objController, "content.ratioHiValue");
    connect(this, &ZVKSettingForAuxViewController::ratioLoValueChanged, this,
        &ZVKSettingForAuxViewController::updateRatio);
    connect(this, &ZVKSettingForAuxViewController::ratioHiValueChanged, this,
        &ZVKSettingForAuxViewController::updateRatio);
    outlets->sdRatioSliderAxisView->setFixedWidth(slider.maximumWidth());
}

void ZVKSettingForAuxViewController::setRatioLoValue(double value)
{
    moveRatio(ratioLo, value);
    emit ratioLoValueChanged();
}

void ZVKSettingForAuxViewController::setRatioHiValue(double value)
{
    moveRatio(ratioHi, value);
    emit ratioHiValueChanged();
}

void ZVKSettingForAuxViewController::moveRatio(double& ratio, double value)
{
    // A knob that was pressed but not moved changes nothing.
    const bool moved = static_cast<int64_t>(ratio) != static_cast<int64_t>(value);
    ratio = value;
    if (!moved)
        return;
    touch(ratioSetting);
    // After a change the shares add up to 100: the other knob counts as it is displayed.
    if (wasTouched(ratioSetting)) {
        const double whole = outlets->sdRatioSlider->maxValue();
        ratioLo = std::clamp(ratioLo, 0.0, whole);
        ratioHi = std::clamp(ratioHi, 0.0, whole);
    }
}

/// Until the user moves a knob the share is the stored one, which need not be what the others leave.
int64_t ZVKSettingForAuxViewController::event() const
{
    if (fileData && !wasTouched(ratioSetting))
        return fileData->sd_mem_event_ratio;
    return static_cast<int64_t>(outlets->sdRatioSlider->maxValue() - double(always()) - double(motion()));
}

void ZVKSettingForAuxViewController::updateRatio()
{
    outlets->sdRatioSlider->setIntegerHiValue(always() + motion());
    outlets->sdRatioSlider->setIntegerLoValue(always());
    outlets->alwaysField->setText(QString::number(always()));
    outlets->motionField->setText(QString::number(motion()));
    outlets->eventField->setText(QString::number(event()));
    outlets->shareBar->setShares({always(), motion(), event()});
    outlets->shareSumLabel->setVisible(always() + motion() + event() != 100);
}

void ZVKSettingForAuxViewController::showRecord(const _FILEDATA& record)
{
    auto& o = *outlets;
    setRatioLoValue(record.sd_mem_always_ratio);
    setRatioHiValue(double(record.sd_mem_always_ratio) + record.sd_mem_motion_ratio);
    o.dayTimeAESeg->setSelectedSegment(record.DayTime);
    o.gammaSeg->setSelectedSegment(record.Gamma);
    o.useEnvironmentSeg->setSelectedSegment(record.BrightnessFixed == 0 ? 1 : 0);
    const size_t hd = positionIn(hdSensitivities, record.motion720pCValue).value_or(0);
    const size_t fhd = positionIn(fhdSensitivities, record.motion1080pCValue).value_or(hd);
    o.HDSensitivitySeg->setSelectedSegment(qint64(hd));
    o.FHDSensitivitySeg->setSelectedSegment(qint64(fhd));
    updateMotionUI();
}

void ZVKSettingForAuxViewController::updateMotionUI()
{
    const bool on = fileData && fileData->motion_detect_mode_on != 0;
    outlets->useMotionChk->setChecked(on);
    for (QWidget* control : {static_cast<QWidget*>(outlets->HDMotionSensitivityLabel),
             static_cast<QWidget*>(outlets->FHDMotionSensitivityLabel),
             static_cast<QWidget*>(outlets->HDSensitivitySeg),
             static_cast<QWidget*>(outlets->FHDSensitivitySeg)})
        control->setEnabled(on);
}

void ZVKSettingForAuxViewController::clickUseMotionChk()
{
    if (fileData)
        fileData->motion_detect_mode_on = outlets->useMotionChk->isChecked() ? 1 : 0;
    updateMotionUI();
}

std::optional<QString> ZVKSettingForAuxViewController::validateUserInput()
{
    if (!wasTouched(ratioSetting))
        return std::nullopt;
    for (const int64_t share : {always(), motion(), 100 - always() - motion()}) {
        if (auto message = checkedShare(share))
            return message;
    }
    return std::nullopt;
}

void ZVKSettingForAuxViewController::bindControls()
{
    auto& o = *outlets;
    ratioSetting = addSetting({}, [this](_FILEDATA& record) {
        record.sd_mem_always_ratio = static_cast<uint32_t>(always());
        record.sd_mem_motion_ratio = static_cast<uint32_t>(motion());
        record.sd_mem_event_ratio = static_cast<uint32_t>(event());
    });
    addSegments(o.dayTimeAESeg, &_FILEDATA::DayTime);
    addSegments(o.gammaSeg, &_FILEDATA::Gamma);
    addSegments(o.useEnvironmentSeg, &_FILEDATA::BrightnessFixed, placesOfUse);
    addFlag(o.useMotionChk, &_FILEDATA::motion_detect_mode_on);
    addSegments(o.HDSensitivitySeg, &_FILEDATA::motion720pCValue, hdSensitivities);
    addSegments(o.FHDSensitivitySeg, &_FILEDATA::motion1080pCValue, fhdSensitivities);
}
