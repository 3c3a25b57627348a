#include "settings/pages/GpsFields.h"

#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "settings/pages/RecordPage.h"
#include "settings/record/TimeZones.h"

#include <QCheckBox>
#include <QComboBox>

using platform::localized;

void GpsFields::setUp(RecordPage& page)
{
    QStringList days;
    for (const char* day : {"none", "mon", "tue", "wed", "thu", "fri", "sat", "sun"})
        days += localized(day);
    setSegmentLabels(*drivingDaySeg, days);
    setSegmentLabels(*speedDisplayUnitSeg, {"Km/h", "Mi/h"});
    setSegmentLabels(*osdSpeedDisplaySeg, offOnLabels());
    setComboItems(*timeGmtCombo, QStringList(timeZones.begin(), timeZones.end()));
    summerTimeChk->setText(localized("summerTime"));
    explain(*summerTimeChk, "setting.gps.time_summer_guide");

    page.addSegments(drivingDaySeg, &_FILEDATA::nodriving_day);
    page.addSegments(speedDisplayUnitSeg, &_FILEDATA::speed_disp_unit);
    page.addSegments(osdSpeedDisplaySeg, &_FILEDATA::osd_speed_flag);
    page.addSetting({timeGmtCombo}, [combo = timeGmtCombo](_FILEDATA& record) {
        if (combo->currentIndex() >= 0)
            record.time_gmt = combo->currentIndex();
    });
    page.addFlag(summerTimeChk, &_FILEDATA::summer_time);
}

void GpsFields::display(const _FILEDATA& record)
{
    drivingDaySeg->setSelectedSegment(record.nodriving_day);
    speedDisplayUnitSeg->setSelectedSegment(record.speed_disp_unit);
    osdSpeedDisplaySeg->setSelectedSegment(record.osd_speed_flag);
    const bool isZone = record.time_gmt >= 0 && record.time_gmt < int(timeZones.size());
    timeGmtCombo->setCurrentIndex(isZone ? record.time_gmt : -1);
    summerTimeChk->setChecked(record.summer_time != 0);
}
