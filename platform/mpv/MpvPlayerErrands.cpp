#include "platform/mpv/MpvPlayerImpl.h"

#include <string_view>

namespace platform {

void MpvPlayer::next()
{
    if (!isOpen() || file.stage != SeekStage::none)
        return;
    noteWhetherSecondIsOver();
    const CameraView due = cameras.possible();
    const bool isChange = due != cameras.applied || cameras.isOutdated;
    // Where a seek leads, the second camera may have pictures that are not to be had here.
    if (isChange && (due == CameraView::first || !file.targetIsNewer)) {
        sendView(due);
        return;
    }
    removeLeftOver();
    if (file.targetIsNewer)
        sendSeek();
    else if (file.steps != 0)
        sendStep();
}

void MpvPlayer::beginErrand(MpvErrand errand, bool seeks)
{
    file.errand = errand;
    file.errandSeeks = seeks;
    file.isTimeHeld = false;
    file.stage = SeekStage::sent;
    errandSince = clock.elapsed();
    seekRequest = ++lastRequest;
    watchTimer.start();
}

void MpvPlayer::errandAnswered(const mpv_event& event)
{
    if (event.event_id != MPV_EVENT_COMMAND_REPLY) {
        if (event.error >= 0)
            takeErrandAnswer(*static_cast<const mpv_event_property*>(event.data));
        if (--file.errandAnswers == 0)
            errandArrived();
    } else if (event.error < 0) {
        errandArrived();
    } else {
        file.stage = SeekStage::accepted;
        if (file.errand == MpvErrand::camera && !file.errandSeeks)
            askForPicture();
        else if (file.errand == MpvErrand::step && !file.errandSeeks)
            mpv_observe_property(mpv.get(), seekRequest, "pause", MPV_FORMAT_FLAG);
    }
}

void MpvPlayer::askOfErrand(std::initializer_list<std::pair<const char*, mpv_format>> asked)
{
    seekRequest = ++lastRequest;
    file.errandAnswers = static_cast<int>(asked.size());
    for (const auto& [name, format] : asked)
        mpv_get_property_async(mpv.get(), seekRequest, name, format);
}

void MpvPlayer::takeErrandAnswer(const mpv_event_property& property)
{
    const std::string_view name = property.name;
    if (name == "eof-reached")
        file.isAtLastPicture = propertyFlag(property);
    else if (name == "video-params/dw")
        cameras.size.width = propertyNumber(property);
    else if (name == "video-params/dh")
        cameras.size.height = propertyNumber(property);
    else if (name == "current-tracks/video/id")
        cameras.hasTrack = true;
    else if (!file.isTimeHeld)
        takeAnswer(property);
}

void MpvPlayer::playbackRestarted()
{
    if (phase == Phase::opening) {
        askBeforeOpen();
    } else if (file.stage == SeekStage::begun) {
        file.stage = SeekStage::arrived;
        if (file.errand == MpvErrand::camera) {
            askForPicture();
            return;
        }
        file.isTimeKnown = false;
        askOfErrand({{"time-pos", MPV_FORMAT_DOUBLE}});
    }
}

void MpvPlayer::errandArrived()
{
    if (file.errand == MpvErrand::camera)
        cameraArrived();
    else if (file.errand == MpvErrand::step)
        stepArrived();
    else
        seekArrived();
}

} // namespace platform
