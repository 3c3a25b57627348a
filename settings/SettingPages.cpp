#include "settings/SettingPages.h"

#include "cardtools/ZVKSettingForFlashDataViewController.h"
#include "settings/ZVKSettingForAudioViewController.h"
#include "settings/ZVKSettingForAuxViewController.h"
#include "settings/ZVKSettingForBasicViewController.h"
#include "settings/ZVKSettingForGpsViewController.h"
#include "settings/ZVKSettingForVideoViewController.h"

#include <filesystem>

namespace {

template <typename Page> std::unique_ptr<SettingPage> page(const SettingPageContext& context)
{
    return std::make_unique<Page>(context.desktop);
}

std::unique_ptr<SettingPage> driveInfoPage(const SettingPageContext& context)
{
    namespace fs = std::filesystem;
    auto page = std::make_unique<ZVKSettingForFlashDataViewController>(context.desktop, context.language);
    if (context.selectedUSBDisk) {
        std::error_code ignored;
        const fs::path log = fs::path(context.selectedUSBDisk->mountedURL) / "DrvInfo/zavik_000.drv";
        if (fs::exists(log, ignored))
            page->setM_FlashDataFilePath(log.native());
    }
    return page;
}

} // namespace

SettingTabs settingTabs()
{
    return {
        {"setting.video", "setting.video", page<ZVKSettingForVideoViewController>},
        {"setting.basic", "setting.basic", page<ZVKSettingForBasicViewController>},
        {"setting.gps", "setting.gps", page<ZVKSettingForGpsViewController>},
        {"setting.aux", "setting.aux", page<ZVKSettingForAuxViewController>},
        {"setting.audio", "setting.audio", page<ZVKSettingForAudioViewController>},
        {"setting.driveinfoview", "setting.information", driveInfoPage, true},
    };
}
