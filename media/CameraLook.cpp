#include "media/CameraLook.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array walk = {
    CameraLook::front, CameraLook::rear, CameraLook::frontWithRear, CameraLook::sideBySide};

} // namespace

CameraLook swappedCameraLook(CameraLook look)
{
    switch (look) {
    case CameraLook::front:
        return CameraLook::rear;
    case CameraLook::rear:
        return CameraLook::front;
    case CameraLook::frontWithRear:
        return CameraLook::rearWithFront;
    case CameraLook::rearWithFront:
        return CameraLook::frontWithRear;
    case CameraLook::sideBySide:
        break;
    }
    return look;
}

platform::CameraView cameraViewOf(CameraLook look, bool isRearFirst)
{
    using platform::CameraView;
    switch (isRearFirst ? swappedCameraLook(look) : look) {
    case CameraLook::front:
        return CameraView::first;
    case CameraLook::rear:
        return CameraView::second;
    case CameraLook::frontWithRear:
        return CameraView::pictureInPicture;
    case CameraLook::rearWithFront:
        return CameraView::pictureInPictureSwapped;
    case CameraLook::sideBySide:
        break;
    }
    return isRearFirst ? CameraView::sideBySideSwapped : CameraView::sideBySide;
}

CameraLook cameraLookOf(platform::CameraView view, bool isRearFirst)
{
    for (const CameraLook look :
        {CameraLook::front, CameraLook::rear, CameraLook::frontWithRear, CameraLook::rearWithFront})
        if (cameraViewOf(look, isRearFirst) == view)
            return look;
    return CameraLook::sideBySide;
}

CameraLook nextCameraLook(CameraLook look, int direction)
{
    const CameraLook here = look == CameraLook::rearWithFront ? CameraLook::frontWithRear : look;
    const auto place = std::ranges::find(walk, here) - walk.begin();
    const auto count = std::ssize(walk);
    return walk[size_t((place + direction + count) % count)];
}
