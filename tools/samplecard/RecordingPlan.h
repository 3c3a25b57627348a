#pragma once

#include "tools/samplecard/Drive.h"
#include "tools/samplecard/Scene.h"

#include <string>
#include <vector>

namespace samplecard {

/// One recording file of the card.
struct Recording {
    std::string folder; // in the card's root
    std::string name; // with its extension
    Camera camera = Camera::front;
    int start = 0; // second of the drive
    int seconds = 0;
};

/// The card's recordings: three continuous ones back to back, front and rear, the second with the tunnel;
/// one around the impact; one while the car is parked. Each is that many seconds long.
std::vector<Recording> planRecordings(const Drive& drive, int seconds);

} // namespace samplecard
