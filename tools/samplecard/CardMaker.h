#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace samplecard {

inline constexpr int defaultSeconds = 20;
inline constexpr int longestSeconds = 30;

struct CardOptions {
    std::filesystem::path folder;
    int seconds = defaultSeconds; // length of a recording, 1 to longestSeconds
    bool force = false; // make it anew even when it is there
};

/// Makes the card in that folder; a whole card of the same making is left as it is. Returns why there is no
/// card; nothing in the folder has changed then. A folder that is not empty and was not made here is refused,
/// and so is, without `force`, one of ours that holds files of somebody else. `stopped` may be set at any
/// time, from a signal handler or another thread. The process must ignore SIGPIPE, so that an encoder that
/// ends early is reported.
std::optional<std::string> makeCard(const CardOptions& options, const std::atomic<bool>& stopped,
    const std::function<void(const std::string& line)>& tell);

} // namespace samplecard
