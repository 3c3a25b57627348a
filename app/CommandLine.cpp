#include "app/CommandLine.h"

#include "common/Text.h"

#include <string_view>

namespace {

constexpr const char* help =
    "usage: zavik [--language en|ko|auto] [--card FOLDER] [FOLDER]\n"
    "\n"
    "Plays a dash camera's recordings with their telemetry.\n"
    "FOLDER is opened at once: the camera's card or any folder of recordings.\n"
    "--card FOLDER: the folder takes the part of the camera's card, for its settings,\n"
    "its clock and its drive log: a copy of a card, or a card that the desktop does\n"
    "not show as a volume.\n";

bool isLanguage(std::string_view text)
{
    return text == "en" || text == "ko" || text == "auto";
}

CommandLine ending(int code, std::string message)
{
    CommandLine result;
    result.exitCode = code;
    result.message = std::move(message);
    return result;
}

} // namespace

CommandLine CommandLine::parsed(std::span<const char* const> arguments, std::string language)
{
    CommandLine result;
    result.language = std::move(language);
    bool onlyPaths = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (!onlyPaths && argument == "--") {
            onlyPaths = true;
        } else if (!onlyPaths && (argument == "--help" || argument == "-h")) {
            return ending(0, help);
        } else if (!onlyPaths && argument == "--language") {
            if (i + 1 == arguments.size() || !isLanguage(arguments[i + 1]))
                return ending(2, help);
            result.language = arguments[++i];
        } else if (!onlyPaths && argument == "--card") {
            if (i + 1 == arguments.size() || result.card)
                return ending(2, help);
            result.card = arguments[++i];
        } else if (!onlyPaths && argument.starts_with("-") && argument.size() > 1) {
            return ending(2, "zavik: unknown option " + visibleText(argument) + "\n" + help);
        } else if (result.folder) {
            return ending(2, help);
        } else {
            result.folder = argument;
        }
    }
    return result;
}
