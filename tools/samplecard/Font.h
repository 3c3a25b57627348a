#pragma once

#include "tools/samplecard/Canvas.h"

#include <string_view>

namespace samplecard {

/// Draws text in a 5 x 7 dot letter with a dark outline, `scale` pixels per dot, from its upper left corner.
/// Known are the capitals, digits, "kmhx" and some punctuation; anything else leaves a gap.
void drawText(Canvas& canvas, std::string_view text, int x, int y, int scale, Rgb colour);

/// The width of the text in pixels.
int textWidth(std::string_view text, int scale);

} // namespace samplecard
