#include "cardtools/PMProgressIndicator.h"
#include "cardtools/PMProgressIndicatorController.h"
#include "platform/DockIcon.h"
#include "platform/Texts.h"
#include "tests/support/VirtualDispatcher.h"

#include <QLabel>
#include <QPixmap>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

/// The shared controller on a virtual clock, and one bar with its text.
struct ProgressIndicator : testing::Test {
    ProgressIndicator()
    {
        dock.setDispatcher(&dispatcher, seconds);
        bar.setTimeSource(seconds);
        bar.setProgressText(&text);
    }
    ~ProgressIndicator() override { dock.setDispatcher(nullptr, {}); }

    VirtualDispatcher dispatcher;
    std::function<double()> seconds = [this] { return double(dispatcher.now().count()) / 1000; };
    PMProgressIndicatorController& dock = PMProgressIndicatorController::sharedInstance();
    QLabel text;
    PMProgressIndicator bar;
};

TEST_F(ProgressIndicator, EstimatesFromAnIntervalThatMovesAlong)
{
    bar.setDisplayPercentage(true);
    bar.setDoubleValue(1);
    dispatcher.advance(10s); // 4 units in a second from here
    bar.setDoubleValue(41);
    EXPECT_EQ(text.text(), "41 % completed - Less than a minute remaining");
    for (int i = 0; i < 5; ++i) {
        dispatcher.advance(4s);
        bar.updateProgressText();
    }
    EXPECT_EQ(text.text(), "41 % completed") << "without progress the estimate is infinite and says nothing";
    EXPECT_EQ(progressTimeText(620), "About 11 minutes remaining");
    platform::setTextLanguage("ko");
    EXPECT_EQ(progressTimeText(620), QStringLiteral("약 11분 남음"));
    platform::setTextLanguage("en");
}

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
    EXPECT_EQ(dispatcher.pendingTimers(), 0U);
    fresh.removeProgressIndicator(bar);
    dispatcher.advance(100ms);
    EXPECT_EQ(platform::dockIconImage(platform::applicationIcon()).pixelColor(10, 255), QColor(Qt::white));
    EXPECT_EQ(dispatcher.pendingTimers(), 0U);
    platform::setApplicationIcon({});
}

} // namespace
