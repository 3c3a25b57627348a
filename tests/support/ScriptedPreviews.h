#pragma once

#include "platform/Previews.h"

#include <cmath>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Pictures without files: what is asked for is written down.
class ScriptedPreviews final : public platform::Previews {
public:
    struct Log {
        /// "NAME SECONDS", "close"
        std::vector<std::string> calls;
        /// Names of files that have no picture.
        std::set<std::string> unreadable;
        /// Called in the middle of a read, as if it took its time.
        std::function<void()> meanwhile;
        int width = 0; // of the latest request
        double age = 0; // of the pictures, in seconds
    };

    explicit ScriptedPreviews(Log& written)
        : log(written)
    {
    }

    /// Each second has its own lightness.
    std::optional<platform::PreviewPicture> pictureAt(
        const std::string& path, double seconds, int width, std::stop_token stop) override
    {
        const std::string name = path.substr(path.rfind('/') + 1);
        log.calls.push_back(name + " " + std::to_string(std::lround(seconds * 10) / 10.0).substr(0, 4));
        log.width = width;
        const bool takesTime = log.meanwhile != nullptr;
        if (takesTime)
            std::exchange(log.meanwhile, nullptr)();
        if (log.unreadable.contains(name) || (takesTime && stop.stop_requested()))
            return {};
        const int height = width * 9 / 16;
        return platform::PreviewPicture{width, height,
            std::vector<uint8_t>(size_t(width) * size_t(height) * 3, uint8_t(seconds * 2)),
            seconds - log.age};
    }
    void close() override { log.calls.push_back("close"); }

private:
    Log& log;
};
