#include "cli/commands/Generated.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

bool write(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    return bool(std::ofstream(path) << text << std::flush);
}

bool describe(const std::filesystem::path& folder, const cli::Program& program)
{
    const std::string name(program.name);
    const std::string section = std::to_string(program.section);
    return write(folder / "man" / (name + '.' + section), cli::manPage(program, cli::version))
        && (!program.isRunByHand
            || (write(folder / "bash" / name, cli::bashCompletion(program))
                && write(folder / "zsh" / ('_' + name), cli::zshCompletion(program))
                && write(folder / "fish" / (name + ".fish"), cli::fishCompletion(program))));
}

} // namespace

/// Writes the manual pages and completions of all programs; part of the build.
int main(int count, char** words)
try {
    if (count != 2) {
        std::fputs("usage: describe FOLDER\n", stderr);
        return 2;
    }
    for (const cli::Program& program : cli::programs()) {
        if (!describe(words[1], program)) {
            std::fprintf(stderr, "describe: cannot write into %s\n", words[1]);
            return 1;
        }
    }
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "describe: %s\n", error.what());
    return 1;
}
