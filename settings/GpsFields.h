#pragma once

#include "settings/FileData.h"

class QCheckBox;
class QComboBox;

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

    /// Labels and items.
    void setUp() const;
    /// A value that a control has no place for leaves it without a selection.
    void display(const _FILEDATA& record) const;
    /// A control without a selection leaves its field as it was.
    void populate(_FILEDATA& record) const;
};
