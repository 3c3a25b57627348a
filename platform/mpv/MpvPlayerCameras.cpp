#include "platform/mpv/MpvPlayerImpl.h"

#include <limits>
#include <mpv/client.h>
#include <utility>

namespace platform {

namespace {

constexpr const char* noPicture = "It holds no picture in a form that cameras record";
/// How long the opening of the first file waits for the second, so that it begins with the view chosen.
constexpr int64_t openingPatience = 300;
constexpr int64_t picturePatience = 3000;
constexpr std::chrono::seconds cardPatience(3);

} // namespace

void MpvPlayer::setSecondMedia(std::shared_ptr<Media> media)
{
    if (cameras.isAsked) {
        letOpen();
        streams.giveUp(MpvRole::second);
        if (cameras.tracks.second > 0)
            cameras.tracks.leftOver.push_back(std::exchange(cameras.tracks.second, 0));
        cameras.isOutdated = cameras.applied != CameraView::first;
    }
    secondRequest = ++lastRequest;
    cameras.media = std::move(media);
    cameras.second = cameras.media && cameras.media->url() ? SecondFile::opening : SecondFile::none;
    cameras.isAsked = cameras.isOver = cameras.isToldOf = false;
    cameras.end.reset();
    if (isOpen())
        secondJoins();
    next();
}

SecondFile MpvPlayer::secondFile() const
{
    return cameras.isOver && cameras.second == SecondFile::ready ? SecondFile::ended : cameras.second;
}

void MpvPlayer::setCameraView(CameraView chosen, CameraChoice choice)
{
    cameras.wanted = chosen;
    cameras.isKept = choice == CameraChoice::nextFilesToo;
    next();
}

std::optional<PictureArea> MpvPlayer::smallPicture() const
{
    return isOpen() ? smallPictureOf(cameras.shown, cameras.tracks) : std::nullopt;
}

/// mpv waits: the file is open, its tracks are known, and none is chosen yet.
void MpvPlayer::holdOpening(uint64_t hook)
{
    letOpen();
    heldOpening = hook;
    heldSince = clock.elapsed();
    const bool isSecondDue = phase == Phase::opening && file.begun && !cameras.isAsked
        && cameras.second == SecondFile::opening && cameras.wanted != CameraView::first;
    if (isSecondDue)
        addSecond();
    else
        letOpen();
}

void MpvPlayer::letOpen()
{
    if (heldOpening != 0)
        mpv_hook_continue(mpv.get(), std::exchange(heldOpening, 0));
}

void MpvPlayer::addSecond()
{
    cameras.isAsked = true;
    cameras.address = streams.announce(*cameras.media->url(), MpvRole::second);
    secondRequest = ++lastRequest;
    sendMpvCommand(mpv.get(), secondRequest, {"video-add", cameras.address.c_str(), "auto"});
    watchTimer.start();
}

/// The first is open.
void MpvPlayer::secondJoins()
{
    cameras.shown = cameras.applied;
    noteSecondEnd();
    if (cameras.shown == CameraView::second && file.duration > 0)
        sendMpvCommand(mpv.get(), 0, {"set", "end", std::to_string(file.duration).c_str()});
    if (cameras.second == SecondFile::opening && !cameras.isAsked)
        addSecond();
    else if (cameras.second != SecondFile::none)
        reportCameras();
}

void MpvPlayer::secondAnswered(const mpv_event& event)
{
    if (event.error < 0) {
        const std::string why = streams.failure(MpvRole::second);
        secondFailed(why.empty() ? noPicture : why);
    } else if (event.event_id == MPV_EVENT_COMMAND_REPLY) {
        mpv_get_property_async(mpv.get(), secondRequest, "track-list", MPV_FORMAT_NODE);
    } else {
        const auto& property = *static_cast<const mpv_event_property*>(event.data);
        secondReady(*static_cast<const mpv_node*>(property.data));
    }
}

void MpvPlayer::secondReady(const mpv_node& trackList)
{
    cameras.tracks = cameraTracksOf(trackList, cameras.address);
    if (cameras.tracks.second == 0) {
        secondFailed(noPicture);
        return;
    }
    cameras.second = SecondFile::ready;
    noteSecondEnd();
    if (heldOpening != 0)
        applyViewBeforeOpening();
    else
        next();
    reportCameras();
}

void MpvPlayer::applyViewBeforeOpening()
{
    cameras.applied = cameras.possible();
    heldRequest = ++lastRequest;
    const std::string graph = cameraGraph(cameras.applied, cameras.tracks);
    if (!graph.empty())
        sendMpvCommand(mpv.get(), heldRequest, {"set", "lavfi-complex", graph.c_str()});
    else if (cameras.applied == CameraView::second)
        sendMpvCommand(mpv.get(), heldRequest, {"set", "vid", std::to_string(cameras.tracks.second).c_str()});
    else
        letOpen();
}

/// What mpv cannot open with the second file it may without.
bool MpvPlayer::fellWithSecond()
{
    if (phase != Phase::opening || cameras.applied == CameraView::first)
        return false;
    const auto target = file.target;
    const bool wasPaused = paused;
    load();
    if (phase != Phase::opening)
        return true;
    file.target = target;
    file.targetIsNewer = target.has_value();
    if (wasPaused)
        setPaused(true);
    reported = state();
    cameras.isAsked = true;
    cameras.second = SecondFile::failed;
    tellOfSecond(noPicture);
    return true;
}

/// A second file that ends a moment before the first is not worth a change of the view.
void MpvPlayer::noteSecondEnd()
{
    constexpr double tolerance = 1.5;
    const double seconds = streams.pictureSeconds(MpvRole::second);
    if (cameras.second == SecondFile::ready && seconds > 0 && seconds < file.duration - tolerance)
        cameras.end = seconds;
}

void MpvPlayer::noteWhetherSecondIsOver()
{
    const bool isOver = cameras.end && file.currentTime() >= *cameras.end;
    if (isOver == cameras.isOver)
        return;
    cameras.isOver = isOver;
    if (isOver)
        tellOfSecond("It ends before the first camera's");
    reportCameras();
}

/// mpv is at an end while the second file alone is on screen: is it the second's only?
bool MpvPlayer::endsWithSecond()
{
    constexpr double tolerance = 0.3;
    if (cameras.applied != CameraView::second || file.duration <= 0 || file.time >= file.duration - tolerance)
        return false;
    if (const std::string why = streams.failure(MpvRole::second); !why.empty()) {
        secondFailed(why);
        return true;
    }
    cameras.end = file.time;
    next();
    setMpvFlag(mpv.get(), "pause", paused);
    return true;
}

void MpvPlayer::secondFailed(const std::string& why)
{
    if (cameras.second == SecondFile::failed)
        return;
    cameras.second = SecondFile::failed;
    cameras.end.reset();
    secondRequest = ++lastRequest;
    streams.giveUp(MpvRole::second);
    letOpen();
    if (cameras.tracks.second > 0)
        cameras.tracks.leftOver.push_back(std::exchange(cameras.tracks.second, 0));
    tellOfSecond(why);
    reportCameras();
    // A switch to it that waits for its picture has no end.
    if (file.errand == MpvErrand::camera && !file.errandSeeks)
        file.stage = SeekStage::none;
    next();
    // Where it ended, mpv has paused.
    if (isOpen() && !file.ended)
        setMpvFlag(mpv.get(), "pause", paused);
}

/// Meanwhile mpv ran ahead without pictures, perhaps to the end: the first goes on where it was left.
void MpvPlayer::secondStaysDark()
{
    if (!file.target) {
        file.target = SeekTarget{SeekTarget::Unit::seconds, cameras.since};
        file.targetIsNewer = true;
    }
    secondFailed(noPicture);
}

void MpvPlayer::tellOfSecond(const std::string& why)
{
    if (std::exchange(cameras.isToldOf, true))
        return;
    post([this, why] {
        report([&](MediaPlayerDelegate& delegate) { delegate.mediaPlayerSecondFailed(*this, why); });
    });
}

void MpvPlayer::reportCameras()
{
    post([this] {
        report([this](MediaPlayerDelegate& delegate) { delegate.mediaPlayerCamerasChanged(*this); });
    });
}

void MpvPlayer::watchSecond()
{
    using namespace std::chrono_literals;
    if (heldOpening != 0 && clock.elapsed() > heldSince + openingPatience)
        letOpen();
    const bool firstWaits = streams.waited(MpvRole::first) > 0ms;
    const bool isInUse = cameras.isAsked && cameras.second != SecondFile::failed;
    const std::string why = isInUse ? streams.failure(MpvRole::second) : std::string();
    if (!why.empty())
        secondFailed(why);
    else if (isInUse && !firstWaits && streams.waited(MpvRole::second) > cardPatience)
        secondFailed("The card doesn't answer");
    watchPicture();
}

/// mpv does not always tell of the first picture of another track.
void MpvPlayer::watchPicture()
{
    using namespace std::chrono_literals;
    constexpr int64_t seekPatience = 1000;
    if (file.errand != MpvErrand::camera || file.stage != SeekStage::accepted)
        return;
    const bool isCardSlow = streams.waited(MpvRole::first) > 0ms || streams.waited(MpvRole::second) > 0ms;
    if (file.errandSeeks && (isCardSlow || clock.elapsed() < errandSince + seekPatience))
        return;
    file.errandSeeks = false;
    const bool isOverdue = clock.elapsed() > errandSince + picturePatience;
    if (!isOverdue || isCardSlow)
        askForPicture();
    else if (cameras.applied == CameraView::second)
        secondStaysDark();
    else
        errandArrived();
}

/// With a graph the option "vid" keeps its number and does nothing when set to it again.
void MpvPlayer::sendView(CameraView due)
{
    const bool hadGraph = isComposite(cameras.applied);
    const std::string graph = cameraGraph(due, cameras.tracks);
    const bool isAnew = std::exchange(cameras.isOutdated, false);
    const bool hasEnd = due == CameraView::second && file.duration > 0;
    const int track = due == CameraView::second ? cameras.tracks.second : std::max(cameras.tracks.first, 1);
    cameras.applied = due;
    // The last picture lies before the end, and mpv would look for one after it.
    const bool isAtEnd = file.ended || file.isAtLastPicture;
    const bool hasGraph = hadGraph && !std::exchange(cameras.isGraphGone, false);
    beginErrand(MpvErrand::camera, hasGraph || !graph.empty() || isAtEnd);
    cameras.since = file.currentTime();
    file.isTimeHeld = paused && !file.ended;
    const uint64_t request = isAtEnd ? 0 : seekRequest;
    sendMpvCommand(mpv.get(), 0, {"set", "end", hasEnd ? std::to_string(file.duration).c_str() : "none"});
    if (hadGraph && (graph.empty() || isAnew))
        sendMpvCommand(mpv.get(), 0, {"set", "lavfi-complex", ""});
    if (graph.empty() && (hadGraph || isAnew))
        sendMpvCommand(mpv.get(), 0, {"set", "vid", "no"});
    if (graph.empty())
        sendMpvCommand(mpv.get(), request, {"set", "vid", std::to_string(track).c_str()});
    else
        sendMpvCommand(mpv.get(), request, {"set", "lavfi-complex", graph.c_str()});
    if (isAtEnd)
        sendMpvCommand(mpv.get(), seekRequest,
            {"seek", std::to_string(file.ended ? file.duration : file.time).c_str(), "absolute+exact"});
}

void MpvPlayer::askForPicture()
{
    cameras.size = {};
    cameras.hasTrack = false;
    askOfErrand({{"video-params/dw", MPV_FORMAT_INT64}, {"video-params/dh", MPV_FORMAT_INT64},
        {"current-tracks/video/id", MPV_FORMAT_INT64}, {"time-pos", MPV_FORMAT_DOUBLE}});
}

void MpvPlayer::cameraArrived()
{
    const bool hasPicture = cameras.size.width > 0;
    constexpr double lastPicture = 0.2;
    // There the sound may go on without pictures.
    const double end = file.duration > 0 ? file.duration - lastPicture : std::numeric_limits<double>::max();
    const bool isAtEnd = file.currentTime() > end;
    const bool isOverdue = isAtEnd || clock.elapsed() > errandSince + picturePatience;
    if (!hasPicture && !file.errandSeeks && cameras.hasTrack && !isOverdue) {
        // A track was chosen and its first picture is on the way.
        file.stage = SeekStage::accepted;
        return;
    }
    file.stage = SeekStage::none;
    if (!hasPicture && cameras.applied != CameraView::first && cameras.since <= end) {
        // mpv has dropped a graph that it could not make.
        cameras.isGraphGone = isComposite(cameras.applied) && !cameras.hasTrack;
        secondStaysDark();
        return;
    }
    if (hasPicture)
        file.size = cameras.size;
    cameras.shown = cameras.applied;
    if (!file.isEndIgnored)
        watchEnd();
    reportCameras();
    if (reportTime())
        next();
}

void MpvPlayer::outputLost()
{
    if (isOpen()) {
        cameras.isOutdated = true;
        next();
    } else {
        sendMpvCommand(mpv.get(), 0, {"set", "vid", "1"});
    }
}

/// Of a graph or a choice of track that has been replaced meanwhile.
void MpvPlayer::removeLeftOver()
{
    for (const int track : std::exchange(cameras.tracks.leftOver, {}))
        sendMpvCommand(mpv.get(), 0, {"video-remove", std::to_string(track).c_str()});
}

} // namespace platform
