#include "platform/Screen.h"

#include <gtest/gtest.h>

TEST(FullScreenOptions, FollowMenuBarAndDock)
{
    struct Case {
        const char* name;
        bool hasMenuBar;
        platform::Rect visible;
        bool hasDock;
        uint32_t added;
    };
    const platform::Rect frame{0, 0, 1920, 1080};
    for (const auto& [name, hasMenuBar, visible, hasDock, added] :
        {Case{"menu bar only", true, {0, 0, 1920, 1056}, false, 5},
            {"dock at the bottom", true, {0, 60, 1920, 996}, true, 5},
            {"dock at the side", false, {60, 0, 1860, 1080}, true, 1},
            {"second screen, nothing", false, frame, false, 0}}) {
        SCOPED_TRACE(name);
        platform::Screen screen;
        screen.frame = frame;
        screen.visibleFrame = visible;
        screen.statusBarThickness = 24;
        screen.hasMenuBar = hasMenuBar;
        EXPECT_EQ(screen.hasDock(), hasDock);
        EXPECT_EQ(screen.fullscreenPresentationOptions(8), 8 | added);
        EXPECT_EQ(screen.nonFullscreenPresentationOptions(13), 13 & ~added);
    }
}
