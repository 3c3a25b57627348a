#include "app/window/MainWindowOutlets.h"

MainWindowOutlets::MainWindowOutlets(CustomWindow& window)
{
    Ui::ZVKAppDelegate::setupUi(&window);
    Ui::TitleBar::setupUi(headBox);
    Ui::VideoPanel::setupUi(videoBox);
    Ui::GraphPanel::setupUi(gsensorBox);
    Ui::TransportBar::setupUi(mediaControlBox);
    Ui::FullScreenBar::setupUi(mediaControlBoxForFullScreen);
    Ui::SideButtons::setupUi(sideButtonBox);
    Ui::ListPanel::setupUi(mediaListScrollView);
    Ui::DrivesPanel::setupUi(drivesView);
    Ui::MapPanel::setupUi(mapContainerView);
}
