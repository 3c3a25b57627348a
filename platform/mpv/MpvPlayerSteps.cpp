#include "platform/mpv/MpvPlayerImpl.h"

#include <algorithm>
#include <mpv/client.h>
#include <utility>

namespace platform {

void MpvPlayer::stepFrame(int frames)
{
    // More than anyone means, and less than takes long.
    constexpr int most = 1000;
    if (!isOpen())
        return;
    if (!paused)
        setPaused(true);
    file.steps = std::clamp(std::clamp(frames, -most, most) + file.steps, -most, most);
    next();
}

/// mpv drops a step back that comes while another runs, so they go one by one. Without the sound, whose time
/// mpv tells where there are no more pictures, all times are those of pictures.
void MpvPlayer::sendStep()
{
    file.stepsOn = file.steps > 0;
    if (file.stepsOn && (file.ended || file.isAtLastPicture)) {
        file.steps = 0;
        return;
    }
    file.steps += file.stepsOn ? -1 : 1;
    file.timeBeforeStep = file.time;
    file.isAtLastPicture = false;
    if (!std::exchange(file.isSilenced, true))
        sendMpvCommand(mpv.get(), 0, {"set", "aid", "no"});
    ignoreEnd();
    beginErrand(MpvErrand::step, !file.stepsOn);
    sendMpvCommand(mpv.get(), seekRequest, {file.stepsOn ? "frame-step" : "frame-back-step"});
}

/// mpv has played one picture and paused again.
void MpvPlayer::stepMade()
{
    mpv_unobserve_property(mpv.get(), seekRequest);
    file.stage = SeekStage::arrived;
    askOfErrand({{"eof-reached", MPV_FORMAT_FLAG}, {"time-pos", MPV_FORMAT_DOUBLE}});
}

void MpvPlayer::stepArrived()
{
    constexpr double sameMoment = 0.0005;
    file.stage = SeekStage::none;
    const double way = file.time - file.timeBeforeStep;
    const bool hasMoved = (file.stepsOn ? way : -way) > sameMoment;
    if (hasMoved || !file.stepsOn)
        file.ended = file.breaksOff = false;
    // It was told to play on while mpv made the step.
    if (!paused) {
        file.isStepRepeated = false;
        setPaused(false);
        next();
        return;
    }
    // The first step after a switch of the track shows the same picture again.
    const bool isAgain = !hasMoved && !file.isAtLastPicture && !std::exchange(file.isStepRepeated, true);
    if (isAgain) {
        file.steps += file.stepsOn ? 1 : -1;
    } else {
        file.isStepRepeated = false;
        if (!hasMoved)
            file.steps = 0;
        else if (!reportTime())
            return;
    }
    next();
}

} // namespace platform
