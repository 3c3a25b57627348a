#include "tests/support/AppDelegateProbe.h"

namespace {

/// A recording of 60 seconds that plays.
class Transport : public AppTest {
protected:
    Transport()
    {
        openWith({"alwa_20150321_142530_F.avi", "alwa_20150321_142600_F.avi"});
        app.start(0);
        app.player().calls.clear();
    }

    PositionSlider& slider() { return app.find<PositionSlider>("videoPositionSlider"); }
    void drag(double fraction) { slider().setValue(int(fraction * slider().maximum())); }
    CustomWindow& window() { return app.window(); }
    platform::Size size() { return window().frame().size(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, QWidget* target = nullptr)
    {
        ::press(target ? *target : window(), key, {}, modifiers);
    }

    ScriptedPlayer& player = app.player();
};

TEST_F(Transport, PlayButtonPausesResumesAndRestarts)
{
    controller.clickPlayButton();
    EXPECT_EQ(player.calls.back(), "pause");
    player.reportState(PlayerState::paused);
    controller.clickPlayButton();
    EXPECT_EQ(player.calls.back(), "play");
    player.reportState(PlayerState::playing);
    player.reportEnd();
    drag(0.5);
    player.fraction = 1; // the seek has not settled yet
    controller.clickPlayButton();
    EXPECT_EQ(player.calls.back(), "setTime 30000");
    app.desk.dispatcher.advance(100ms);
    EXPECT_EQ(player.calls.back(), "play");

    player.reportEnd();
    controller.clickPlayButton();
    EXPECT_TRUE(app.isWaiting()) << "ended, the slider at the end: the file starts again";
    EXPECT_EQ(app.mediaIndex(), 0);
}

TEST_F(Transport, SliderSeeksAtOnceAndTwiceWhenGoingBack)
{
    player.reportTime(0.5f);
    drag(0.8);
    EXPECT_NEAR(app.playInfo().position(), 0.8, 1e-6);
    EXPECT_NEAR(app.find<PositionSlider>("videoPositionSliderForFullScreen").doubleValue(), 0.8, 1e-6);
    EXPECT_EQ(player.calls.back(), "setPosition 0.80");
    app.desk.dispatcher.advance(500ms);
    EXPECT_EQ(player.countOf("setPosition 0.80"), 1u);
    drag(0.2);
    app.desk.dispatcher.advance(99ms);
    EXPECT_EQ(player.countOf("setPosition 0.20"), 1u);
    app.desk.dispatcher.advance(1ms);
    EXPECT_EQ(player.countOf("setPosition 0.20"), 2u);
    EXPECT_FALSE(app.isMoving());
    drag(0.999);
    EXPECT_EQ(player.calls.back(), "setTime 60000") << "beyond 0.998 lies the end";
}

TEST_F(Transport, SliderIsMovedSilentlyByThePlayerAndNotWhileItIsHeld)
{
    std::vector<float> published; // every third one
    for (const float position : {0.2f, 0.3f, 0.4f, 0.5f}) {
        player.reportTime(position);
        published.push_back(float(app.playInfo().position()));
    }
    EXPECT_EQ(published, (std::vector{0.2f, 0.2f, 0.2f, 0.5f}));
    EXPECT_NEAR(slider().doubleValue(), 0.5, 1e-6);
    EXPECT_EQ(player.countOf("setPosition 0.50"), 0u);
    slider().setSliderDown(true);
    app.playInfo().setPosition(0.9);
    EXPECT_NEAR(slider().doubleValue(), 0.5, 1e-6);
    slider().setSliderDown(false);
    app.playInfo().setPosition(1.7);
    EXPECT_EQ(slider().doubleValue(), 1);
}

TEST_F(Transport, JumpsGoTenSecondsAndStopAtTheEnds)
{
    for (const auto& [from, isForward, expected, moves] :
        {std::tuple(0.5f, true, std::string("jumpForward 10"), true),
            {52.0f / 60, true, "setTime 60000", false}, {0.5f, false, "setPosition 0.33", true},
            {6.0f / 60, false, "setPosition 0.00", false}}) {
        SCOPED_TRACE(expected);
        player.fraction = from;
        isForward ? controller.jumpForward() : controller.jumpBackward();
        EXPECT_EQ(player.calls.back(), expected);
        EXPECT_EQ(app.isMoving(), moves);
        const double target = expected.starts_with("jump") ? 40.0 / 60 : 20.0 / 60;
        EXPECT_TRUE(!moves || std::abs(slider().doubleValue() - target) < 1e-5) << "shown at once";
        player.reportTime(from);
        EXPECT_TRUE(!moves || std::abs(app.playInfo().position() - target) < 1e-5) << "until it is there";
        app.desk.dispatcher.advance(299ms);
        EXPECT_EQ(app.isMoving(), moves);
        app.desk.dispatcher.advance(1ms);
        EXPECT_FALSE(app.isMoving());
    }
}

TEST_F(Transport, WhatIsShownAfterASeekIsThePlayersOwnMoment)
{
    const std::pair<const char*, std::function<void()>> seeks[] = {
        {"forward", [this] { controller.jumpForward(); }}, {"back", [this] { controller.jumpBackward(); }},
        {"slider forward", [this] { drag(0.7); }}, {"slider back", [this] { drag(0.3); }},
        {"two jumps",
            [this] {
                controller.jumpForward(), app.desk.dispatcher.advance(400ms), controller.jumpBackward();
            }},
        {"to the end and back", [this] { drag(1), drag(0.2); }}};
    for (const auto state : {PlayerState::paused, PlayerState::playing}) {
        for (const auto& [name, seek] : seeks) {
            for (const auto arrival : {210ms, 350ms, 5000ms}) {
                SCOPED_TRACE(std::string(name) + (state == PlayerState::paused ? " paused " : " playing ")
                    + std::to_string(arrival.count()));
                player.reportState(state);
                player.seeking = false;
                for (int i = 0; i < 3; ++i)
                    player.reportTime(0.5f);
                app.desk.dispatcher.advance(1s);
                player.seeking = true;
                seek();
                app.desk.dispatcher.advance(arrival);
                player.seeking = false;
                player.reportTime(0.41f);
                app.desk.dispatcher.advance(400ms);
                EXPECT_FLOAT_EQ(float(app.playInfo().position()), 0.41f);
                EXPECT_NEAR(slider().doubleValue(), 0.41, 1e-5);
                EXPECT_EQ(app.text("timeField"), "00:24 / 01:00");
                EXPECT_FALSE(app.isMoving());
            }
        }
    }
}

TEST_F(Transport, ASlowSeekLastsUntilItsPictureIsThereAndTheNextJumpGoesOnFromItsTarget)
{
    player.reportState(PlayerState::paused);
    player.reportTime(0.5f);
    player.seeking = true;
    controller.jumpForward();
    player.fraction = 0.5f + 10.0f / 60; // where a seek leads is the player's position
    app.desk.dispatcher.advance(299ms);
    controller.jumpForward();
    EXPECT_EQ(player.countOf("jumpForward 10"), 1u);
    auto& wait = app.find<QLabel>("seekLabel");
    app.desk.dispatcher.advance(200ms);
    EXPECT_FALSE(wait.isVisible());
    app.desk.dispatcher.advance(10s);
    EXPECT_TRUE(wait.isVisible());
    EXPECT_EQ(wait.text(), "Going to 00:40…");
    EXPECT_TRUE(app.isMoving());
    controller.jumpForward();
    EXPECT_EQ(player.countOf("jumpForward 10"), 2u);
    EXPECT_NEAR(slider().doubleValue(), 0.5 + 20.0 / 60, 1e-5);
    app.desk.dispatcher.advance(1s);
    EXPECT_TRUE(wait.isVisible());
    player.seeking = false;
    player.reportTime(0.8f);
    EXPECT_FALSE(wait.isVisible());
}

TEST_F(Transport, NoReportIsMissedWhileThePictureStands)
{
    player.reportState(PlayerState::paused);
    for (const float position : {0.1f, 0.2f, 0.3f, 0.4f}) {
        player.reportTime(position);
        EXPECT_FLOAT_EQ(float(app.playInfo().position()), position);
    }
    controller.playAtIndex(1);
    player.calls.clear();
    controller.jumpForward();
    controller.jumpBackward();
    drag(0.5);
    EXPECT_TRUE(player.calls.empty()) << "a file that is being prepared";
}

TEST_F(Transport, NothingOfAnEarlierSeekFollowsALaterOne)
{
    player.reportTime(0.5f);
    drag(0.2); // its second half follows after 0.1 s
    drag(1);
    app.desk.dispatcher.advance(1s);
    EXPECT_EQ(player.calls.back(), "setTime 60000");
    controller.jumpBackward();
    app.desk.dispatcher.advance(100ms);
    drag(0.9);
    app.desk.dispatcher.advance(1s);
    EXPECT_EQ(player.calls.back(), "setPosition 0.90");
    controller.jumpBackward();
    controller.playAtIndex(1);
    player.calls.clear();
    app.desk.dispatcher.advance(1s);
    EXPECT_TRUE(player.calls.empty()) << "nor reaches the next file";
    EXPECT_FALSE(app.isMoving());
}

TEST_F(Transport, AMoveToTheNextFileIsVoidOnceTheUserGoesElsewhere)
{
    const std::pair<const char*, std::function<void()>> wishes[] = {{"slider", [this] { drag(0.5); }},
        {"jump back", [this] { controller.jumpBackward(); }},
        {"replay by button", [this] { controller.clickPlayButton(); }},
        {"replay by double click", [this] { controller.changeAndPlay(); }},
        {"stop", [this] { controller.stopPlay(); }},
        {"hold the knob", [this] { slider().setSliderDown(true); }}};
    for (const auto& [name, wish] : wishes) {
        SCOPED_TRACE(name);
        slider().setSliderDown(false);
        app.start(0);
        player.reportEnd();
        app.desk.dispatcher.advance(1900ms);
        wish();
        app.desk.dispatcher.advance(5s);
        EXPECT_EQ(app.mediaIndex(), 0);
        app.desk.dispatcher.runAll();
    }
    slider().setSliderDown(false); // at the end
    app.desk.dispatcher.advance(3s);
    EXPECT_EQ(app.mediaIndex(), 1);
}

TEST_F(Transport, SizeStepsKeepTheOriginAndEndInFullScreen)
{
    controller.sizeUp();
    EXPECT_EQ(window().frame(), (platform::Rect{450, 205, 1224, 768}));
    EXPECT_TRUE(app.desk.screens.wasAnimated);
    controller.sizeUp();
    EXPECT_EQ(size().width, 1428);
    EXPECT_FALSE(window().isFullScreen());
    controller.sizeUp(); // 1632 x 1024 would be higher than the screen less 100
    EXPECT_TRUE(window().isFullScreen());
    EXPECT_EQ(app.desk.screens.options, 5u);
    controller.sizeUp();
    EXPECT_TRUE(window().isFullScreen());
    controller.sizeDown();
    EXPECT_FALSE(window().isFullScreen());
    EXPECT_EQ(window().frame(), (platform::Rect{450, 205, 1020, 640})) << "back on the frame of the start";
    EXPECT_EQ(app.desk.screens.options, 0u);
    controller.sizeDown();
    EXPECT_EQ(size().width, 1020);
    player.reportState(PlayerState::paused);
    controller.sizeUp();
    EXPECT_EQ(size().width, 1020) << "only while it plays";
}

TEST_F(Transport, FullScreenShowsTheVideoAboveASlimBar)
{
    controller.toggleFullScreen();
    EXPECT_EQ(window().frame(), (platform::Rect{0, 0, 1920, 1080}));
    for (const char* hidden : {"headBox", "bodyRightBox", "gsensorBox", "mediaControlBox"})
        EXPECT_FALSE(app.isShown(hidden)) << hidden;
    EXPECT_TRUE(app.isShown("mediaControlBoxForFullScreen"));
    EXPECT_EQ(app.find<QWidget>("mediaControlBoxForFullScreen").height(), 36);
    EXPECT_EQ(app.find<QWidget>("videoBox").size(), QSize(1920, 1080 - 2 - 36));
    press(Qt::Key_Escape);
    EXPECT_FALSE(window().isFullScreen());
    EXPECT_TRUE(app.isShown("headBox"));
    EXPECT_EQ(app.find<QWidget>("videoBox").geometry(), QRect(0, 0, 656, 372));
    EXPECT_EQ(app.find<QWidget>("bodyRightBox").geometry(), QRect(676, 0, 334, 582));
    controller.toggleFullScreen();
    controller.playAtIndex(1);
    app.desk.dispatcher.runAll();
    EXPECT_FALSE(window().isFullScreen()) << "a new file leaves full screen";
}

TEST_F(Transport, FullScreenCoversTheScreenThatHoldsMostOfTheWindow)
{
    app.desk.screens.screens.push_back({2, {1920, 200, 1280, 600}, {1920, 200, 1280, 600}});
    window().setFrame({1600, 205, 1020, 640});
    controller.toggleFullScreen();
    EXPECT_EQ(window().frame(), (platform::Rect{1920, 200, 1280, 600}));
    EXPECT_EQ(app.find<QWidget>("mediaControlBoxForFullScreen").mapTo(&window(), QPoint(0, 36)).y(), 598)
        << "the bar is on screen, also where that is smaller than the window's minimum";
    controller.toggleFullScreen();
    EXPECT_EQ(window().frame(), (platform::Rect{450, 205, 1020, 640}));
    window().setFrame({1920, 200, 1020, 600});
    controller.sizeUp();
    EXPECT_TRUE(window().isFullScreen()) << "it outgrows this screen at once";
}

TEST_F(Transport, KeysReachThePlayerFromEveryControlAndFromFullScreen)
{
    for (const char* control : {"videoPositionSlider", "volumeSlider", "openButton", "playButton"}) {
        SCOPED_TRACE(control);
        player.fraction = 0.5f;
        player.calls.clear();
        press(Qt::Key_Right, {}, &app.find<QWidget>(control));
        EXPECT_EQ(player.countOf("jumpForward 10"), 1u);
        app.desk.dispatcher.advance(1s);
        const auto volume = app.volume();
        press(Qt::Key_Up, {}, &app.find<QWidget>(control));
        EXPECT_EQ(app.volume(), std::min<uint64_t>(volume + 10, 200));
    }
    press(Qt::Key_F);
    press(Qt::Key_Escape, {}, &app.find<QWidget>("playButtonForFullScreen"));
    EXPECT_FALSE(window().isFullScreen());
    app.table().setFocus();
    press(Qt::Key_F);
    const QWidget* focused = window().focusWidget();
    EXPECT_TRUE(!focused || focused->isVisibleTo(&window()));
    EXPECT_FALSE(qobject_cast<const QSlider*>(focused));
}

TEST_F(Transport, KeysDoWhatTheirButtonsDo)
{
    press(Qt::Key_Space);
    EXPECT_EQ(player.calls.back(), "pause");
    press(Qt::Key_Up);
    EXPECT_EQ(app.volume(), 80u);
    EXPECT_FALSE(player.muted);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(app.volume(), 60u);
    EXPECT_EQ(player.loudness, 60);
    for (const auto& [start, key, expected] : {std::tuple{195, Qt::Key_Up, 200u}, {5, Qt::Key_Down, 0u}}) {
        app.find<QSlider>("volumeSlider").setValue(start);
        press(key);
        EXPECT_EQ(app.volume(), expected);
    }
    press(Qt::Key_2);
    press(Qt::Key_2);
    EXPECT_EQ(app.playInfo().speed(), 2);
    EXPECT_FLOAT_EQ(player.speed, 2);
    press(Qt::Key_1);
    EXPECT_EQ(app.playInfo().speed(), 1);
    press(Qt::Key_Plus, Qt::ShiftModifier);
    EXPECT_EQ(size().width, 1224);
    press(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(size().width, 1020);
    player.fraction = 0.5f;
    press(Qt::Key_Right);
    EXPECT_EQ(player.calls.back(), "jumpForward 10");
    press(Qt::Key_F);
    EXPECT_TRUE(window().isFullScreen());
    press(Qt::Key_F);
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(app.desk.panels.asked, 1);
    press(Qt::Key_O);
    EXPECT_EQ(app.desk.panels.asked, 1);
    press(Qt::Key_PageDown);
    EXPECT_EQ(app.mediaIndex(), 1);
}

TEST_F(Transport, BracketsStepThroughTheRatesAndTheButtonsKnowTwo)
{
    const auto after = [this](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            press(key);
        return app.text("speedTextButton").toStdString();
    };
    EXPECT_EQ(after({Qt::Key_BracketRight, Qt::Key_BracketRight}), "4.0x");
    EXPECT_EQ(after({Qt::Key_BracketRight, Qt::Key_BracketRight}), "8.0x");
    EXPECT_EQ(app.player().speed, 8);
    EXPECT_EQ(after({Qt::Key_2}), "8.0x");
    EXPECT_EQ(after({Qt::Key_1}), "2.0x");
    EXPECT_EQ(after({Qt::Key_1}), "1.0x");
    EXPECT_EQ(after({Qt::Key_BracketLeft, Qt::Key_BracketLeft, Qt::Key_BracketLeft}), "0.25x");
    EXPECT_EQ(after({Qt::Key_1}), "0.25x");
    EXPECT_EQ(after({Qt::Key_2}), "1.0x");
    press(Qt::Key_End);
    EXPECT_EQ(app.player().calls.back(), "setTime 60000");
    press(Qt::Key_Home);
    app.desk.dispatcher.advance(std::chrono::milliseconds(400));
    EXPECT_EQ(app.player().calls.back(), "setPosition 0.00");
    press(Qt::Key_End, {}, &app.table());
    EXPECT_EQ(app.player().calls.back(), "setTime 60000") << "in a table it would move within the row";
}

TEST_F(Transport, TheListKeepsItsOwnKeysAndEnterPlays)
{
    auto& table = app.table();
    press(Qt::Key_Down, {}, &table);
    EXPECT_EQ(app.volume(), 70u);
    EXPECT_EQ(app.mediaIndex(), 0);
    press(Qt::Key_Return, {}, &table);
    EXPECT_EQ(app.mediaIndex(), 1);
    app.begin();
    press(Qt::Key_Space, {}, &table);
    EXPECT_EQ(player.calls.back(), "pause");
    press(Qt::Key_PageUp, {}, &table);
    EXPECT_EQ(app.mediaIndex(), 0);
}

TEST_F(Transport, NamesFollowTheState)
{
    auto& button = app.find<TKImageButton>("playButton");
    EXPECT_EQ(button.accessibleName(), "Pause");
    EXPECT_TRUE(button.toolTip().contains("Space"));
    player.reportState(PlayerState::paused);
    EXPECT_EQ(button.accessibleName(), "Play");
    for (const TKImageButton* each : window().findChildren<TKImageButton*>())
        EXPECT_TRUE(!each->accessibleName().isEmpty() && !each->toolTip().isEmpty()
            && (each->focusPolicy() & Qt::TabFocus))
            << each->objectName().toStdString();
}

TEST_F(Transport, ADragStopsBelowTheTopOfTheVisibleArea)
{
    const auto send = [&](QEvent::Type type, QPointF at) {
        QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(&window(), &event);
    };
    send(QEvent::MouseButtonPress, {300, 20});
    send(QEvent::MouseMove, {320, 50});
    EXPECT_EQ(window().frame(), (platform::Rect{470, 175, 1020, 640}));
    send(QEvent::MouseMove, {300, -900});
    EXPECT_EQ(window().frame().maxY(), 1050);
}

} // namespace
