#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/Drive.h"

namespace samplecard {

/// The bonnet and the lower edge of the windscreen, as the front camera sees them.
void drawBonnet(Canvas& frame, float brightness);

/// The rear window's frame with its heating wires, as the rear camera sees it.
void drawRearWindow(Canvas& frame, float brightness);

/// The line a recording carries: local date and time, the speed of the fix, which camera.
void drawCaption(Canvas& frame, const Fix& fix, bool rear);

} // namespace samplecard
