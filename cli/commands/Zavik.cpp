#include "cli/commands/Command.h"

namespace cli {

namespace {

constexpr std::string_view languages[] = {"en", "ko", "auto"};
constexpr Operand operands[] = {
    {"FOLDER", "opened at once: the camera's card or any folder of recordings", Kind::folder, {}, 0}};
constexpr Option options[] = {
    {"--language", "the language of the windows; auto follows the system", "en|ko|auto", Kind::text,
        languages},
    {"--card",
        "the folder takes the part of the camera's card, for its settings, its clock and its drive log: a "
        "copy of a card, or a card that the desktop does not show as a volume",
        "FOLDER", Kind::folder, {}, true},
    {"--open-card", "opens the camera's card that is in the computer"},
    {"--settings", "opens the camera's settings beside the player"},
    {"--version", versionText},
    {.name = "--file-panel", .explanation = "asks for one file, for another zavik", .isHidden = true},
};
constexpr std::string_view summary = "Plays a dash camera's recordings with their telemetry.";
constexpr Command all[] = {{"zavik", summary, "", operands, options}};

} // namespace

const Program zavik = {"zavik", 1, summary, "", all};

} // namespace cli
