#pragma once

#include "cardtools/drivelog/DriveRecordPage.h"

namespace Ui {
class ZVKSettingForObdDriveInfoViewController;
}

/// The page of a ".obd" drive log.
class ZVKSettingForObdDriveInfoViewController final : public DriveRecordPage {
public:
    /// `language` is the interface language, "ko" or another.
    ZVKSettingForObdDriveInfoViewController(
        platform::Platform& desktop, const std::string& language, QWidget* parent = nullptr);
    ~ZVKSettingForObdDriveInfoViewController() override;

private:
    std::unique_ptr<Ui::ZVKSettingForObdDriveInfoViewController> outlets;
};
