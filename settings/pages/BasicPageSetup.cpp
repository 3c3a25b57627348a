#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "settings/pages/ZVKSettingForBasicViewController.h"
#include "settings/record/FileData.h"
#include "ui_ZVKSettingForBasicViewController.h"

using platform::localized;

ZVKSettingForBasicViewController::ZVKSettingForBasicViewController(platform::Platform& layer, QWidget* parent)
    : RecordPage(parent),
      desktop(layer),
      outlets(std::make_unique<Ui::ZVKSettingForBasicViewController>()),
      sensitivities{
          Sensitivity{nullptr, {}, {}, drivingPresets}, Sensitivity{nullptr, {}, {}, parkingPresets}}
{
    outlets->setupUi(this);
    const auto& o = *outlets;
    sensitivities[0].segments = o.gsensorSensitivityDrivingSeg;
    sensitivities[0].fields = {o.gsensorSensitivityThresholdXDrivingField,
        o.gsensorSensitivityThresholdYDrivingField, o.gsensorSensitivityThresholdZDrivingField};
    sensitivities[0].thresholds = {
        &_FILEDATA::gsen_x_threshold, &_FILEDATA::gsen_y_threshold, &_FILEDATA::gsen_z_threshold};
    sensitivities[1].segments = o.gsensorSensitivityParkingSeg;
    sensitivities[1].fields = {o.gsensorSensitivityThresholdXParkingField,
        o.gsensorSensitivityThresholdYParkingField, o.gsensorSensitivityThresholdZParkingField};
    sensitivities[1].thresholds = {
        &_FILEDATA::parkmode_x_threshold, &_FILEDATA::parkmode_y_threshold, &_FILEDATA::parkmode_z_threshold};
    awakeFromNib();
    setUpSegments();
    explainWords();
    bindControls();
    connectActions();
}

ZVKSettingForBasicViewController::~ZVKSettingForBasicViewController() = default;

void ZVKSettingForBasicViewController::awakeFromNib()
{
    auto& o = *outlets;
    o.boxOfDisplayScreen->setTitle(localized("setting.basic.display_setting"));
    o.boxOfRecordingMode->setTitle(localized("setting.basic.recordimg_mode"));
    o.gsensorEnableChk->setText(localized("setting.basic.enable_gsensor"));
    o.boxOfGsensorSensitivityDriving->setTitle(localized("setting.basic.driving_impact_sensitivity"));
    o.boxOfGsensorSensitivityParking->setTitle(localized("setting.basic.parking_impact_sensitivity"));
    o.boxOfEtc->setTitle(localized("setting.basic.others"));
    o.ledOffChk->setText(localized("setting.basic.enable_security_led"));
    o.safeTemperatureModeOnChk->setText(localized("setting.basic.enable_high_temperature_safety_mode"));
    o.autoDrivingModeChk->setText(localized("setting.basic.auto_switch_driving_mode"));
    o.autoParkingModeChk->setText(localized("setting.basic.auto_switch_parking_mode"));
    o.stanbyTimeField->setText(localized("setting.basic.stanby_time_parking_mode"));
    o.boxOfVideoOut->setTitle(localized("setting.basic.video_out"));
    o.videoOutGuideField->setText(localized("setting.basic.video_out_use"));
    o.carNumberLabelField->setText(localized("setting.basic.car_number_input"));
    QStringList times;
    for (const char* key : {"setting.basic.3min", "setting.basic.5min", "setting.basic.7min",
             "setting.basic.10min", "setting.basic.15min"})
        times += localized(key);
    setComboItems(*o.stanbyTimeCombo, times);
    o.stanbyTimeCombo->setAccessibleName(localized("setting.basic.stanby_time"));
}

void ZVKSettingForBasicViewController::setUpSegments()
{
    auto& o = *outlets;
    setSegmentLabels(*o.displayscreenSeg,
        {localized("setting.basic.display_setting_speed_time_date"),
            localized("setting.basic.display_setting_speed_time"),
            localized("setting.basic.display_setting_speed_date"),
            localized("setting.basic.display_setting_time")});
    setSegmentLabels(*o.recordingmodeSeg,
        {localized("setting.basic.always_event"), localized("setting.basic.event_only")});
    setSegmentLabels(*o.compositeModeSeg,
        {localized("setting.basic.video_out_ntsc"), localized("setting.basic.video_out_pal")});
    o.displayscreenSeg->setAccessibleName(o.boxOfDisplayScreen->title());
    o.recordingmodeSeg->setAccessibleName(o.boxOfRecordingMode->title());
    o.compositeModeSeg->setAccessibleName(o.boxOfVideoOut->title());
    setUpSensitivity(sensitivities[0], o.boxOfGsensorSensitivityDriving->title());
    setUpSensitivity(sensitivities[1], o.boxOfGsensorSensitivityParking->title());
    for (QLabel* label : {o.thresholdXDrivingLabel, o.thresholdXParkingLabel})
        label->setText(QStringLiteral("X"));
    for (QLabel* label : {o.thresholdYDrivingLabel, o.thresholdYParkingLabel})
        label->setText(QStringLiteral("Y"));
    for (QLabel* label : {o.thresholdZDrivingLabel, o.thresholdZParkingLabel})
        label->setText(QStringLiteral("Z"));
    for (QLabel* label : {o.thresholdDrivingUnit, o.thresholdParkingUnit})
        label->setText(localized("setting.basic.threshold_guide"));
}

void ZVKSettingForBasicViewController::setUpSensitivity(const Sensitivity& group, const QString& title)
{
    setSegmentLabels(
        *group.segments, sensitivityLabels() + QStringList{localized("setting.basic.customize")});
    group.segments->setAccessibleName(title);
    constexpr std::array<char, 3> axes{'X', 'Y', 'Z'};
    for (size_t axis = 0; axis < axes.size(); ++axis) {
        ThresholdField& field = *group.fields[axis];
        field.setAccessibleName(
            localized("setting.basic.axis_name_fmt").arg(title, QString(QLatin1Char(axes[axis]))));
        explain(field, "setting.basic.gsensor_guide");
        // A typed value selects "custom" and is checked.
        connect(&field, &QLineEdit::textEdited, this,
            [segments = group.segments] { segments->setSelectedSegment(segments->segmentCount() - 1); });
    }
}

void ZVKSettingForBasicViewController::explainWords()
{
    auto& o = *outlets;
    o.gsensorGuide->setText(localized("setting.basic.gsensor_guide"));
    o.securityLedGuide->setText(localized("setting.basic.security_led_guide"));
    explain(*o.gsensorEnableChk, "setting.basic.gsensor_guide");
    explain(*o.ledOffChk, "setting.basic.security_led_guide");
    explain(*o.safeTemperatureModeOnChk, "setting.basic.high_temperature_guide");
    explain(*o.compositeModeSeg, "setting.basic.video_out_use");
    explain(*o.carNumberField, "setting.basic.car_number_guide");
    o.carNumberField->setAccessibleName(o.carNumberLabelField->text());
    o.carNumberHint->setText(localized("setting.basic.car_number_refused"));
    o.carNumberHint->hide();
}

void ZVKSettingForBasicViewController::bindControls()
{
    const auto& o = *outlets;
    addSegments(o.displayscreenSeg, &_FILEDATA::disp_segment_mode);
    addSegments(o.recordingmodeSeg, &_FILEDATA::event_only_mode_on);
    addSegments(o.compositeModeSeg, &_FILEDATA::composite_mode);
    addFlag(o.gsensorEnableChk, &_FILEDATA::g_sensor_enable);
    addFlag(o.safeTemperatureModeOnChk, &_FILEDATA::safe_temp_mode_on);
    addFlag(o.autoDrivingModeChk, &_FILEDATA::auto_drive_in_mode_on);
    addFlag(o.autoParkingModeChk, &_FILEDATA::auto_park_in_mode_on);
    addFlag(o.ledOffChk, &_FILEDATA::ledoff, 0, 1);
    for (const Sensitivity& group : sensitivities) {
        // A preset is three thresholds.
        for (size_t axis = 0; axis < group.fields.size(); ++axis) {
            addSetting({group.segments, group.fields[axis]},
                [field = group.fields[axis], threshold = group.thresholds[axis]](
                    _FILEDATA& record) { record.*threshold = field->hundredths(); });
        }
    }
    addSetting({o.stanbyTimeCombo}, [combo = o.stanbyTimeCombo](_FILEDATA& record) {
        if (const int item = combo->currentIndex(); item >= 0)
            record.always_mode_timeout = stanbyTimes[size_t(item)];
    });
    addSetting({o.carNumberField}, [this](_FILEDATA& record) { storeCarNumber(record); });
}

void ZVKSettingForBasicViewController::connectActions()
{
    using Page = ZVKSettingForBasicViewController;
    const auto& o = *outlets;
    connect(o.gsensorEnableChk, &QCheckBox::clicked, this, &Page::changeGsensorEnable);
    for (const Sensitivity& group : sensitivities)
        connect(group.segments, &SegmentedControl::segmentClicked, this, &Page::updateGsensorThreshold);
    connect(o.autoParkingModeChk, &QCheckBox::clicked, this, &Page::clickAutoParkingModeChk);
    connect(o.safeTemperatureModeOnChk, &QCheckBox::clicked, this, &Page::clickSafeTemperatureModeChck);
    connect(o.carNumberField, &ZVKCarNumberTextField::refused, o.carNumberHint, &QWidget::setVisible);
}
