#pragma once

#include "cardtools/volumes/CardHolder.h"
#include "cardtools/volumes/FormattingWindow.h"
#include "platform/Platform.h"
#include "settings/contract/ZVKSettingControllerDelegate.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What a page is made with.
struct SettingPageContext {
    platform::Platform& desktop;
    const std::string& language;
    /// The root of the card whose settings are shown, and its drive log; empty without one.
    const std::string& cardRoot;
    const std::string& driveLog;
};

/// One tab of the settings window and its page.
struct SettingTab {
    const char* labelKey;
    const char* titleKey;
    std::function<std::unique_ptr<SettingPage>(const SettingPageContext&)> make;
    /// The page is made once and keeps its state; the others are made anew at every switch.
    bool isKept = false;
};
using SettingTabs = std::vector<SettingTab>;

/// What the settings window is handed: its tabs from left to right, and how the window is made that formats
/// cards, which lets go of a card by the holder.
struct SettingTools {
    SettingTabs tabs;
    std::function<std::unique_ptr<FormattingWindow>(platform::Platform&, CardHolder&)> makeFormatWindow;
};
