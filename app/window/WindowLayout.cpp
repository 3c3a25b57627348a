// Where the window's boxes stand, in the normal mode and in full screen.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "app/window/WindowLayouts.h"

ZVKAppDelegate::Layouts::Layouts(CustomWindow& window, const MainWindowOutlets& outlets)
    : content(window),
      background(*outlets.backgroundBox),
      body(*outlets.bodyBox),
      bodyLeft(*outlets.bodyLeftBox),
      bodyRight(*outlets.bodyRightBox),
      mediaListBox(*outlets.mediaListBox),
      mapContainer(*outlets.mapContainerView),
      mapContainerTop(*outlets.mapContainerTopView),
      videoBox(*outlets.videoBox),
      videoContainer(*outlets.videoContainerView)
{
    for (QWidget* view : window.findChildren<QWidget*>())
        if (!view->objectName().isEmpty())
            views.insert(u'_' + view->objectName(), view);
}

void ZVKAppDelegate::Layouts::set(FormatLayout& layout, std::initializer_list<const char*> formats)
{
    layout.removeAll();
    for (const char* format : formats)
        layout.add(format, views);
    layout.apply();
}

void ZVKAppDelegate::layoutWindow()
{
    const bool isFull = window->isFullScreen();
    outlets->headBox->setVisible(!isFull);
    layouts->set(layouts->content, {"H:|-0-[_backgroundBox]-0-|", "V:|-0-[_backgroundBox]-0-|"});
    if (isFull)
        layouts->set(layouts->background, {"V:|-0-[_bodyBox]-0-|", "H:|-0-[_bodyBox]-0-|"});
    else
        layouts->set(layouts->background,
            {"V:|-0-[_headBox(==50)]-0-[_bodyBox]-0-|", "H:|-0-[_headBox]-0-|", "H:|-0-[_bodyBox]-0-|"});
    layoutBodyBox();
}

void ZVKAppDelegate::layoutBodyBox()
{
    const bool isFull = window->isFullScreen();
    outlets->bodyRightBox->setVisible(!isFull);
    outlets->gsensorBox->setVisible(!isFull);
    outlets->mediaControlBox->setVisible(!isFull);
    outlets->mediaControlBoxForFullScreen->setVisible(isFull);
    if (isFull) {
        layouts->set(layouts->body, {"H:|-0-[_bodyLeftBox]-0-|", "V:|-0-[_bodyLeftBox]-2-|"});
        layouts->set(layouts->bodyLeft,
            {"V:|-0-[_videoBox]-0-[_mediaControlBoxForFullScreen(==36)]-0-|", "H:|-0-[_videoBox]-0-|",
                "H:|-0-[_mediaControlBoxForFullScreen]-2-|"});
    } else {
        layouts->set(layouts->body,
            {"H:|-10-[_bodyLeftBox]-10-[_bodyRightBox(==334)]-10-|", "V:|-0-[_bodyLeftBox]-8-|",
                "V:|-0-[_bodyRightBox]-8-|"});
        layouts->set(layouts->bodyLeft,
            {"V:|-0-[_videoBox]-4-[_gsensorBox(==130)]-4-[_mediaControlBox(==72)]-0-|",
                "H:|-0-[_videoBox]-0-|", "H:|-0-[_gsensorBox]-0-|", "H:|-0-[_mediaControlBox]-0-|"});
        layouts->set(layouts->bodyRight,
            {"V:|-0-[_sideButtonBox(==32)]-0-[_mediaListBox]-0-|", "H:|-0-[_sideButtonBox]-0-|",
                "H:|-0-[_mediaListBox]-0-|"});
    }
    layouts->set(layouts->videoBox,
        {"H:|-0-[_player1BackgroundView]-0-|", "V:|-0-[_player1BackgroundView]-0-|",
            "H:|-0-[_videoContainerView]-0-|", "V:|-0-[_videoContainerView]-0-|"});
    layoutMapContainer();
    releaseHiddenFocus();
}

void ZVKAppDelegate::layoutMapContainer()
{
    if (window->isFullScreen())
        return;
    if (rightViewMode != 0) {
        layouts->set(
            layouts->mediaListBox, {"V:|-0-[_mapContainerView]-0-|", "H:|-0-[_mapContainerView]-0-|"});
        layouts->set(layouts->mapContainer,
            {"V:|-0-[_mapContainerTopView]-0-[_mapContainerBottomView(==98)]-0-|",
                "H:|-0-[_mapContainerTopView]-0-|", "H:|-0-[_mapContainerBottomView]-0-|"});
    } else {
        layouts->set(
            layouts->mediaListBox, {"V:|-0-[_mediaListScrollView]-0-|", "H:|-0-[_mediaListScrollView]-0-|"});
    }
}
