#pragma once

#include "cardtools/drivelog/DriveRecordPage.h"

namespace Ui {
class ZVKSettingForFlashDataViewController;
}

/// The page of a ".drv" drive log.
class ZVKSettingForFlashDataViewController final : public DriveRecordPage {
public:
    /// `language` is the interface language, "ko" or another.
    ZVKSettingForFlashDataViewController(
        platform::Platform& desktop, const std::string& language, QWidget* parent = nullptr);
    ~ZVKSettingForFlashDataViewController() override;

private:
    std::unique_ptr<Ui::ZVKSettingForFlashDataViewController> outlets;
};
