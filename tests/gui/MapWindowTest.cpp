#include "telemetry/views/ZVKMapWindowController.h"
#include "tests/support/GuiTesting.h"

namespace {

TEST(MapWindow, LoadsTheKoreanPageForKoreanOnly)
{
    TestPlatform desktop;
    for (const auto& [language, page] : {std::pair("ko", "map2.htm#place"),
             std::pair("en", "map2_eng.htm#place"), std::pair("auto", "map2_eng.htm#place")}) {
        desktop.map.loads.clear();
        ZVKMapWindowController(desktop.pieces, language).window();
        EXPECT_THAT(desktop.map.loads, ElementsAre(page)) << language;
    }
}

TEST(MapWindow, MovesBesideAWindowAndKeepsItsSize)
{
    TestPlatform desktop;
    desktop.screens.frame = {0, 0, 480, 300};
    ZVKMapWindowController controller(desktop.pieces, "en");
    controller.moveWindowRightBy({100, 200, 500, 400});
    EXPECT_EQ(desktop.screens.frame, (platform::Rect{600, 300, 480, 300}));
    desktop.screens.screens.push_back({2, {1920, 0, 1280, 1024}, {1920, 40, 1280, 984}});
    for (const auto& [owner, x, y] : {std::tuple{platform::Rect{1300, 600, 500, 400}, 1440, 700},
             {{1500, -200, 1000, 400}, 2500, 40}, {{3000, 900, 500, 400}, 2720, 724}, {{}, 0, 0}}) {
        controller.moveWindowRightBy(owner);
        EXPECT_EQ(desktop.screens.frame, (platform::Rect{double(x), double(y), 480, 300}));
    }
}

} // namespace
