#include "cli/Program.h"
#include "platform/udisks/SystemVolumes.h"

#include <csignal>
#include <iostream>
#include <vector>

int main(int argc, char** argv)
{
    // A closed pipe makes the write fail, which is reported like a full disk.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);
    cli::VolumesSource volumes;
#ifdef ZAVIK_KNOWS_VOLUMES
    volumes = platform::systemVolumes;
#endif

    const std::vector<std::string_view> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    return static_cast<int>(cli::run(words, {std::cout, std::cerr}, volumes));
}
