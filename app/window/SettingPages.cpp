#include "app/window/SettingPages.h"

#include "cardtools/drivelog/ZVKSettingForFlashDataViewController.h"
#include "cardtools/format/ZVKFormatWindowController.h"
#include "settings/pages/ZVKSettingForAudioViewController.h"
#include "settings/pages/ZVKSettingForAuxViewController.h"
#include "settings/pages/ZVKSettingForBasicViewController.h"
#include "settings/pages/ZVKSettingForGpsViewController.h"
#include "settings/pages/ZVKSettingForVideoViewController.h"

namespace {

template <typename Page> std::unique_ptr<SettingPage> page(const SettingPageContext& context)
{
    return std::make_unique<Page>(context.desktop);
}

std::unique_ptr<SettingPage> driveInfoPage(const SettingPageContext& context)
{
    auto page = std::make_unique<ZVKSettingForFlashDataViewController>(context.desktop, context.language);
    if (!context.driveLog.empty())
        page->setM_FlashDataFilePath(context.driveLog, context.cardRoot);
    return page;
}

SettingTabs tabs()
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

} // namespace

SettingTools settingTools()
{
    return {tabs(), [](platform::Platform& desktop, CardHolder& holder) {
                return std::make_unique<ZVKFormatWindowController>(desktop, &holder);
            }};
}
