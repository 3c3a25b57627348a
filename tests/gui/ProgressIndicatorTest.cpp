#include "lib/PMProgressIndicator.h"
#include "lib/PMProgressIndicatorController.h"
#include "tests/support/GuiTesting.h"

namespace {

/// The shared controller on a virtual clock.
struct ProgressIndicator : testing::Test {
    ProgressIndicator() { dock.setDispatcher(&dispatcher, seconds); }
    ~ProgressIndicator() override { dock.setDispatcher(nullptr, {}); }

    VirtualDispatcher dispatcher;
    std::function<double()> seconds = [this] { return double(dispatcher.now().count()) / 1000; };
    PMProgressIndicatorController& dock = PMProgressIndicatorController::sharedInstance();
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

} // namespace
