#include "platform/mpv/MpvPlayerImpl.h"

#include <algorithm>
#include <cmath>
#include <mpv/client.h>
#include <string_view>
#include <utility>

namespace platform {

namespace {

/// What must be known of a file before it is reported as playing.
constexpr std::pair<const char*, mpv_format> questions[] = {
    {"duration", MPV_FORMAT_DOUBLE},
    {"time-pos", MPV_FORMAT_DOUBLE},
    {"video-params/dw", MPV_FORMAT_INT64},
    {"video-params/dh", MPV_FORMAT_INT64},
    {"audio-params/samplerate", MPV_FORMAT_INT64},
    {"track-list", MPV_FORMAT_NODE},
};

constexpr int64_t timeReportInterval = 33;

std::optional<int64_t> entryOf(const mpv_event& reply)
{
    const auto* command = static_cast<const mpv_event_command*>(reply.data);
    if (!command || command->result.format != MPV_FORMAT_NODE_MAP)
        return std::nullopt;
    const auto* list = command->result.u.list;
    for (int i = 0; i < list->num; ++i) {
        if (std::string_view(list->keys[i]) == "playlist_entry_id"
            && list->values[i].format == MPV_FORMAT_INT64)
            return list->values[i].u.int64;
    }
    return std::nullopt;
}

} // namespace

void MpvPlayer::wakeUp(void* opaque)
{
    auto* self = static_cast<MpvPlayer*>(opaque);
    if (self->wakeUpQueued.test_and_set())
        return;
    QMetaObject::invokeMethod(
        self, [self] { self->drainEvents(); }, Qt::QueuedConnection);
}

void MpvPlayer::drainEvents()
{
    wakeUpQueued.clear();
    const QPointer<MpvPlayer> alive(this);
    while (alive) {
        const mpv_event* event = mpv_wait_event(mpv.get(), 0);
        if (event->event_id == MPV_EVENT_NONE)
            return;
        handle(*event);
    }
}

void MpvPlayer::handle(const mpv_event& event)
{
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
    case MPV_EVENT_GET_PROPERTY_REPLY:
        answered(event);
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        propertyChanged(event);
        break;
    case MPV_EVENT_START_FILE:
    case MPV_EVENT_END_FILE:
    case MPV_EVENT_SEEK:
    case MPV_EVENT_PLAYBACK_RESTART:
    case MPV_EVENT_VIDEO_RECONFIG:
        handleFileEvent(event);
        break;
    case MPV_EVENT_HOOK:
        holdOpening(static_cast<const mpv_event_hook*>(event.data)->id);
        break;
    default:
        break;
    }
}

void MpvPlayer::handleFileEvent(const mpv_event& event)
{
    if (event.event_id == MPV_EVENT_START_FILE) {
        if (file.entry == static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id)
            beginFile();
        return;
    }
    if (!file.begun)
        return;
    if (event.event_id == MPV_EVENT_END_FILE) {
        const auto& end = *static_cast<const mpv_event_end_file*>(event.data);
        if (file.entry == end.playlist_entry_id && !fellWithSecond())
            fail(readFailureOr(mpvFailureReason(end.error)));
    } else if (event.event_id == MPV_EVENT_SEEK) {
        if (file.stage == SeekStage::accepted)
            file.stage = SeekStage::begun;
    } else if (event.event_id == MPV_EVENT_PLAYBACK_RESTART) {
        playbackRestarted();
    } else if (file.errand == MpvErrand::camera && file.stage == SeekStage::accepted && !file.errandSeeks) {
        askForPicture();
    }
}

void MpvPlayer::beginFile()
{
    file.begun = true;
    // Observed anew for every file: a value of the file before can't be taken for one of this file.
    mpv_observe_property(mpv.get(), fileRequest, "time-pos", MPV_FORMAT_DOUBLE);
    mpv_observe_property(mpv.get(), fileRequest, "duration", MPV_FORMAT_DOUBLE);
    watchEnd();
}

void MpvPlayer::watchEnd()
{
    mpv_unobserve_property(mpv.get(), endRequest);
    endRequest = ++lastRequest;
    file.isEndIgnored = false;
    mpv_observe_property(mpv.get(), endRequest, "eof-reached", MPV_FORMAT_FLAG);
}

void MpvPlayer::ignoreEnd()
{
    mpv_unobserve_property(mpv.get(), endRequest);
    endRequest = ++lastRequest;
    file.isEndIgnored = true;
}

void MpvPlayer::propertyChanged(const mpv_event& event)
{
    const auto& property = *static_cast<const mpv_event_property*>(event.data);
    if (event.reply_userdata == endRequest) {
        if (propertyFlag(property))
            reachEnd();
    } else if (event.reply_userdata == seekRequest) {
        if (propertyFlag(property))
            stepMade();
    } else if (event.reply_userdata == fileRequest && property.format == MPV_FORMAT_DOUBLE) {
        if (std::string_view(property.name) == "time-pos")
            timeChanged(propertyNumber(property));
        else
            takeAnswer(property);
    }
}

void MpvPlayer::answered(const mpv_event& event)
{
    const bool isReply = event.event_id == MPV_EVENT_COMMAND_REPLY;
    if (event.reply_userdata == fileRequest && isReply) {
        if (event.error < 0)
            fail(mpvFailureReason(event.error));
        else
            file.entry = entryOf(event);
    } else if (event.reply_userdata == fileRequest) {
        if (event.error >= 0)
            takeAnswer(*static_cast<const mpv_event_property*>(event.data));
        if (--*file.missingAnswers == 0)
            finishOpening();
    } else if (event.reply_userdata == secondRequest) {
        secondAnswered(event);
    } else if (event.reply_userdata == heldRequest) {
        letOpen();
    } else if (event.reply_userdata == seekRequest) {
        errandAnswered(event);
    }
}

void MpvPlayer::takeAnswer(const mpv_event_property& property)
{
    const std::string_view name = property.name;
    if (name == "duration") {
        file.duration = plausibleSeconds(propertyNumber(property));
        current->setLength(file.duration > 0 ? MediaTime::timeWithInt(std::llround(file.duration * 1000))
                                             : MediaTime::nullTime());
    } else if (name == "time-pos") {
        file.time = plausibleSeconds(propertyNumber(property));
        file.isTimeKnown = true;
    } else if (name == "video-params/dw") {
        file.size.width = propertyNumber(property);
    } else if (name == "video-params/dh") {
        file.size.height = propertyNumber(property);
    } else if (name == "audio-params/samplerate") {
        file.hasSound = propertyNumber(property) > 0;
    } else if (name == "track-list" && property.format == MPV_FORMAT_NODE) {
        file.audioTracks = audioTracksOf(*static_cast<const mpv_node*>(property.data));
    }
}

void MpvPlayer::askBeforeOpen()
{
    if (file.missingAnswers)
        return;
    file.missingAnswers = 0;
    for (const auto& [name, format] : questions) {
        if (mpv_get_property_async(mpv.get(), fileRequest, name, format) >= 0)
            ++*file.missingAnswers;
    }
}

void MpvPlayer::finishOpening()
{
    if (file.size.width <= 0 && fellWithSecond())
        return;
    const bool isTooLarge =
        file.size.width > largestPicture.width || file.size.height > largestPicture.height;
    if (isTooLarge || (file.size.width <= 0 && !file.hasSound)) {
        fail(mpvFailureReason(MPV_ERROR_NOTHING_TO_PLAY));
        return;
    }
    phase = Phase::open;
    watchEnd();
    secondJoins();
    next();
    if (reportState() && isPlaying())
        reportTime();
}

void MpvPlayer::seekArrived()
{
    file.stage = SeekStage::none;
    if (file.targetIsNewer) {
        next();
        return;
    }
    file.ended = false;
    file.breaksOff = false;
    const bool toEnd = file.target && file.leadsToEnd(*file.target);
    file.target.reset();
    watchEnd();
    if (toEnd)
        restAtEnd();
    if (reportTime() && (!toEnd || reportState()))
        next();
}

void MpvPlayer::reachEnd()
{
    if (phase == Phase::opening) {
        askBeforeOpen();
        return;
    }
    // An end seen during a pending seek is outdated; it is reported again if it still holds after the seek.
    if (!isOpen() || file.stage != SeekStage::none || file.ended)
        return;
    if (endsWithSecond())
        return;
    // A read failure is no end of the recording.
    if (const std::string why = readFailureOr({}); !why.empty()) {
        fail(why);
        return;
    }
    restAtEnd();
    reportState();
}

std::string MpvPlayer::readFailureOr(const std::string& otherwise) const
{
    const std::string why = streams.failure(MpvRole::first);
    return why.empty() ? otherwise : why;
}

void MpvPlayer::restAtEnd()
{
    // Sound and picture may differ by this much.
    constexpr double tolerance = 2;
    file.ended = true;
    file.breaksOff = file.isTimeKnown && file.time < file.duration - tolerance;
    paused = true;
    setMpvFlag(mpv.get(), "pause", true);
    // Reported also when the file was paused before.
    reported.reset();
}

void MpvPlayer::timeChanged(double seconds)
{
    // A step tells by itself where it leads.
    if (file.isTimeHeld || file.isAtLastPicture
        || (file.errand == MpvErrand::step && file.stage != SeekStage::none))
        return;
    file.time = plausibleSeconds(seconds);
    file.isTimeKnown = true;
    if (cameras.end)
        next();
    const int64_t now = clock.elapsed();
    if (!isPlaying() || file.stage != SeekStage::none || now < nextTimeReport)
        return;
    nextTimeReport = std::max(nextTimeReport + timeReportInterval, now);
    reportTime();
}

void MpvPlayer::post(std::function<void()> action)
{
    const auto runIfCurrent = [this, request = fileRequest, action = std::move(action)] {
        if (request == fileRequest)
            action();
    };
    QMetaObject::invokeMethod(this, runIfCurrent, Qt::QueuedConnection);
}

void MpvPlayer::postState()
{
    post([this] { reportState(); });
}

void MpvPlayer::fail(const std::string& why)
{
    close();
    phase = Phase::failed;
    if (reportState())
        report([this, &why](MediaPlayerDelegate& delegate) { delegate.mediaPlayerFailed(*this, why); });
}

bool MpvPlayer::reportState()
{
    if (reported == state())
        return true;
    reported = state();
    return report([this](MediaPlayerDelegate& delegate) { delegate.mediaPlayerStateChanged(*this); });
}

bool MpvPlayer::reportTime()
{
    return report([this](MediaPlayerDelegate& delegate) { delegate.mediaPlayerTimeChanged(*this); });
}

bool MpvPlayer::report(const std::function<void(MediaPlayerDelegate&)>& call)
{
    const QPointer<MpvPlayer> alive(this);
    const auto request = fileRequest;
    if (listener)
        call(*listener);
    return alive && request == fileRequest;
}

} // namespace platform
