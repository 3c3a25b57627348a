#include "app/CommandLine.h"
#include "cli/Program.h"
#include "fuzz/Require.h"
#include "fuzz/WellFormed.h"
#include "tests/support/TempFolder.h"

#include <sstream>

namespace {

/// The program works in an empty folder as long as this lives.
struct Visit {
    Visit() { std::filesystem::current_path(folder.path()); }
    ~Visit() { std::filesystem::current_path(before); }
    const std::filesystem::path before = std::filesystem::current_path();
    const TempFolder folder;
};

/// Nothing outside the folder.
bool staysHere(std::string_view word)
{
    return !word.starts_with('/') && word.find("..") == word.npos && word.find('\0') == word.npos;
}

/// As its last word; a "--json" elsewhere may be the value of an option.
bool asksForJson(const std::vector<std::string_view>& words)
{
    const auto ends = [](std::string_view word) {
        return word == "--" || word == "--help" || word == "-h" || word == "--version";
    };
    return words.size() > 1 && words.back() == "--json" && !words[words.size() - 2].starts_with('-')
        && std::ranges::none_of(words, ends);
}

} // namespace

/// Words, one a line, an empty line, then the contents of the file that the words name "f.drv", "f.bin" or
/// so.
void fuzz(std::string_view rest)
{
    std::vector<std::string_view> words;
    for (std::string_view word = nextPart(rest, '\n'); !word.empty(); word = nextPart(rest, '\n'))
        words.push_back(word);
    if (!std::ranges::all_of(words, staysHere))
        return;
    const Visit folder;
    for (const std::string_view word : words) {
        if (word.starts_with("f."))
            std::ofstream(std::string(word), std::ios::binary) << rest;
    }
    std::ostringstream out;
    std::ostringstream err;
    const cli::ExitCode code = cli::run(words, {out, err});
    require((code == cli::ExitCode::success) == err.view().empty());
    require(err.view().empty() || err.view().starts_with("zavikctl: ") || err.view().starts_with("usage"));
    require(isValidUtf8(err.view()));
    if (code == cli::ExitCode::success && asksForJson(words))
        require(isJson(out.view()));

    std::vector<std::string> copies(words.begin(), words.end());
    std::vector<const char*> arguments;
    for (const std::string& copy : copies)
        arguments.push_back(copy.c_str());
    const CommandLine line = CommandLine::parsed(arguments, "en");
    require(!line.exitCode || isValidUtf8(line.message));
    require(line.exitCode || line.language == "en" || line.language == "ko" || line.language == "auto");
}
