#include "settings/pages/ZVKSettingForGpsViewController.h"

#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "ui_ZVKSettingForGpsViewController.h"

using platform::localized;

namespace {

/// Seconds of the route saving intervals after "none", in the order of the record's indexes.
constexpr std::array<int, 7> saveDurations{1, 3, 5, 10, 15, 30, 60};

QStringList saveDurationLabels()
{
    QStringList labels{localized("none")};
    for (const int seconds : saveDurations)
        labels += QString::asprintf(localized("nSecond_fmt").toUtf8().constData(), seconds);
    return labels;
}

} // namespace

ZVKSettingForGpsViewController::ZVKSettingForGpsViewController(platform::Platform&, QWidget* parent)
    : RecordPage(parent),
      outlets(std::make_unique<Ui::ZVKSettingForGpsViewController>())
{
    outlets->setupUi(this);
    shared = {outlets->drivingDaySeg, outlets->speedDisplayUnitSeg, outlets->timeGmtCombo,
        outlets->summerTimeChk, outlets->osdSpeedDisplaySeg};
    awakeFromNib();
}

ZVKSettingForGpsViewController::~ZVKSettingForGpsViewController() = default;

void ZVKSettingForGpsViewController::awakeFromNib()
{
    auto& o = *outlets;
    shared.setUp(*this);
    setSegmentLabels(*o.saveDurationSeg, saveDurationLabels());
    setSegmentLabels(*o.nightTimeSeg, offOnLabels());
    addSegments(o.saveDurationSeg, &_FILEDATA::SaveDuration);
    addSegments(o.nightTimeSeg, &_FILEDATA::NightTime);

    o.boxOfDay->setTitle(localized("setting.gps.weekly_alarm"));
    o.boxOfSpeedDisplayUnit->setTitle(localized("setting.gps.speed_display"));
    o.boxOfTime->setTitle(localized("setting.gps.timezone_setting"));
    o.boxOfGpsSpeedDisplay->setTitle(localized("setting.gps.osd_speed_display"));
    o.boxOfSaveDuration->setTitle(localized("setting.gps.driving_route_info_saving_interval"));
    o.boxOfNightTime->setTitle(localized("setting.gps.gps_on_parking_mode"));
    o.gpsGuide1Field->setText(localized("setting.gps.gps_guide1"));
    o.speedGuide1Field->setText(localized("setting.gps.gps_speed_guide1"));
    o.timeGuide1Field->setText(localized("setting.gps.gps_time_guide1"));
    o.gpsGuide2Field->setText(localized("setting.gps.gps_guide2"));

    o.drivingDaySeg->setAccessibleName(o.boxOfDay->title());
    o.speedDisplayUnitSeg->setAccessibleName(o.boxOfSpeedDisplayUnit->title());
    o.timeGmtCombo->setAccessibleName(o.boxOfTime->title());
    o.osdSpeedDisplaySeg->setAccessibleName(o.boxOfGpsSpeedDisplay->title());
    o.saveDurationSeg->setAccessibleName(o.boxOfSaveDuration->title());
    o.nightTimeSeg->setAccessibleName(o.boxOfNightTime->title());
}

void ZVKSettingForGpsViewController::showRecord(const _FILEDATA& record)
{
    shared.display(record);
    outlets->saveDurationSeg->setSelectedSegment(record.SaveDuration);
    outlets->nightTimeSeg->setSelectedSegment(record.NightTime);
}
