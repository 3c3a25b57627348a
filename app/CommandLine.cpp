#include "app/CommandLine.h"

#include "cli/commands/Parser.h"

#include <string_view>
#include <vector>

namespace {

CommandLine ending(const cli::Ending& said, const cli::Command& command)
{
    CommandLine result;
    result.exitCode = said.isHelp ? 0 : 2;
    result.message =
        said.isHelp ? said.text : "zavik: " + said.text + '\n' + usageLine(cli::zavik, command) + '\n';
    return result;
}

} // namespace

CommandLine CommandLine::parsed(std::span<const char* const> arguments, std::string language)
{
    const std::vector<std::string_view> words(arguments.begin(), arguments.end());
    const cli::Command& command = cli::zavik.commands.front();
    const auto read = cli::parsed(cli::zavik, command, words);
    if (const auto* said = std::get_if<cli::Ending>(&read))
        return ending(*said, command);
    const auto& given = std::get<cli::Arguments>(read);
    if (given.has("--file-panel") && words.size() > 1)
        return ending({false, "--file-panel stands alone"}, command);
    if (given.has("--version"))
        return ending({true, cli::versionLine(cli::zavik)}, command);
    if (given.has("--open-card") && !given.operands.empty())
        return ending({false, "--open-card opens the card, and no folder"}, command);
    CommandLine result;
    if (!given.operands.empty())
        result.folder = given.operands.front();
    result.card = given.value("--card");
    result.language = given.value("--language").value_or(std::move(language));
    result.opensCard = given.has("--open-card");
    result.opensSettings = given.has("--settings");
    result.isFilePanel = given.has("--file-panel");
    return result;
}
