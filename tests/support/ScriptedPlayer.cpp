#include "tests/support/ScriptedPlayer.h"

#include "common/Log.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

void ScriptedPlayer::reportState(platform::PlayerState state)
{
    now = state;
    if (current && state == platform::PlayerState::playing)
        current->setLength(platform::MediaTime::timeWithInt(lengthMs));
    if (delegate)
        delegate->mediaPlayerStateChanged(*this);
}

void ScriptedPlayer::reportTime(float position)
{
    fraction = position;
    if (delegate)
        delegate->mediaPlayerTimeChanged(*this);
}

void ScriptedPlayer::reportFailure(const std::string& why)
{
    now = platform::PlayerState::error;
    if (delegate)
        delegate->mediaPlayerFailed(*this, why);
}

void ScriptedPlayer::reportEnd()
{
    fraction = 1;
    reportState(platform::PlayerState::paused);
}

void ScriptedPlayer::reportSecond(platform::SecondFile state, const std::string& why)
{
    secondState = state;
    if (!delegate)
        return;
    delegate->mediaPlayerCamerasChanged(*this);
    if (!why.empty())
        delegate->mediaPlayerSecondFailed(*this, why);
}

size_t ScriptedPlayer::countOf(const std::string& call) const
{
    return size_t(std::ranges::count(calls, call));
}

namespace {

std::string nameOf(const std::shared_ptr<platform::Media>& media)
{
    return media ? std::filesystem::path(media->url().value_or("")).filename().string() : "none";
}

} // namespace

void ScriptedPlayer::setMedia(std::shared_ptr<platform::Media> media)
{
    current = std::move(media);
    second.reset();
    secondState = platform::SecondFile::none;
    if (!keepsView)
        view = platform::CameraView::first;
    now = platform::PlayerState::stopped;
    fraction = 0;
    calls.push_back("setMedia " + nameOf(current));
}

void ScriptedPlayer::setSecondMedia(std::shared_ptr<platform::Media> media)
{
    second = std::move(media);
    secondState = second ? platform::SecondFile::opening : platform::SecondFile::none;
    calls.push_back("setSecondMedia " + nameOf(second));
}

void ScriptedPlayer::setCameraView(platform::CameraView wanted, platform::CameraChoice choice)
{
    view = wanted;
    keepsView = choice == platform::CameraChoice::nextFilesToo;
    calls.push_back("setCameraView " + std::to_string(int(wanted)));
}

platform::CameraView ScriptedPlayer::shownCameraView() const
{
    return canShow(view) ? view : platform::CameraView::first;
}

bool ScriptedPlayer::canShow(platform::CameraView wanted) const
{
    return wanted == platform::CameraView::first || secondState == platform::SecondFile::ready;
}

std::optional<platform::PictureArea> ScriptedPlayer::smallPicture() const
{
    const auto shown = shownCameraView();
    if (shown != platform::CameraView::pictureInPicture
        && shown != platform::CameraView::pictureInPictureSwapped)
        return std::nullopt;
    return platform::PictureArea{0.65, 0.02, 1.0 / 3, 1.0 / 3};
}

void ScriptedPlayer::stop()
{
    now = platform::PlayerState::stopped;
    fraction = 0;
    calls.push_back("stop");
}

void ScriptedPlayer::setPosition(float position)
{
    fraction = position;
    calls.push_back(formatted("setPosition %.2f", double(position)));
}

platform::MediaTime ScriptedPlayer::time() const
{
    return platform::MediaTime::timeWithInt(int64_t(double(fraction) * double(lengthMs)));
}

void ScriptedPlayer::setTime(platform::MediaTime time)
{
    calls.push_back("setTime " + std::to_string(time.intValue()));
    fraction = float(double(time.intValue()) / double(lengthMs));
}

platform::MediaTime ScriptedPlayer::remainingTime() const
{
    return platform::MediaTime::timeWithInt(-(lengthMs - time().intValue()));
}

bool ScriptedPlayer::saveVideoSnapshotAt(const std::string& path, int width, int height)
{
    calls.push_back(formatted("saveVideoSnapshotAt %dx%d", width, height));
    return picture
        && std::ofstream(path, std::ios::binary).write(picture->data(), std::ssize(*picture)).flush();
}
