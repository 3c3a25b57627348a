#include "platform/mpv/MpvPlayerImpl.h"

#include <algorithm>
#include <cmath>
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

/// mpv drops a step back that comes while another runs, so they go one by one.
void MpvPlayer::sendStep()
{
    file.stepsOn = file.steps > 0;
    if (file.stepsOn && (file.ended || file.isAtLastPicture)) {
        file.steps = 0;
        return;
    }
    file.steps += file.stepsOn ? -1 : 1;
    file.timeBeforeStep = file.time;
    file.isStepFromEnd = file.ended;
    file.isAtLastPicture = false;
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
    if (file.isAtLastPicture && !file.errandSeeks && file.duration > 0) {
        // The time is that of the sound, which may end later: a seek tells the picture's.
        beginErrand(MpvErrand::step, true);
        sendMpvCommand(
            mpv.get(), seekRequest, {"seek", std::to_string(file.duration).c_str(), "absolute+exact"});
        return;
    }
    file.stage = SeekStage::none;
    const bool hasMoved = std::abs(file.time - file.timeBeforeStep) > sameMoment;
    if (hasMoved || !file.stepsOn)
        file.ended = file.breaksOff = false;
    // The first step after a switch of the track shows the same picture again, as does the first one back
    // from where the sound has ended.
    const bool isFromSound = file.isStepFromEnd && file.timeBeforeStep > file.duration - sameMoment;
    const bool isAgain =
        (!hasMoved || isFromSound) && !file.isAtLastPicture && !std::exchange(file.isStepRepeated, true);
    if (isAgain) {
        file.steps += file.stepsOn ? 1 : -1;
        file.isStepFromEnd = false;
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
