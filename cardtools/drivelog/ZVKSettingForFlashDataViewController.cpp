#include "cardtools/drivelog/ZVKSettingForFlashDataViewController.h"

#include "ui_ZVKSettingForFlashDataViewController.h"

ZVKSettingForFlashDataViewController::ZVKSettingForFlashDataViewController(
    platform::Platform& pieces, const std::string& interfaceLanguage, QWidget* parent)
    : DriveRecordPage(pieces, interfaceLanguage, flashDataFormat, parent),
      outlets(std::make_unique<Ui::ZVKSettingForFlashDataViewController>())
{
    outlets->setupUi(this);
    awakeFromNib({outlets->tableView, outlets->emptyLabel, outlets->stateLabel, outlets->openButton,
        outlets->exportButton});
}

ZVKSettingForFlashDataViewController::~ZVKSettingForFlashDataViewController() = default;
