#include "cli/commands/Command.h"

namespace cli {

namespace {

// The program reads its arguments by itself: tools/formathelper/FormatCard.cpp says why.
constexpr Operand operands[] = {
    {"DEVICE", "the card's device or partition, without /dev/: sdb1"},
    {"SECTORS-PER-CLUSTER", "of the file system that is made"},
    {"SIZE", "of the card that the user chose, in bytes"},
    {"MEDIUM", "the number that the kernel gave the medium; - where it counts none"},
};
constexpr std::string_view summary = "Makes the file system on a camera's card.";
constexpr std::string_view details =
    "zavik runs this program with administrator rights when the user formats a card. It looks at the device "
    "again, refuses what is no camera's card, is not the card that the user chose or is in use, makes a "
    "FAT32 file system named ZAVIK, reads it back and has it checked.\n"
    "There are no options. The exit code is 0 when the card was formatted; otherwise it says why not, and a "
    "line on the error stream may say more.\n";
constexpr Command all[] = {{"zavik-format-card", summary, details, operands}};

} // namespace

const Program formatCard = {"zavik-format-card", 8, summary, "", all, false};

} // namespace cli
