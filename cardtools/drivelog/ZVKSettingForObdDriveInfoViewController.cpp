#include "cardtools/drivelog/ZVKSettingForObdDriveInfoViewController.h"

#include "ui_ZVKSettingForObdDriveInfoViewController.h"

ZVKSettingForObdDriveInfoViewController::ZVKSettingForObdDriveInfoViewController(
    platform::Platform& pieces, const std::string& interfaceLanguage, QWidget* parent)
    : DriveRecordPage(pieces, interfaceLanguage, obdDriveFormat, parent),
      outlets(std::make_unique<Ui::ZVKSettingForObdDriveInfoViewController>())
{
    outlets->setupUi(this);
    awakeFromNib({outlets->tableView, outlets->emptyLabel, outlets->stateLabel, outlets->openButton,
        outlets->exportButton});
}

ZVKSettingForObdDriveInfoViewController::~ZVKSettingForObdDriveInfoViewController() = default;
