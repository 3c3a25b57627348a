#include "common/Text.h"
#include "tools/samplecard/CardMaker.h"

#include <charconv>
#include <csignal>
#include <cstdio>
#include <string_view>

namespace {

std::atomic<bool> stopped = false;
static_assert(std::atomic<bool>::is_always_lock_free);

void stop(int)
{
    stopped = true;
}

int usage()
{
    std::fprintf(stderr,
        "usage: samplecard [--seconds N] [--force] FOLDER\n"
        "Makes a camera's card with recordings in FOLDER.\n"
        "  --seconds N  length of each recording, 1 to %d (%d when not given)\n"
        "  --force      make the card anew even when it is there\n",
        samplecard::longestSeconds, samplecard::defaultSeconds);
    return 2;
}

bool readSeconds(std::string_view text, int& seconds)
{
    const auto read = std::from_chars(text.data(), text.data() + text.size(), seconds);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() && seconds >= 1
        && seconds <= samplecard::longestSeconds;
}

} // namespace

int main(int count, char** values)
{
    samplecard::CardOptions options;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = values[i];
        if (argument == "--force")
            options.force = true;
        else if (argument == "--seconds" && i + 1 < count && readSeconds(values[i + 1], options.seconds))
            ++i;
        else if (argument.starts_with("-") || !options.folder.empty() || argument.empty())
            return usage();
        else
            options.folder = argument;
    }
    if (options.folder.empty())
        return usage();
    std::signal(SIGINT, stop);
    std::signal(SIGTERM, stop);
    std::signal(SIGPIPE, SIG_IGN);
    const auto tell = [](const std::string& line) {
        std::printf("%s\n", visibleText(line).c_str());
        std::fflush(stdout);
    };
    const auto trouble = samplecard::makeCard(options, stopped, tell);
    if (!trouble)
        return 0;
    std::fprintf(stderr, "samplecard: %s\n", visibleText(*trouble).c_str());
    return 1;
}
