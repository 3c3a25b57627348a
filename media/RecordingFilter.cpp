#include "media/RecordingFilter.h"

#include "common/Text.h"
#include "media/Drives.h"
#include "media/MediaDirection.h"

bool RecordingFilter::matches(const ZVKMedia& media, bool hasImpact) const
{
    if ((kind && *kind != media.mediaDivision()) || (camera && *camera != mediaDirection(media.path()))
        || (withImpact && !hasImpact))
        return false;
    if (day) {
        const auto start = cameraTimeOf(media);
        if (!start || std::chrono::floor<std::chrono::days>(*start) != *day)
            return false;
    }
    return text.empty() || asciiLower(media.fileName()).find(asciiLower(text)) != std::string::npos;
}
