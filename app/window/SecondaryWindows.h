#pragma once

#include "common/Life.h"
#include "lib/WindowController.h"
#include "platform/Platform.h"

#include <functional>
#include <memory>
#include <string>

class viewControllerForZVKSettingDelegate;

/// The settings window and the clock's: modeless, one at a time. Opening one closes the one before, once its
/// changes are saved or dropped; a window that formats a card stays until it has reported the result. Main
/// thread only.
class SecondaryWindows {
public:
    /// `settingDelegate` lives longer than this.
    SecondaryWindows(platform::Platform& desktop, std::string language,
        viewControllerForZVKSettingDelegate& settingDelegate);

    void showSettingPanel();
    void showTimeSetupPanel();
    void close() { lastDialogController.reset(); }
    void replaceDialog(std::function<std::unique_ptr<WindowController>()> make);

private:
    bool isFormatting();

    platform::Platform& desktop;
    std::string language;
    viewControllerForZVKSettingDelegate& settingDelegate;
    std::unique_ptr<WindowController> lastDialogController;
    Life life;
};
