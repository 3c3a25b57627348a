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

size_t ScriptedPlayer::countOf(const std::string& call) const
{
    return size_t(std::ranges::count(calls, call));
}

void ScriptedPlayer::setMedia(std::shared_ptr<platform::Media> media)
{
    current = std::move(media);
    now = platform::PlayerState::stopped;
    fraction = 0;
    const std::string name =
        current ? std::filesystem::path(current->url().value_or("")).filename().string() : "none";
    calls.push_back("setMedia " + name);
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
