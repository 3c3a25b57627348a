#include "cli/Program.h"

#include "cli/Commands.h"
#include "common/Text.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <variant>

namespace cli {

namespace {

constexpr std::string_view conventions = //
    "JSON texts are UTF-8; a byte of a file name that is not UTF-8 is written as \\udcXX, which Python's\n"
    "os.fsencode turns back into the byte. Numbers that JSON cannot hold are null.\n"
    "\n"
    "Exit codes: 0 done, 1 something could not be read or written, 2 wrong usage.\n";

using Words = std::span<const std::string_view>;

bool isHelp(std::string_view word)
{
    return word == "--help" || word == "-h";
}

bool asksForHelp(Words words)
{
    const auto end = std::ranges::find(words, "--");
    return std::any_of(words.begin(), end, isHelp);
}

void writeUsage(std::ostream& out, const Command& command)
{
    out << "usage: zavikctl " << command.name << ' ' << command.synopsis << '\n';
}

void writeUsage(std::ostream& out)
{
    out << "usage: zavikctl COMMAND ...\ncommands:";
    for (const Command* command : commands())
        out << ' ' << command->name;
    out << "\n\"zavikctl --help\" tells more.\n";
}

void writeHelp(std::ostream& out, const Command& command)
{
    writeUsage(out, command);
    out << command.summary << "\n\n" << command.details << '\n' << conventions;
}

void writeHelp(std::ostream& out)
{
    out << "usage: zavikctl COMMAND ...\nReads a dash camera's recordings and card.\n\n";
    for (const Command* command : commands())
        out << "  " << command->name << ' ' << command->synopsis << "\n      " << command->summary << '\n';
    out << "\n\"zavikctl COMMAND --help\" tells more about one of them.\n\n" << conventions;
}

/// Adds a flag, with its value where it takes one, and moves on past it. What is wrong with it, or nothing.
std::string addFlag(Arguments& arguments, const Command& command, Words words, size_t& at)
{
    const std::string_view word = words[at];
    const auto option = std::ranges::find(command.options, word, &Option::name);
    if (option != command.options.end()) {
        if (++at == words.size())
            return std::string(word) + " needs a value";
        if (!option->choices.empty()
            && std::ranges::find(option->choices, words[at]) == option->choices.end())
            return std::string(word) + " cannot be " + std::string(words[at]);
        arguments.values.emplace_back(word, words[at]);
        return {};
    }
    if (std::ranges::find(command.flags, word) == command.flags.end())
        return "unknown flag " + std::string(word);
    if (!arguments.flag.empty() && arguments.flag != word)
        return std::string(arguments.flag) + " and " + std::string(word) + " exclude each other";
    arguments.flag = word;
    return {};
}

/// The command's arguments, or what is wrong with them.
std::variant<Arguments, std::string> sorted(const Command& command, Words words)
{
    Arguments arguments;
    bool onlyOperands = false;
    for (size_t at = 0; at < words.size(); ++at) {
        const std::string_view word = words[at];
        if (onlyOperands || word.size() < 2 || word.front() != '-')
            arguments.operands.push_back(word);
        else if (word == "--")
            onlyOperands = true;
        else if (std::string problem = addFlag(arguments, command, words, at); !problem.empty())
            return problem;
    }
    if (arguments.operands.size() < command.fewestOperands)
        return "too few arguments";
    if (arguments.operands.size() > command.mostOperands)
        return "too many arguments";
    return arguments;
}

ExitCode runCommand(const Command& command, Words words, Streams streams)
{
    if (asksForHelp(words)) {
        writeHelp(streams.out, command);
        return ExitCode::Success;
    }
    const auto arguments = sorted(command, words);
    if (const auto* problem = std::get_if<std::string>(&arguments)) {
        streams.err << "zavikctl: " << visibleText(*problem) << '\n';
        writeUsage(streams.err, command);
        return ExitCode::WrongUsage;
    }
    return command.run(std::get<Arguments>(arguments), streams);
}

ExitCode dispatch(Words words, Streams streams)
{
    if (words.empty()) {
        writeUsage(streams.err);
        return ExitCode::WrongUsage;
    }
    if (isHelp(words.front())) {
        writeHelp(streams.out);
        return ExitCode::Success;
    }
    const auto all = commands();
    const auto command = std::ranges::find(all, words.front(), &Command::name);
    if (command != all.end())
        return runCommand(**command, words.subspan(1), streams);
    streams.err << "zavikctl: unknown command " << visibleText(words.front()) << '\n';
    writeUsage(streams.err);
    return ExitCode::WrongUsage;
}

} // namespace

std::optional<std::string_view> Arguments::value(std::string_view option) const
{
    std::optional<std::string_view> last;
    for (const auto& [name, given] : values) {
        if (name == option)
            last = given;
    }
    return last;
}

ExitCode failure(Streams streams, std::string_view subject, std::string_view reason)
{
    streams.err << "zavikctl: " << visibleText(std::string(subject) + ": " + std::string(reason)) << '\n';
    return ExitCode::Failure;
}

ExitCode run(Words words, Streams streams)
{
    const ExitCode code = dispatch(words, streams);
    if (code == ExitCode::Success && !streams.out.flush())
        return failure(streams, "standard output", "cannot be written");
    return code;
}

} // namespace cli
