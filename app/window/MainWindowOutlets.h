#pragma once

#include "ui_DrivesPanel.h"
#include "ui_FullScreenBar.h"
#include "ui_GraphPanel.h"
#include "ui_ListPanel.h"
#include "ui_MapPanel.h"
#include "ui_SideButtons.h"
#include "ui_TitleBar.h"
#include "ui_TransportBar.h"
#include "ui_VideoPanel.h"
#include "ui_ZVKAppDelegate.h"

/// The widgets of the main window: its boxes, and in them one form a panel. Owned by the window.
struct MainWindowOutlets : Ui::ZVKAppDelegate,
                           Ui::TitleBar,
                           Ui::VideoPanel,
                           Ui::GraphPanel,
                           Ui::TransportBar,
                           Ui::FullScreenBar,
                           Ui::SideButtons,
                           Ui::ListPanel,
                           Ui::DrivesPanel,
                           Ui::MapPanel {
    /// Loads the forms in the order of the tab key.
    explicit MainWindowOutlets(CustomWindow& window);
};
