#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Which camera a media file comes from, by the last six characters of its path in any letter case:
/// 0 front ("_F.avi"), 1 rear ("_R.avi"), 2 unknown, also for a media without a location.
int32_t mediaDirection(std::optional<std::string_view> path);

bool isFrontMedia(std::optional<std::string_view> path);
bool isRearMedia(std::optional<std::string_view> path);
