#include "cli/commands/Generated.h"

#include <algorithm>

namespace cli {

namespace {

/// Text for troff: no character of it is a request or an escape, and dashes stay dashes.
std::string plain(std::string_view text)
{
    std::string safe;
    bool isLineStart = true;
    for (const char c : text) {
        if (isLineStart && (c == '.' || c == '\''))
            safe += "\\&";
        if (c == '\\')
            safe += "\\e";
        else if (c == '-')
            safe += "\\-";
        else
            safe += c;
        isLineStart = c == '\n';
    }
    return safe;
}

/// Each line a paragraph.
std::string paragraphs(std::string_view text)
{
    std::string all;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (!line.empty())
            all += ".PP\n" + plain(line) + '\n';
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return all;
}

std::string entry(const std::string& name, std::string_view explanation)
{
    return ".TP\n\\fB" + plain(name) + "\\fR\n" + plain(explanation) + '\n';
}

std::string usage(const Program& program, const Command& command)
{
    return ".PP\n" + plain(usageLine(program, command).substr(std::string_view("usage: ").size())) + '\n';
}

std::string entries(const Command& command)
{
    std::string text;
    for (const Operand& operand : command.operands)
        text += entry(std::string(operand.name), operand.explanation);
    for (const Option& option : command.options) {
        if (!option.isHidden)
            text += entry(optionText(option), option.explanation);
    }
    return text;
}

std::string body(const Program& program)
{
    const Command& only = program.commands.front();
    if (!program.hasCommands())
        return ".SH DESCRIPTION\n" + plain(program.summary) + '\n' + paragraphs(only.details)
            + ".SH OPTIONS\n" + entries(only) + (program.isRunByHand ? entry("-h, --help", helpText) : "");
    std::string text = ".SH DESCRIPTION\n" + plain(program.summary) + '\n' + paragraphs(program.details)
        + ".SH OPTIONS\n" + entry("-h, --help", helpText) + entry("--version", versionText)
        + ".SH COMMANDS\n";
    for (const Command& command : program.commands)
        text += ".SS " + plain(command.name) + '\n' + plain(command.summary) + '\n' + usage(program, command)
            + entries(command) + paragraphs(command.details);
    return text;
}

/// The other programs' pages.
std::string others(const Program& program)
{
    constexpr std::string_view pages[] = {"zavik(1)", "zavikctl(1)", "zavik-format-card(8)"};
    std::string text;
    for (const std::string_view page : pages) {
        if (page.substr(0, page.find('(')) != program.name)
            text += (text.empty() ? "" : ", ") + plain(page);
    }
    return text + '\n';
}

} // namespace

std::string manPage(const Program& program, std::string_view release)
{
    const std::string name = plain(program.name);
    // The name section's line has neither a capital letter nor a full stop.
    std::string summary(program.summary.substr(0, program.summary.size() - 1));
    summary.front() = static_cast<char>(summary.front() | 0x20);
    std::string text = ".TH " + std::string(program.name) + ' ' + std::to_string(program.section)
        + " \"\" \"zavik " + std::string(release) + "\"\n.SH NAME\n" + name + " \\- " + plain(summary)
        + "\n.SH SYNOPSIS\n";
    for (const Command& command : program.commands)
        text += usage(program, command);
    return text + body(program) + ".SH SEE ALSO\n" + others(program);
}

} // namespace cli
