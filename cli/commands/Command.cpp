#include "cli/commands/Command.h"

namespace cli {

namespace {

std::string alternatives(std::span<const Option> options)
{
    std::string text;
    for (const Option& option : options) {
        if (option.value.empty() && !option.isHidden)
            text += (text.empty() ? "" : "|") + std::string(option.name);
    }
    return text.empty() ? text : " [" + text + "]";
}

} // namespace

const std::string_view version = ZAVIK_VERSION;

std::string joined(Words words, std::string_view separator)
{
    std::string text;
    for (const std::string_view word : words)
        text.append(text.empty() ? "" : separator).append(word);
    return text;
}

std::string optionText(const Option& option)
{
    return std::string(option.name) + (option.value.empty() ? "" : " ") + std::string(option.value);
}

std::string synopsisOf(const Command& command)
{
    if (!command.synopsis.empty())
        return std::string(command.synopsis);
    std::string text = alternatives(command.options);
    for (const Option& option : command.options) {
        if (!option.value.empty())
            text += " [" + optionText(option) + "]";
    }
    for (const Operand& operand : command.operands)
        text += operand.fewest ? " " + std::string(operand.name) : " [" + std::string(operand.name) + "]";
    return text.empty() ? text : text.substr(1);
}

std::string usageLine(const Program& program, const Command& command)
{
    return "usage: " + std::string(program.name) + (program.hasCommands() ? " " : "")
        + std::string(program.hasCommands() ? command.name : "") + ' ' + synopsisOf(command);
}

std::string versionLine(const Program& program)
{
    return std::string(program.name) + ' ' + std::string(version) + '\n';
}

std::span<const Program> programs()
{
    static const Program all[] = {zavik, zavikctl, formatCard};
    return all;
}

} // namespace cli
