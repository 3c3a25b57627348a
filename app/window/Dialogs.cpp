// The settings window and the clock's, and what the player takes from the settings.

#include "app/ZVKAppDelegate.h"

#include "app/window/SettingPages.h"
#include "cardtools/clock/ZVKTimeSetupController.h"
#include "lib/Alerts.h"
#include "platform/Texts.h"
#include "settings/window/CardSettings.h"

/// The card is asked in the background: the system may take its time to answer.
void ZVKAppDelegate::readDisplayMile()
{
    m_bMileDisplay = false;
    auto& dispatcher = desktop.dispatcher;
    dispatcher.inBackground(
        [this, &dispatcher, &disks = desktop.disks, isKorean = m_bKorean, life = std::weak_ptr(alive)] {
            dispatcher.onMain([this, life, isMile = readsMiles(disks, isKorean)] {
                if (!life.expired() && !displayMileWasSaved)
                    showSpeedsInMiles(isMile);
            });
        });
}

void ZVKAppDelegate::setDisplayMile(uint32_t value)
{
    displayMileWasSaved = true;
    if (value <= 1)
        showSpeedsInMiles(value == 1);
}

/// Also the speed that is on screen while nothing moves.
void ZVKAppDelegate::showSpeedsInMiles(bool isMile)
{
    if (m_bMileDisplay == isMile)
        return;
    m_bMileDisplay = isMile;
    if (hasTelemetry && !blackBoxData.m_vGpsData().empty())
        updateGpsUIByPlayPosition();
}

void ZVKAppDelegate::tellFailedJob()
{
    showAlert(desktop.alerts, *window, "ZAVIK", platform::localized("msg.job_failed").toStdString());
}

void ZVKAppDelegate::showSettingPanel()
{
    replaceDialog([this] {
        auto controller = std::make_unique<ZVKSettingController>(desktop, language, settingTools());
        controller->setDelegate(this);
        return controller;
    });
}

void ZVKAppDelegate::showTimeSetupPanel()
{
    replaceDialog(
        [this] { return std::make_unique<ZVKTimeSetupController>(desktop, platform::textLanguage()); });
}

/// What the user has not saved in the window before is asked for first.
void ZVKAppDelegate::replaceDialog(std::function<std::unique_ptr<WindowController>()> make)
{
    if (isFormatting())
        return;
    const auto replace = [this, made = std::move(make), life = std::weak_ptr(alive)] {
        if (life.expired())
            return;
        lastDialogController = made();
        lastDialogController->showWindow();
    };
    if (lastDialogController)
        lastDialogController->letGo(replace);
    else
        replace();
}

/// The window that formats a card stays until the end is told; it comes forward instead of another one.
bool ZVKAppDelegate::isFormatting()
{
    auto* settings = dynamic_cast<ZVKSettingController*>(lastDialogController.get());
    if (!settings || !settings->isFormatting())
        return false;
    settings->onFormat();
    return true;
}
