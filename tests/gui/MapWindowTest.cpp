#include "common/Log.h"
#include "telemetry/ZVKMapWindowController.h"
#include "tests/support/TestPlatform.h"
#include "tests/support/TestWebView.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace {

class MapWindow : public ::testing::Test {
protected:
    MapWindow()
    {
        desktop.pieces.makeWebView = [this](QWidget& parent) {
            ++views;
            return std::make_unique<TestWebView>(parent, log);
        };
        previous = setLogSink([this](std::string_view line) { lines.emplace_back(line); });
    }
    ~MapWindow() override { setLogSink(previous); }

    TestPlatform desktop;
    TestWebView::Log log;
    int views = 0;
    std::vector<std::string> lines;
    LogSink previous;
};

using Texts = std::vector<std::string>;

TEST_F(MapWindow, IsMadeOnFirstUseAndShownAgainLater)
{
    desktop.screens.frame = {10, 20, 480, 420};
    ZVKMapWindowController controller(desktop.pieces, "en");
    EXPECT_EQ(views, 0);
    controller.showWindow();
    EXPECT_TRUE(controller.window().isVisible());
    EXPECT_EQ(log.loads, Texts{"map2_eng.htm#place"});
    EXPECT_EQ(lines, Texts{"{{10, 20}, {480, 420}}"});

    controller.window().showMinimized();
    controller.showWindow();
    EXPECT_FALSE(controller.window().isMinimized());
    controller.window().close();
    controller.showWindow();
    EXPECT_TRUE(controller.window().isVisible());
    EXPECT_EQ(views, 1);
    EXPECT_EQ(log.loads.size(), 1u);
}

TEST_F(MapWindow, LoadsTheKoreanPageForKoreanOnly)
{
    for (const auto& [language, page] : {std::pair("ko", "map2.htm#place"),
             std::pair("en", "map2_eng.htm#place"), std::pair("auto", "map2_eng.htm#place")}) {
        log.loads.clear();
        ZVKMapWindowController(desktop.pieces, language).window();
        EXPECT_EQ(log.loads, Texts{page}) << language;
    }
}

TEST_F(MapWindow, MovesBesideAWindowAndKeepsItsSize)
{
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

TEST_F(MapWindow, SendsTheLongitudeFirst)
{
    ZVKMapWindowController controller(desktop.pieces, "en");
    controller.updateMapLat(37.5, 127.25);
    EXPECT_EQ(log.scripts, Texts{"setLatLag('127.250000','37.500000')"});
    controller.updateMapLat(-33.8688, -70.6483);
    EXPECT_EQ(log.scripts.back(), "setLatLag('-70.648300','-33.868800')");
}

} // namespace
