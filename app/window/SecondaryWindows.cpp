#include "app/window/SecondaryWindows.h"

#include "app/window/SettingPages.h"
#include "cardtools/clock/ZVKTimeSetupController.h"
#include "platform/Texts.h"
#include "settings/window/ZVKSettingController.h"

#include <utility>

SecondaryWindows::SecondaryWindows(
    platform::Platform& layer, std::string chosen, viewControllerForZVKSettingDelegate& receiver)
    : desktop(layer),
      language(std::move(chosen)),
      settingDelegate(receiver)
{
}

void SecondaryWindows::showSettingPanel()
{
    replaceDialog([this] {
        auto controller = std::make_unique<ZVKSettingController>(desktop, language, settingTools());
        controller->setDelegate(&settingDelegate);
        return controller;
    });
}

void SecondaryWindows::showTimeSetupPanel()
{
    replaceDialog(
        [this] { return std::make_unique<ZVKTimeSetupController>(desktop, platform::textLanguage()); });
}

/// First asks about unsaved changes in the window before.
void SecondaryWindows::replaceDialog(std::function<std::unique_ptr<WindowController>()> make)
{
    if (isFormatting())
        return;
    std::function<void()> replace = life.guarded([this, made = std::move(make)] {
        lastDialogController = made();
        lastDialogController->showWindow();
    });
    if (lastDialogController)
        lastDialogController->letGo(std::move(replace));
    else
        replace();
}

/// A window that formats a card is brought to the front instead.
bool SecondaryWindows::isFormatting()
{
    auto* settings = dynamic_cast<ZVKSettingController*>(lastDialogController.get());
    if (!settings || !settings->isFormatting())
        return false;
    settings->onFormat();
    return true;
}
