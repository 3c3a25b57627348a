#pragma once

#include "platform/MediaPlayer.h"

/// What the user sees of the two cameras: one alone, one large with the other in the corner, or both, the
/// front camera on the left.
enum class CameraLook { front, rear, frontWithRear, rearWithFront, sideBySide };

/// The player's view for it; `isRearFirst`: the player's first file is the rear camera's.
platform::CameraView cameraViewOf(CameraLook look, bool isRearFirst);
CameraLook cameraLookOf(platform::CameraView view, bool isRearFirst);
/// The look that follows (1) or comes before (-1) when the user walks through them: front, rear, both with
/// the front camera large, both side by side, and again.
CameraLook nextCameraLook(CameraLook look, int direction);
/// The same with the cameras in each other's place.
CameraLook swappedCameraLook(CameraLook look);
