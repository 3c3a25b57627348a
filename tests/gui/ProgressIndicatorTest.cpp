#include "cardtools/PMProgressIndicator.h"
#include "cardtools/PMProgressIndicatorController.h"
#include "platform/DockIcon.h"
#include "tests/support/VirtualDispatcher.h"

#include <QPixmap>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

/// The shared controller on a virtual clock, and one bar.
struct ProgressIndicator : testing::Test {
    ProgressIndicator() { dock.setDispatcher(&dispatcher, seconds); }
    ~ProgressIndicator() override { dock.setDispatcher(nullptr, {}); }

    VirtualDispatcher dispatcher;
    std::function<double()> seconds = [this] { return double(dispatcher.now().count()) / 1000; };
    PMProgressIndicatorController& dock = PMProgressIndicatorController::sharedInstance();
    PMProgressIndicator bar;
};

TEST_F(ProgressIndicator, MovesOnlyWithTheWholeNumberAndLeavesTheIconAtBothEnds)
{
    {
        PMProgressIndicator other;
        other.setMinValue(50);
        other.setMaxValue(90);
        other.setDoubleValue(60.2);
        other.setDoubleValue(60.9);
        EXPECT_EQ(other.doubleValue(), 60.2);
        for (const double end : {90.0, 50.0}) {
            EXPECT_EQ(dock.numProgressIndicators(), 1U);
            other.setDoubleValue(end);
            EXPECT_EQ(dock.numProgressIndicators(), 0U);
            other.setDoubleValue(55);
        }
    }
    EXPECT_EQ(dock.numProgressIndicators(), 0U) << "a bar that is gone";
}

TEST_F(ProgressIndicator, ShowsTheBarOnTheIconAndPutsTheIconBack)
{
    bar.setDrawDockProgress(false);
    dispatcher.advance(1s); // the shared controller has put its own icon back
    QPixmap white(256, 256);
    white.fill(Qt::white);
    platform::setApplicationIcon(QIcon(white));
    PMProgressIndicatorController fresh; // takes the icon of now
    fresh.setDispatcher(&dispatcher, seconds);
    bar.setDoubleValue(40);
    fresh.addProgressIndicator(bar);
    dispatcher.advance(100ms);
    EXPECT_NE(platform::dockIconImage(platform::applicationIcon()).pixelColor(10, 255), QColor(Qt::white));
    fresh.removeProgressIndicator(bar);
    dispatcher.advance(100ms);
    EXPECT_EQ(platform::dockIconImage(platform::applicationIcon()).pixelColor(10, 255), QColor(Qt::white));
    platform::setApplicationIcon({});
}

} // namespace
