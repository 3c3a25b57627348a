#include "app/player/Cameras.h"

#include "common/Log.h"
#include "media/MediaDirection.h"
#include "platform/Texts.h"

#include <utility>

using platform::SecondFile;

namespace {

const char* textKeyOf(CameraLook look)
{
    switch (look) {
    case CameraLook::front:
        return "camera.front";
    case CameraLook::rear:
        return "camera.rear";
    case CameraLook::frontWithRear:
        return "camera.front_with_rear";
    case CameraLook::rearWithFront:
        return "camera.rear_with_front";
    case CameraLook::sideBySide:
        break;
    }
    return "camera.side_by_side";
}

} // namespace

Cameras::Cameras(platform::MediaPlayer& shownBy, Told listener)
    : player(shownBy),
      told(std::move(listener))
{
}

void Cameras::begin(const std::string& path, const std::optional<std::string>& other, bool goesOn)
{
    isRearFirst = isRearMedia(path);
    isNamed = isRearFirst || isFrontMedia(path);
    if (!goesOn)
        wanted = known = isRearFirst ? CameraLook::rear : CameraLook::front;
    if (other)
        player.setSecondMedia(platform::Media::mediaWithPath(*other));
    const auto view = cameraViewOf(wanted, isRearFirst);
    if (player.cameraView() != view)
        player.setCameraView(view, platform::CameraChoice::nextFilesToo);
}

CameraLook Cameras::shown() const
{
    return cameraLookOf(player.shownCameraView(), isRearFirst);
}

bool Cameras::canChange() const
{
    const auto second = player.secondFile();
    return second == SecondFile::opening || second == SecondFile::ready;
}

bool Cameras::isPossible(CameraLook look) const
{
    return player.secondFile() == SecondFile::opening || player.canShow(cameraViewOf(look, isRearFirst));
}

QString Cameras::shownText() const
{
    return platform::localized(textKeyOf(shown()));
}

const char* Cameras::whyNot() const
{
    switch (player.secondFile()) {
    case SecondFile::ended:
        return isRearFirst ? "camera.front_ends" : "camera.rear_ends";
    case SecondFile::failed:
        return isRearFirst ? "camera.front_fails" : "camera.rear_fails";
    default:
        return "camera.none";
    }
}

void Cameras::choose(CameraLook look)
{
    wanted = look;
    player.setCameraView(cameraViewOf(look, isRearFirst), platform::CameraChoice::nextFilesToo);
}

/// From what was chosen last, which may not be on screen yet, so that quick changes add up.
void Cameras::change(int direction)
{
    if (!canChange()) {
        told.remark(platform::localized(whyNot()));
        return;
    }
    CameraLook next = nextCameraLook(wanted, direction);
    while (next != wanted && !isPossible(next))
        next = nextCameraLook(next, direction);
    if (next != wanted)
        choose(next);
}

void Cameras::swap()
{
    if (wanted == CameraLook::frontWithRear || wanted == CameraLook::rearWithFront)
        choose(swappedCameraLook(wanted));
}

/// What was chosen is not on screen yet.
bool Cameras::arrives() const
{
    return shown() != wanted && isPossible(wanted);
}

void Cameras::reported()
{
    told.changed();
    if (!isNamed || arrives() || std::exchange(known, shown()) == shown())
        return;
    const auto second = player.secondFile();
    const bool isLost = second == SecondFile::ended || second == SecondFile::failed;
    told.remark(isLost ? platform::localized(whyNot()) : shownText());
}

void Cameras::failed(const std::string& why)
{
    const auto second = player.secondMedia();
    logFormat("the other camera's %s: %s", second && second->url() ? second->url()->c_str() : "recording",
        why.c_str());
    told.remark(platform::localized(whyNot()));
}
