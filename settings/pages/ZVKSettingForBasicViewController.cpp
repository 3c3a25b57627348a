#include "settings/pages/ZVKSettingForBasicViewController.h"

#include "lib/Alerts.h"
#include "platform/Platform.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "settings/pages/ValidationText.h"
#include "settings/record/FileData.h"
#include "ui_ZVKSettingForBasicViewController.h"

using platform::localized;

namespace {

constexpr int customSegment = 5;

} // namespace

const std::array<ZVKSettingForBasicViewController::Thresholds, 5>
    ZVKSettingForBasicViewController::drivingPresets{
        {{65, 90, 60}, {60, 80, 55}, {55, 70, 50}, {50, 60, 45}, {45, 50, 40}}};
const std::array<ZVKSettingForBasicViewController::Thresholds, 5>
    ZVKSettingForBasicViewController::parkingPresets{
        {{25, 25, 25}, {20, 20, 20}, {15, 15, 15}, {12, 12, 12}, {8, 8, 8}}};

int ZVKSettingForBasicViewController::findAlwaysModeTimeoutIndexByValue(uint32_t seconds)
{
    return static_cast<int>(positionIn(stanbyTimes, seconds).value_or(2));
}

int ZVKSettingForBasicViewController::presetIndex(
    const std::array<Thresholds, 5>& presets, const Thresholds& wanted)
{
    return static_cast<int>(positionIn(presets, wanted).value_or(customSegment));
}

int ZVKSettingForBasicViewController::findDrivingGsensorThresholdIndex(int32_t x, int32_t y, int32_t z)
{
    return presetIndex(drivingPresets, {x, y, z});
}

int ZVKSettingForBasicViewController::findParkingGsensorThresholdIndex(int32_t x, int32_t y, int32_t z)
{
    return presetIndex(parkingPresets, {x, y, z});
}

void ZVKSettingForBasicViewController::changeGsensorEnable()
{
    const bool isOn = outlets->gsensorEnableChk->isChecked();
    for (const Sensitivity& group : sensitivities) {
        group.segments->setEnabled(isOn);
        for (ThresholdField* field : group.fields)
            field->setEnabled(isOn);
    }
}

void ZVKSettingForBasicViewController::updateGsensorThreshold()
{
    for (const Sensitivity& group : sensitivities) {
        const int segment = group.segments->selectedSegment();
        for (size_t axis = 0; axis < group.fields.size(); ++axis) {
            if (segment >= 0 && segment < customSegment)
                group.fields[axis]->setHundredths(group.presets[size_t(segment)][axis]);
            group.fields[axis]->setEnabled(segment == customSegment);
        }
    }
}

void ZVKSettingForBasicViewController::showRecord(const _FILEDATA& record)
{
    auto& o = *outlets;
    o.displayscreenSeg->setSelectedSegment(record.disp_segment_mode);
    o.recordingmodeSeg->setSelectedSegment(record.event_only_mode_on);
    o.gsensorEnableChk->setChecked(record.g_sensor_enable != 0);
    changeGsensorEnable();
    for (const Sensitivity& group : sensitivities) {
        Thresholds values;
        for (size_t axis = 0; axis < values.size(); ++axis) {
            values[axis] = record.*group.thresholds[axis];
            group.fields[axis]->setHundredths(values[axis]);
        }
        group.segments->setSelectedSegment(presetIndex(group.presets, values));
    }
    updateGsensorThreshold();
    o.ledOffChk->setChecked(record.ledoff == 0);
    o.safeTemperatureModeOnChk->setChecked(record.safe_temp_mode_on != 0);
    o.autoDrivingModeChk->setChecked(record.auto_drive_in_mode_on != 0);
    o.autoParkingModeChk->setChecked(record.auto_park_in_mode_on != 0);
    o.stanbyTimeCombo->setCurrentIndex(findAlwaysModeTimeoutIndexByValue(record.always_mode_timeout));
    o.stanbyTimeCombo->setEnabled(record.auto_park_in_mode_on != 0);
    o.compositeModeSeg->setSelectedSegment(record.composite_mode);
    showCarNumber(record);
}

void ZVKSettingForBasicViewController::showCarNumber(const _FILEDATA& record)
{
    const auto end = std::find(record.szPlateNumber.begin(), record.szPlateNumber.end(), '\0');
    const std::string_view plate(record.szPlateNumber.data(), size_t(end - record.szPlateNumber.begin()));
    const QString shown = QString::fromUtf8(plate.data(), qsizetype(plate.size()));
    const bool isReadable = shown.toStdString() == plate;
    outlets->carNumberField->setCarNumber(isReadable ? shown : QString());
    outlets->carNumberHint->hide();
}

void ZVKSettingForBasicViewController::clickAutoParkingModeChk()
{
    const bool isOn = outlets->autoParkingModeChk->isChecked();
    if (fileData)
        fileData->auto_park_in_mode_on = isOn ? 1 : 0;
    outlets->stanbyTimeCombo->setEnabled(isOn);
}

void ZVKSettingForBasicViewController::clickSafeTemperatureModeChck()
{
    const char* key = outlets->safeTemperatureModeOnChk->isChecked() ? "msg.on_hightemperatureprotection"
                                                                     : "msg.off_hightemperatureprotection";
    showAlert(desktop.alerts, *window(), "Info", localized(key).toStdString());
}

std::optional<QString> ZVKSettingForBasicViewController::validateUserInput()
{
    for (const Sensitivity& group : sensitivities) {
        if (group.segments->selectedSegment() != customSegment)
            continue;
        for (ThresholdField* field : group.fields) {
            // A value from the record stays, even out of range.
            if (!field->isChanged())
                continue;
            if (const auto message =
                    localizedMessage(ZVKValidator::validateGsensorThreshold(field->text().toStdString()))) {
                // Enabled even while impact detection is off, so that an invalid value can be corrected.
                group.segments->setEnabled(true);
                field->setEnabled(true);
                focus(*field);
                return message;
            }
        }
    }
    return std::nullopt;
}

/// On the next turn of the event loop, after the alert is shown.
void ZVKSettingForBasicViewController::focus(ThresholdField& field)
{
    desktop.dispatcher.after(std::chrono::milliseconds(0), life.guarded([&field] {
        field.setFocus(Qt::TabFocusReason);
        field.selectAll(); // it may have had the focus
    }));
}

/// A keyboard shortcut does not end editing in the field.
void ZVKSettingForBasicViewController::endEditing()
{
    outlets->carNumberField->textDidEndEditing();
}

void ZVKSettingForBasicViewController::storeCarNumber(_FILEDATA& record) const
{
    const QByteArray text = outlets->carNumberField->carNumber().toLatin1();
    record.szPlateNumber = {};
    std::copy(text.begin(), text.end(), record.szPlateNumber.begin());
}
