#pragma once

#include "settings/FileData.h"

class QCheckBox;
class QComboBox;
class RecordPage;

namespace platform {
class SegmentedControl;
}

/// The five settings that the GPS page and the OBD page have in common. The controls belong to the page.
struct GpsFields {
    platform::SegmentedControl* drivingDaySeg;
    platform::SegmentedControl* speedDisplayUnitSeg;
    QComboBox* timeGmtCombo;
    QCheckBox* summerTimeChk;
    platform::SegmentedControl* osdSpeedDisplaySeg;

    /// Labels and items; makes them settings of the page.
    void setUp(RecordPage& page) const;
    /// A value that a control has no place for leaves it without a selection.
    void display(const _FILEDATA& record) const;
};
