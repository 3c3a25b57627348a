#pragma once

#include "media/ZVKMedia.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

/// Which recordings of a list are looked for; what is not set lets all pass.
struct RecordingFilter {
    std::optional<int32_t> kind; ///< `ZVKMedia::mediaDivision`
    std::optional<int32_t> camera; ///< `mediaDirection`
    std::optional<std::chrono::local_days> day; ///< of the start, as the camera's clock has it
    std::string text; ///< somewhere in the file name, in any letter case (ASCII)
    bool withImpact = false;

    bool isActive() const { return *this != RecordingFilter(); }
    bool operator==(const RecordingFilter&) const = default;

    /// `hasImpact`: an impact was found in the recording.
    bool matches(const ZVKMedia& media, bool hasImpact) const;
};
