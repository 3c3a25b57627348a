#include "settings/pages/ZVKSettingForObdViewController.h"

#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "ui_ZVKSettingForObdViewController.h"

using platform::localized;

namespace {

// Power cut-off voltages, in millivolts.
constexpr uint32_t lowestVoltage = 11500;
constexpr uint32_t voltageStep = 100;
constexpr uint32_t voltageCount = 10;

// How the interval and the parking flag share SaveDuration.
constexpr uint32_t codeMask = 0x0F;
constexpr uint32_t parkingMask = 0xF0;
constexpr uint32_t parkingBit = 0x10;

QStringList voltages()
{
    QStringList texts;
    for (uint32_t i = 0; i < voltageCount; ++i)
        texts += QString::asprintf("%.1fv", (lowestVoltage + i * voltageStep) / 1000.0);
    return texts;
}

/// -1 for a voltage that is none of the list's.
int voltageItem(uint32_t millivolts)
{
    const uint32_t above = millivolts - lowestVoltage;
    const bool listed =
        millivolts >= lowestVoltage && above % voltageStep == 0 && above / voltageStep < voltageCount;
    return listed ? int(above / voltageStep) : -1;
}

bool isParkingOn(uint32_t SaveDuration)
{
    return (SaveDuration & parkingMask) == parkingBit;
}

} // namespace

ZVKSettingForObdViewController::ZVKSettingForObdViewController(platform::Platform&, QWidget* parent)
    : RecordPage(parent),
      outlets(std::make_unique<Ui::ZVKSettingForObdViewController>())
{
    outlets->setupUi(this);
    shared = {outlets->drivingDaySeg, outlets->speedDisplayUnitSeg, outlets->timeGmtCombo,
        outlets->summerTimeChk, outlets->osdSpeedDisplaySeg};
    awakeFromNib();
}

ZVKSettingForObdViewController::~ZVKSettingForObdViewController() = default;

void ZVKSettingForObdViewController::awakeFromNib()
{
    auto& o = *outlets;
    shared.setUp(*this);
    setUpTexts();
    setComboItems(*o.powerVoltageCombo, voltages());
    QStringList intervals;
    for (const int seconds : {1, 3, 5, 10})
        intervals += localized("nSecond_fmt").replace(QLatin1String("%d"), QString::number(seconds));
    setSegmentLabels(*o.saveDurationSeg, intervals);
    setSegmentLabels(*o.useObdParkingSeg, offOnLabels());
    o.useExternalPowerChk->hide();
    setUpSlider();
    bindControls();
}

void ZVKSettingForObdViewController::setUpTexts()
{
    auto& o = *outlets;
    o.boxOfDay->setTitle(localized("setting.obd.weekly_alarm"));
    o.boxOfSpeedDisplayUnit->setTitle(localized("setting.obd.speed_display"));
    o.boxOfTime->setTitle(localized("setting.obd.timezone_setting"));
    o.boxOfObdSpeedDisplay->setTitle(localized("setting.obd.osd_speed_display"));
    o.boxOfSaveDuration->setTitle(localized("setting.obd.driving_route_info_saving_interval"));
    o.boxOfNightTime->setTitle(localized("setting.obd.obd_on_parking_mode"));
    o.boxOfPower->setTitle(localized("setting.obd.cutoff_voltage_setting"));
    o.boxOfEcoDrive->setTitle(localized("setting.obd.ecodrive"));
    o.useEcoDriveChk->setText(localized("setting.obd.use_ecodrive"));
    o.obdGuide1Field->setText(localized("setting.obd.obd_guide1"));
    o.speedGuide1Field->setText(localized("setting.obd.obd_speed_guide1"));
    o.timeGuide1Field->setText(localized("setting.obd.obd_time_guide1"));
    o.obdGuide2Field->setText(localized("setting.obd.obd_guide2"));
    o.powerGuide1Field->setText(localized("setting.obd.obd_power_guide1"));
    o.ecoGuideLabel->setText(localized("setting.obd.ecodrive_guide"));

    const std::pair<QWidget*, QGroupBox*> names[] = {
        {o.drivingDaySeg, o.boxOfDay},
        {o.speedDisplayUnitSeg, o.boxOfSpeedDisplayUnit},
        {o.timeGmtCombo, o.boxOfTime},
        {o.osdSpeedDisplaySeg, o.boxOfObdSpeedDisplay},
        {o.saveDurationSeg, o.boxOfSaveDuration},
        {o.useObdParkingSeg, o.boxOfNightTime},
        {o.powerVoltageCombo, o.boxOfPower},
        {o.ecoSlider, o.boxOfEcoDrive},
    };
    for (const auto& [control, box] : names)
        control->setAccessibleName(box->title());
}

void ZVKSettingForObdViewController::setUpSlider()
{
    SMDoubleSlider& slider = *outlets->ecoSlider;
    slider.setTrackingLoKnob(true);
    slider.setMinValue(0);
    slider.setMaxValue(100);
    slider.setAltIncrementValue(1.0);
    objController.setContent(this);
    slider.bind("objectLoValue", &objController, "content.ecoLoValue");
    slider.bind("objectHiValue", &objController, "content.ecoHiValue");
    connect(this, &ZVKSettingForObdViewController::ecoLoValueChanged, this,
        &ZVKSettingForObdViewController::updateEco);
    connect(this, &ZVKSettingForObdViewController::ecoHiValueChanged, this,
        &ZVKSettingForObdViewController::updateEco);
    outlets->ecoSliderAxisView->setFixedWidth(slider.maximumWidth());
}

void ZVKSettingForObdViewController::setEcoLoValue(double value)
{
    // A knob that was pressed but not moved changes nothing.
    if (static_cast<int64_t>(value) != static_cast<int64_t>(ecoLo))
        touch(ecoLoSetting);
    ecoLo = value;
    emit ecoLoValueChanged();
}

void ZVKSettingForObdViewController::setEcoHiValue(double value)
{
    if (static_cast<int64_t>(value) != static_cast<int64_t>(ecoHi))
        touch(ecoHiSetting);
    ecoHi = value;
    emit ecoHiValueChanged();
}

void ZVKSettingForObdViewController::updateEco()
{
    const auto lo = static_cast<int64_t>(ecoLo);
    const auto hi = static_cast<int64_t>(ecoHi);
    outlets->ecoSlider->setIntegerHiValue(hi);
    outlets->ecoSlider->setIntegerLoValue(lo);
    const double eco = double(100 - lo) / 100;
    const double uneco = double(100 - hi) / 100;
    outlets->ecoDriveLabel->setText(QString::asprintf("Eco Drive : %.2f ", eco) + localized("over"));
    outlets->normalDriveLabel->setText(QString::asprintf("Normal Drive : %.2f ~ %.2f", eco, uneco));
    outlets->unecoDriveLabel->setText(QString::asprintf("Uneco Drive : %.2f ", uneco) + localized("under"));
}

void ZVKSettingForObdViewController::showRecord(const _FILEDATA& record)
{
    auto& o = *outlets;
    shared.display(record);
    o.powerVoltageCombo->setCurrentIndex(voltageItem(record.sd_mem_always_reserved));
    o.useExternalPowerChk->setChecked(record.sd_mem_event_reserved != 0);
    const qint64 code = record.SaveDuration & codeMask;
    o.saveDurationSeg->setSelectedSegment(code == 3 ? 3 : code - 1);
    o.useObdParkingSeg->setSelectedSegment(isParkingOn(record.SaveDuration) ? 1 : 0);
    o.useEcoDriveChk->setChecked(record.MemConfig != 0);
    setEcoLoValue(100 - double(record.drivingSecurity));
    setEcoHiValue(100 - double(record.parkingSecurity));
}

void ZVKSettingForObdViewController::bindControls()
{
    auto& o = *outlets;
    bindSaveDuration();
    addSetting({o.powerVoltageCombo}, [combo = o.powerVoltageCombo](_FILEDATA& record) {
        if (const int item = combo->currentIndex(); item >= 0)
            record.sd_mem_always_reserved = lowestVoltage + voltageStep * uint32_t(item);
    });
    addFlag(o.useExternalPowerChk, &_FILEDATA::sd_mem_event_reserved);
    addFlag(o.useEcoDriveChk, &_FILEDATA::MemConfig);
    ecoLoSetting = addSetting({}, [this](_FILEDATA& record) {
        record.drivingSecurity = static_cast<uint32_t>(100 - static_cast<int64_t>(ecoLo));
    });
    ecoHiSetting = addSetting({}, [this](_FILEDATA& record) {
        record.parkingSecurity = static_cast<uint32_t>(100 - static_cast<int64_t>(ecoHi));
    });
}

/// Interval and parking flag are bits of one field; each changes its own.
void ZVKSettingForObdViewController::bindSaveDuration()
{
    auto& o = *outlets;
    addSetting({o.saveDurationSeg}, [segments = o.saveDurationSeg](_FILEDATA& record) {
        if (const int segment = segments->selectedSegment(); segment >= 0)
            record.SaveDuration =
                (record.SaveDuration & ~codeMask) | (segment < 3 ? uint32_t(segment) + 1 : 4);
    });
    addSetting({o.useObdParkingSeg}, [segments = o.useObdParkingSeg](_FILEDATA& record) {
        const bool parking = segments->selectedSegment() == 1;
        record.SaveDuration = (record.SaveDuration & codeMask) | (parking ? parkingBit : 0);
    });
}
