#include "cardtools/PMProgressIndicator.h"
#include "cardtools/PMProgressIndicatorController.h"
#include "platform/DockIcon.h"
#include "platform/Texts.h"
#include "tests/support/VirtualDispatcher.h"

#include <QLabel>
#include <QPixmap>
#include <gtest/gtest.h>

#include <limits>

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

TEST_F(ProgressIndicator, WordsForTheRemainingTime)
{
    const double infinite = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> cases[] = {
        {620, "About 11 minutes remaining"},
        {615, "About ten minutes remaining"},
        {600, "About ten minutes remaining"},
        {555, "About nine minutes remaining"},
        {76, "About two minutes remaining"},
        {51, "About one minute remaining"},
        {50, "Less than a minute remaining"},
        {6, "About ten seconds remaining"},
        {5, "About five seconds remaining"},
        {0, "About five seconds remaining"},
        {infinite, ""},
        {-1, ""},
        {std::numeric_limits<double>::quiet_NaN(), ""},
    };
    for (const auto& [remaining, words] : cases)
        EXPECT_EQ(progressTimeText(remaining).toStdString(), words) << remaining;
    platform::setTextLanguage("ko");
    EXPECT_EQ(progressTimeText(620), QStringLiteral("약 11분 남음"));
    platform::setTextLanguage("en");
}

TEST_F(ProgressIndicator, EstimatesFromAnIntervalThatMovesAlong)
{
    bar.setDisplayPercentage(true);
    bar.setDoubleValue(1);
    dispatcher.advance(400ms);
    bar.setDoubleValue(2);
    EXPECT_EQ(text.text(), "2 % completed") << "too early for an estimate";
    bar.setDoubleValue(0);
    dispatcher.advance(10s); // 4 units in a second from here
    bar.setDoubleValue(40);
    EXPECT_EQ(text.text(), "40 % completed - Less than a minute remaining");
    // Standing still until the interval has moved beyond all progress.
    for (const double value : {41.0, 41.0, 42.4}) {
        dispatcher.advance(4s);
        bar.setDoubleValue(value);
        bar.updateProgressText();
    }
    EXPECT_EQ(text.text(), "42 % completed - About six minutes remaining") << "1.4 units in 8 seconds";
    for (int i = 0; i < 3; ++i) {
        dispatcher.advance(4s);
        bar.updateProgressText();
    }
    EXPECT_EQ(text.text(), "42 % completed") << "an infinite estimate says nothing";
    bar.setDisplayPercentage(false);
    bar.updateProgressText();
    EXPECT_EQ(text.text(), "");
    bar.setDisplayPercentage(true);
    bar.setIndeterminate(true);
    bar.updateProgressText();
    EXPECT_EQ(text.text(), "");
}

TEST_F(ProgressIndicator, MovesOnlyWithTheWholeNumberAndLeavesTheIconAtBothEnds)
{
    struct Range {
        double least, most;
    };
    for (const Range range : {Range{0, 100}, Range{50, 90}, Range{-20, 20}}) {
        SCOPED_TRACE(range.most);
        PMProgressIndicator other;
        other.setMinValue(range.least);
        other.setMaxValue(range.most);
        other.setDoubleValue(range.least + 10.2);
        EXPECT_EQ(dock.numProgressIndicators(), 1U);
        other.setDoubleValue(range.least + 10.9);
        EXPECT_EQ(other.doubleValue(), range.least + 10.2);
        other.setDoubleValue(range.most);
        EXPECT_EQ(dock.numProgressIndicators(), 0U);
        other.setDoubleValue(range.least + 5);
        EXPECT_EQ(dock.numProgressIndicators(), 1U);
        other.setDoubleValue(range.least);
        EXPECT_EQ(dock.numProgressIndicators(), 0U);
        other.setDoubleValue(range.least + 5);
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
    const QImage icon = fresh.drawnIcon();
    // Two pixels to a point; 40 % are 51.2 points. Bands of 0.78 opacity over white.
    EXPECT_EQ(icon.pixelColor(2 * 51 - 1, 255), QColor(157, 215, 255));
    EXPECT_EQ(icon.pixelColor(2 * 52, 255), QColor(244, 244, 244));
    EXPECT_EQ(icon.pixelColor(100, 255 - 2 * 13), QColor(Qt::white)) << "above the bar";

    dispatcher.advance(99ms);
    EXPECT_EQ(platform::dockIconImage(platform::applicationIcon()).pixelColor(10, 255), QColor(Qt::white));
    dispatcher.advance(1ms);
    EXPECT_NE(platform::dockIconImage(platform::applicationIcon()).pixelColor(10, 255), QColor(Qt::white));
    EXPECT_EQ(dispatcher.pendingTimers(), 0U);

    bar.setIndeterminate(true);
    fresh.drawProgressIndicators();
    const QImage pole = fresh.drawnIcon();
    dispatcher.advance(100ms);
    EXPECT_EQ(dispatcher.pendingTimers(), 1U) << "the barber pole goes on";
    EXPECT_NE(fresh.drawnIcon(), pole);

    fresh.removeProgressIndicator(bar);
    dispatcher.advance(100ms);
    EXPECT_EQ(platform::dockIconImage(platform::applicationIcon()).pixelColor(10, 255), QColor(Qt::white));
    EXPECT_EQ(dispatcher.pendingTimers(), 0U);
    platform::setApplicationIcon({});
}

} // namespace
