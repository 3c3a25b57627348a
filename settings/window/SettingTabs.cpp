// Which page is on screen.

#include "settings/window/ZVKSettingController.h"

#include "lib/Alerts.h"
#include "platform/Texts.h"
#include "ui_ZVKSettingController.h"

#include <QPushButton>

#include <utility>

void ZVKSettingController::changeViewController(int tab)
{
    if (tab < 0 || tab >= int(tools.tabs.size()))
        return;
    // The card is not known yet while it is read.
    const bool mayLeave = targetController == nullptr || (work == Work::none && !refusesInput());
    if (tab == lastSelectedTabIndex || !mayLeave) {
        outlets->functionSegmentedControl->setSelectedSegment(lastSelectedTabIndex);
        return;
    }
    hidePage();
    showPage(tab);
    lastSelectedTabIndex = tab;
    outlets->functionSegmentedControl->setSelectedSegment(tab);
}

/// Whether the page on screen has invalid input; the user is told what.
bool ZVKSettingController::refusesInput()
{
    const auto message = validateUserInput();
    if (message)
        showAlert(desktop.alerts, *view, "ZAVIK", message->toStdString());
    return message.has_value();
}

std::optional<QString> ZVKSettingController::validateUserInput()
{
    return targetController ? targetController->validateUserInput() : std::nullopt;
}

void ZVKSettingController::populate()
{
    if (targetController)
        targetController->populate();
}

void ZVKSettingController::hidePage()
{
    if (!targetController)
        return;
    populate();
    targetController->onHide();
    // The keys stay with the window when the control that had them goes.
    if (targetController->isAncestorOf(view->focusWidget()))
        outlets->functionSegmentedControl->setFocus();
    outlets->targetView->takeWidget();
    targetController->hide();
    // The page itself may have asked for the switch.
    if (targetController == driveInfoController)
        targetController->setParent(view.get());
    else
        targetController->deleteLater();
    targetController = nullptr;
}

void ZVKSettingController::showPage(int tab)
{
    const SettingTab& wanted = tools.tabs[size_t(tab)];
    targetController = wanted.isKept ? &createDriveInfoController(wanted) : madePage(wanted).release();
    outlets->targetView->setWidget(targetController);
    targetController->show();
    targetController->setFileData(&m_FileData);
    targetController->setMainController(this);
    putPageIntoTabOrder();
}

SettingPage& ZVKSettingController::createDriveInfoController(const SettingTab& tab)
{
    if (!driveInfoController)
        driveInfoController = madePage(tab).release();
    return *driveInfoController;
}

std::unique_ptr<SettingPage> ZVKSettingController::madePage(const SettingTab& tab)
{
    auto page = tab.make({desktop, language, cardRoot, cardShown.driveLog});
    page->setWindowTitle(platform::localized(tab.titleKey));
    page->setAccessibleName(page->windowTitle());
    return page;
}

/// Between the tabs and the buttons, which were made before it.
void ZVKSettingController::putPageIntoTabOrder()
{
    std::vector<QWidget*> stops = {outlets->functionSegmentedControl};
    for (QWidget* next = targetController; next == targetController || targetController->isAncestorOf(next);
         next = next->nextInFocusChain())
        if (next->focusPolicy() != Qt::NoFocus)
            stops.push_back(next);
    stops.insert(stops.end(),
        {outlets->sdcardFormatButton, outlets->resetButton, outlets->previousButton, outlets->diskUtilButton,
            outlets->cancelButton, outlets->saveButton});
    for (size_t i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1], stops[i]);
}

void ZVKSettingController::stepTab(int step)
{
    const int count = int(tools.tabs.size());
    if (count > 0)
        changeViewController((lastSelectedTabIndex + step + count) % count);
}
