#include "cli/commands/Generated.h"

namespace cli {

namespace {

/// The text in single quotes; each of the marks in it gets a backslash first.
std::string quoted(std::string_view text, std::string_view marked, std::string_view apostrophe)
{
    std::string all = "'";
    for (const char c : text) {
        if (marked.find(c) != std::string_view::npos)
            all += '\\';
        all += c == '\'' ? std::string(apostrophe) : std::string(1, c);
    }
    return all + "'";
}

/// The names of the options, those of a command or those that a value follows.
std::string optionNames(const Command& command, std::string_view separator, bool onlyWithValue)
{
    std::string names;
    for (const Option& option : command.options) {
        if (!option.isHidden && (!onlyWithValue || !option.value.empty()))
            names.append(names.empty() ? "" : separator).append(option.name);
    }
    return names;
}

// bash

/// The call that offers what fits; nothing for free text.
template <typename Entry> std::string bashOffer(const Entry& entry)
{
    if (!entry.choices.empty())
        return "-W '" + joined(entry.choices, " ") + "'";
    return entry.kind == Kind::file ? "-f" : entry.kind == Kind::folder ? "-d" : "-W ''";
}

std::string bashCases(const Program& program)
{
    std::string cases;
    for (const Command& command : program.commands) {
        const std::string name(command.name);
        const auto add = [&](const std::string& place, const std::string& offer) {
            cases.append("    ")
                .append(name)
                .append("/")
                .append(place)
                .append(") offer=(")
                .append(offer)
                .append(") ;;\n");
        };
        for (const Option& option : command.options) {
            if (!option.value.empty())
                add(std::string(option.name), bashOffer(option));
        }
        add("-", "-W '" + optionNames(command, " ", false) + " --help'");
        size_t place = 0;
        for (const Operand& operand : command.operands)
            add(operand.most > 1 ? "*" : std::to_string(place++), bashOffer(operand));
    }
    return cases;
}

// zsh

template <typename Entry> std::string zshOffer(const Entry& entry)
{
    if (!entry.choices.empty())
        return "(" + joined(entry.choices, " ") + ")";
    return entry.kind == Kind::file ? "_files" : entry.kind == Kind::folder ? "_files -/" : " ";
}

std::string zshText(std::string_view text)
{
    const std::string marked = quoted(text, "[]:\\", "'\\''");
    return marked.substr(1, marked.size() - 2);
}

std::string zshArguments(const Command& command)
{
    std::string text = "_arguments -S '(- *)'{-h,--help}'[" + std::string(helpText) + "]'";
    for (const Option& option : command.options) {
        if (option.isHidden)
            continue;
        std::string others;
        for (const Option& other : command.options) {
            if (option.value.empty() && other.value.empty() && !other.isHidden)
                others.append(others.empty() ? "" : " ").append(other.name);
        }
        text += " \\\n      '(" + (others.empty() ? std::string(option.name) : others) + ")"
            + std::string(option.name) + "[" + zshText(option.explanation) + "]";
        text += option.value.empty() ? "'" : ":" + zshText(option.value) + ":" + zshOffer(option) + "'";
    }
    size_t place = 0;
    for (const Operand& operand : command.operands)
        text += " \\\n      '" + (operand.most > 1 ? "*" : std::to_string(++place)) + ":"
            + zshText(operand.name) + ":" + zshOffer(operand) + "'";
    return text + '\n';
}

// fish

std::string fishText(std::string_view text)
{
    return quoted(text, "\\'", "'");
}

template <typename Entry> std::string fishOffer(const Entry& entry)
{
    if (!entry.choices.empty())
        return " -a " + fishText(joined(entry.choices, " "));
    return entry.kind == Kind::file  ? " -F"
        : entry.kind == Kind::folder ? " -a '(__fish_complete_directories)'"
                                     : "";
}

std::string fishLines(const Program& program, const Command& command)
{
    const std::string name(command.name);
    const std::string start = "complete -c " + std::string(program.name)
        + (program.hasCommands() ? " -n '__fish_seen_subcommand_from " + name + "'" : "");
    std::string lines;
    for (const Option& option : command.options) {
        if (!option.isHidden)
            lines += start + " -l " + std::string(option.name.substr(2))
                + (option.value.empty()             ? ""
                        : option.kind == Kind::file ? " -r"
                                                    : " -x")
                + (option.value.empty() ? "" : fishOffer(option)) + " -d " + fishText(option.explanation)
                + '\n';
    }
    for (const Operand& operand : command.operands) {
        const std::string only = operand.choices.empty() || !program.hasCommands()
            ? start
            : start.substr(0, start.size() - 1) + "; and not __fish_seen_subcommand_from "
                + joined(operand.choices, " ") + "'";
        if (const std::string offer = fishOffer(operand); !offer.empty())
            lines += only + offer + '\n';
    }
    return lines;
}

} // namespace

std::string bashCompletion(const Program& program)
{
    const std::string name(program.name);
    std::string commands;
    std::string withValue;
    for (const Command& command : program.commands) {
        commands.append(command.name).append(" ");
        if (const std::string names = optionNames(command, "|", true); !names.empty())
            withValue += (withValue.empty() ? "" : "|") + names;
    }
    std::string text = "# Completes the command line of " + name + " in bash.\n_" + name + "()\n{\n"
        + "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command=" + name
        + " at=1 place=0 offer=()\n    COMPREPLY=()\n";
    if (program.hasCommands())
        text += "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n        mapfile -t COMPREPLY < <(compgen -W '"
            + commands
            + "--help --version' -- \"$word\")\n        return\n    fi\n    command=${COMP_WORDS[1]} at=2\n";
    return text + "    for (( ; at < COMP_CWORD; ++at)); do\n        case ${COMP_WORDS[at - 1]} in\n        "
        + withValue + ") continue ;;\n        esac\n"
        + "        [[ ${COMP_WORDS[at]} == -* ]] || place=$((place + 1))\n    done\n"
        + "    [[ $word == -* ]] && place=-\n    case $before in\n    " + withValue
        + ") place=$before ;;\n    esac\n    case $command/$place in\n" + bashCases(program) + "    esac\n"
        + "    case ${offer[0]-} in\n    -f | -d) compopt -o filenames ;;\n    '') return ;;\n    esac\n"
        + "    mapfile -t COMPREPLY < <(compgen \"${offer[@]}\" -- \"$word\")\n}\ncomplete -F _" + name + ' '
        + name + '\n';
}

std::string zshCompletion(const Program& program)
{
    const std::string name(program.name);
    std::string text = "#compdef " + name + "\n\n_" + name + "() {\n";
    if (!program.hasCommands())
        return text + "  " + zshArguments(program.commands.front()) + "}\n\n_" + name + " \"$@\"\n";
    text += "  local state\n  local -a commands=(\n";
    for (const Command& command : program.commands)
        text += "    " + quoted(std::string(command.name) + ':' + std::string(command.summary), "", "'\\''")
            + '\n';
    text += "  )\n  _arguments -C '(- *)'{-h,--help}'[" + std::string(helpText) + "]' '(- *)--version["
        + std::string(versionText)
        + "]' '1: :->command' '*:: :->rest'\n"
          "  case $state in\n  command) _describe command commands ;;\n  rest)\n    case $words[1] in\n";
    for (const Command& command : program.commands)
        text += "    " + std::string(command.name) + ") " + zshArguments(command) + "      ;;\n";
    return text + "    esac ;;\n  esac\n}\n\n_" + name + " \"$@\"\n";
}

std::string fishCompletion(const Program& program)
{
    const std::string start = "complete -c " + std::string(program.name);
    std::string text = "# Completes the command line of " + std::string(program.name) + " in fish.\n" + start
        + " -f\n" + start + " -s h -l help -d " + fishText(helpText) + '\n';
    if (program.hasCommands())
        text += start + " -n __fish_use_subcommand -l version -d " + fishText(versionText) + '\n';
    for (const Command& command : program.commands) {
        if (program.hasCommands())
            text += start + " -n __fish_use_subcommand -a " + std::string(command.name) + " -d "
                + fishText(command.summary) + '\n';
        text += fishLines(program, command);
    }
    return text;
}

} // namespace cli
