#include "app/MainCommands.h"

#include "app/ZVKAppDelegate.h"

namespace {

struct Row {
    const char* textKey;
    void (ZVKAppDelegate::*run)();
    std::vector<int> keys;
    std::vector<const char*> buttons;
};

std::vector<Row> rows()
{
    using Self = ZVKAppDelegate;
    return {
        {"tip.open", &Self::openMediaDirectoryDialog, {(Qt::CTRL | Qt::Key_O).toCombined()}, {"openButton"}},
        {"tip.filter", &Self::toggleFilter, {(Qt::CTRL | Qt::Key_F).toCombined()}, {}},
        {"tip.capture", &Self::captureVideo, {(Qt::CTRL | Qt::Key_S).toCombined()}, {"captureButton"}},
        {"tip.print", &Self::print, {(Qt::CTRL | Qt::Key_P).toCombined()}, {"printButton"}},
        {"tip.settings", &Self::showSettingPanel, {(Qt::CTRL | Qt::Key_Comma).toCombined()},
            {"settingsButton"}},
        {"tip.clock", &Self::showTimeSetupPanel, {(Qt::CTRL | Qt::Key_T).toCombined()}, {"clockButton"}},
        {"tip.fullscreen", &Self::toggleFullScreen, {Qt::Key_F}, {"fullScreenButton"}},
        {"tip.fullscreen_exit", &Self::toggleFullScreen, {}, {"leaveFullScreenButton"}},
        {"tip.play", &Self::clickPlayButton, {Qt::Key_Space}, {"playButton", "playButtonForFullScreen"}},
        {"tip.jump_forward", &Self::jumpForward, {Qt::Key_Right},
            {"jumpForwardButton", "jumpForwardButtonForFullScreen"}},
        {"tip.jump_backward", &Self::jumpBackward, {Qt::Key_Left},
            {"jumpBackwardButton", "jumpBackwardButtonForFullScreen"}},
        {"tip.volume_up", &Self::volumeUp, {Qt::Key_Up}, {"volumeUpButton"}},
        {"tip.volume_down", &Self::volumeDown, {Qt::Key_Down}, {"volumeDownButton"}},
        {"tip.speed_up", &Self::increaseSpeed, {Qt::Key_2}, {"speedUpButton"}},
        {"tip.speed_down", &Self::decreaseSpeed, {Qt::Key_1}, {"speedDownButton"}},
        {"tip.rate_up", &Self::fasterRate, {Qt::Key_BracketRight}, {}},
        {"tip.rate_down", &Self::slowerRate, {Qt::Key_BracketLeft}, {}},
        {"tip.to_start", &Self::goToStart, {Qt::Key_Home}, {}},
        {"tip.to_end", &Self::goToEnd, {Qt::Key_End}, {}},
        {"tip.frame_next", &Self::nextFrame, {Qt::Key_Period}, {}},
        {"tip.frame_previous", &Self::previousFrame, {Qt::Key_Comma}, {}},
        {"tip.camera", &Self::nextCamera, {Qt::Key_C}, {"cameraButton", "cameraButtonForFullScreen"}},
        {"tip.camera_previous", &Self::previousCamera, {(Qt::SHIFT | Qt::Key_C).toCombined()}, {}},
        {"tip.size_up", &Self::sizeUp, {Qt::Key_Plus, Qt::Key_Equal}, {"sizeUpButton"}},
        {"tip.size_down", &Self::sizeDown, {Qt::Key_Minus}, {"sizeDownButton"}},
        {"tip.play", &Self::playChoice, {Qt::Key_Return, Qt::Key_Enter}, {}},
        {"tip.previous", &Self::playPrevious, {Qt::Key_PageUp}, {}},
        {"tip.next", &Self::playFollowing, {Qt::Key_PageDown}, {}},
        {"tip.give_up", &Self::giveUpStart, {Qt::Key_Escape}, {}},
        {"tip.minimize", &Self::minimize, {}, {"minimizeButton"}},
        {"tip.close", &Self::close, {}, {"closeButton"}},
        {"tip.list", &Self::clickMediaListViewButton, {}, {"recordButtonImageView"}},
        {"tip.drives", &Self::clickDrivesViewButton, {}, {"drivesButtonImageView"}},
        {"tip.map", &Self::clickMapViewButton, {}, {"informationButtonImageView"}},
        {"tip.moment_next", &Self::nextMoment, {Qt::Key_M}, {}},
        {"tip.moment_previous", &Self::previousMoment, {(Qt::SHIFT | Qt::Key_M).toCombined()}, {}},
    };
}

} // namespace

std::vector<Command> mainCommands(ZVKAppDelegate& controller)
{
    std::vector<Command> commands;
    for (const Row& row : rows())
        commands.push_back(
            {row.textKey, [&controller, run = row.run] { (controller.*run)(); }, row.keys, row.buttons, {}});
    // With nothing to cancel, Escape leaves full screen.
    for (Command& command : commands)
        if (command.keys == std::vector<int>{Qt::Key_Escape})
            command.takesKeys = [&controller] { return controller.canGiveUp(); };
    return commands;
}
