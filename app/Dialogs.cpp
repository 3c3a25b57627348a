// The settings window and the clock's, and what the player takes from the settings.

#include "app/ZVKAppDelegate.h"

#include "cardtools/ZVKTimeSetupController.h"
#include "common/Alerts.h"
#include "platform/Texts.h"
#include "settings/CardSettings.h"

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
    if (hasTelemetry && !blackBoxData.m_vGpsData.empty())
        updateGpsUIByPlayPosition();
}

void ZVKAppDelegate::tellFailedJob()
{
    showAlert(desktop.alerts, *window, "ZAVIK", platform::localized("msg.job_failed").toStdString());
}

void ZVKAppDelegate::showSettingPanel()
{
    if (isFormatting())
        return;
    auto controller = std::make_unique<ZVKSettingController>(desktop, language);
    controller->setDelegate(this);
    lastDialogController = std::move(controller);
    lastDialogController->showWindow();
}

void ZVKAppDelegate::showTimeSetupPanel()
{
    if (isFormatting())
        return;
    lastDialogController = std::make_unique<ZVKTimeSetupController>(desktop, platform::textLanguage());
    lastDialogController->showWindow();
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
