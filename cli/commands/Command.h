#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace cli {

/// What a word of the command line names; the shells complete it by this.
enum class Kind {
    text,
    file,
    folder,
};

using Words = std::span<const std::string_view>;

/// A word without a dash, at its place after the command.
struct Operand {
    std::string_view name; // as the help calls it
    std::string_view explanation;
    Kind kind = Kind::text;
    Words choices = {}; // the words that fit; any when empty
    size_t fewest = 1;
    size_t most = 1;
};

struct Option {
    std::string_view name; // with its dashes
    std::string_view explanation;
    std::string_view value = {}; // as the help calls the word that follows; empty: none follows
    Kind kind = Kind::text; // of the value
    Words choices = {}; // the values that fit; any when empty
    bool isOnce = false; // given twice it is refused; else the last one counts
    bool isHidden = false; // for the program's own use
};

/// Options without a value are alternatives: at most one of a command's may be given.
struct Command {
    std::string_view name;
    std::string_view summary; // one line
    std::string_view details; // further lines of the help
    std::span<const Operand> operands = {};
    std::span<const Option> options = {};
    std::string_view synopsis = {}; // what follows the name; made from operands and options when empty
};

struct Program {
    std::string_view name;
    int section; // of the manual
    std::string_view summary; // one line
    std::string_view details; // further lines of the help, for all commands
    std::span<const Command> commands; // a program without commands is one command with its name
    bool isRunByHand = true; // else the shells do not complete it

    bool hasCommands() const { return commands.size() > 1; }
};

/// Of all programs.
extern const std::string_view version;
// What these two options do, in every program that is run by hand.
inline constexpr std::string_view helpText = "print this help and do nothing else";
inline constexpr std::string_view versionText = "print the version and do nothing else";

/// All programs that are installed.
std::span<const Program> programs();

extern const Program zavik;
extern const Program zavikctl;
extern const Program formatCard;

/// "usage: zavikctl list [--json] FOLDER"
std::string usageLine(const Program& program, const Command& command);
/// What follows "usage: ", without the command's name.
std::string synopsisOf(const Command& command);
/// What "--version" prints: "zavikctl 1.2.3" and a line feed.
std::string versionLine(const Program& program);
/// "--region en|ko"
std::string optionText(const Option& option);
/// "en|ko"
std::string joined(Words words, std::string_view separator);

} // namespace cli
