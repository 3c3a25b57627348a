#pragma once

#include "settings/record/FileData.h"

class QCheckBox;
class QComboBox;
class RecordPage;

class SegmentedControl;

/// The five settings that the GPS page and the OBD page have in common. The controls belong to the page.
struct GpsFields {
    SegmentedControl* drivingDaySeg;
    SegmentedControl* speedDisplayUnitSeg;
    QComboBox* timeGmtCombo;
    QCheckBox* summerTimeChk;
    SegmentedControl* osdSpeedDisplaySeg;

    /// Labels and items; makes them settings of the page.
    void setUp(RecordPage& page);
    /// A value that the control does not offer leaves it without a selection.
    void display(const _FILEDATA& record);
};
