#include "platform/mpv/TimeLimit.h"
#include "platform/qt/QtScreens.h"
#include "tests/support/GuiTesting.h"

namespace {

class WindowMovement : public testing::Test {
protected:
    WindowMovement()
    {
        screens.setFrameOf(window, start, true);
        EXPECT_EQ(movement(), nullptr) << "the first placement";
        window.show();
    }

    QVariantAnimation* movement() const { return window.findChild<QVariantAnimation*>("frameMovement"); }
    void arrive() { movement()->setCurrentTime(movement()->duration()); }

    const platform::Rect start{10, 20, 300, 200};
    const platform::Rect larger{0, 0, 600, 400};
    TestPlatform::TestDefaults defaults;
    platform::QtScreens screens{defaults};
    QWidget window;
};

TEST_F(WindowMovement, EndsAtTheLatestFrame)
{
    screens.setFrameOf(window, larger, true);
    EXPECT_EQ(screens.frameOf(window), larger) << "for the program it is there at once";
    movement()->setCurrentTime(60);
    screens.setFrameOf(window, start, true);
    arrive();
    EXPECT_EQ(screens.frameOf(window), start);
    screens.setFrameOf(window, larger, true);
    screens.setFrameOf(window, start, false);
    EXPECT_EQ(window.size(), QSize(300, 200));
    EXPECT_EQ(movement(), nullptr);
}

TEST_F(WindowMovement, FullScreenComesWhenTheWindowHasArrived)
{
    screens.setFrameOf(window, screens.screenOf(window).frame, true);
    screens.setPresentationOptions(window, 5);
    EXPECT_EQ(screens.presentationOptions(), 5u);
    EXPECT_FALSE(window.isFullScreen());
    arrive();
    EXPECT_TRUE(window.isFullScreen());

    screens.setPresentationOptions(window, 0);
    screens.setFrameOf(window, start, true);
    EXPECT_FALSE(window.isFullScreen());
    screens.setFrameOf(window, larger, true);
    screens.setPresentationOptions(window, 5);
    screens.setPresentationOptions(window, 0);
    arrive();
    EXPECT_FALSE(window.isFullScreen()) << "left before it was reached";
}

TEST(TimeLimit, LeavesTheProcessThatHangs)
{
    const auto hang = [] {
        const platform::TimeLimit limit(1ms);
        pause();
    };
    EXPECT_EXIT(hang(), testing::ExitedWithCode(0), "");
}

} // namespace
