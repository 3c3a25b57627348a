#pragma once

#include "cardtools/drivelog/DriveRecordPage.h"

/// The page of a ".drv" drive log.
class ZVKSettingForFlashDataViewController final : public DriveRecordPage {
public:
    explicit ZVKSettingForFlashDataViewController(
        platform::Platform& pieces, const std::string& interfaceLanguage, QWidget* parent = nullptr)
        : DriveRecordPage(pieces, interfaceLanguage, flashDataFormat, parent)
    {
    }
};
