#pragma once

#include "cardtools/drivelog/DriveRecordPage.h"

/// The page of a ".obd" drive log.
class ZVKSettingForObdDriveInfoViewController final : public DriveRecordPage {
public:
    explicit ZVKSettingForObdDriveInfoViewController(
        platform::Platform& pieces, const std::string& interfaceLanguage, QWidget* parent = nullptr)
        : DriveRecordPage(pieces, interfaceLanguage, obdDriveFormat, parent)
    {
    }
};
