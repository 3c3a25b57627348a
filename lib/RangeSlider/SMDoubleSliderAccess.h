#pragma once

/// Lets accessibility tools see every SMDoubleSlider as a slider whose value is the selected knob's and whose
/// value text names both ends. Any number of calls.
void installDoubleSliderAccess();
