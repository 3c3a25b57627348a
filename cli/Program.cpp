#include "cli/Program.h"

#include "cli/Commands.h"
#include "common/Text.h"

#include <algorithm>
#include <exception>
#include <ostream>
#include <string>
#include <variant>

namespace cli {

namespace {

ExitCode wrongUsage(Streams streams)
{
    streams.err << "usage: zavikctl COMMAND ...\ncommands:";
    for (const Command& command : zavikctl.commands)
        streams.err << ' ' << command.name;
    streams.err << "\n\"zavikctl --help\" tells more.\n";
    return ExitCode::wrongUsage;
}

ExitCode runCommand(const Command& command, Words words, Streams streams, const VolumesSource& volumes)
{
    const auto read = parsed(zavikctl, command, words);
    if (const auto* arguments = std::get_if<Arguments>(&read)) {
        const auto all = actions(volumes);
        return std::ranges::find(all, command.name, &Action::command)->run(*arguments, streams);
    }
    const auto& ending = std::get<Ending>(read);
    if (ending.isHelp) {
        streams.out << ending.text;
        return ExitCode::success;
    }
    streams.err << "zavikctl: " << ending.text << '\n' << usageLine(zavikctl, command) << '\n';
    return ExitCode::wrongUsage;
}

ExitCode dispatch(Words words, Streams streams, const VolumesSource& volumes)
{
    if (words.empty())
        return wrongUsage(streams);
    if (words.front() == "--help" || words.front() == "-h") {
        streams.out << programHelp(zavikctl);
        return ExitCode::success;
    }
    if (words.front() == "--version") {
        streams.out << versionLine(zavikctl);
        return ExitCode::success;
    }
    const auto command = std::ranges::find(zavikctl.commands, words.front(), &Command::name);
    if (command != zavikctl.commands.end())
        return runCommand(*command, words.subspan(1), streams, volumes);
    streams.err << "zavikctl: unknown command " << visibleText(words.front()) << '\n';
    return wrongUsage(streams);
}

} // namespace

ExitCode failure(Streams streams, std::string_view subject, std::string_view reason)
{
    streams.err << "zavikctl: " << visibleText(std::string(subject) + ": " + std::string(reason)) << '\n';
    return ExitCode::failure;
}

ExitCode run(Words words, Streams streams, const VolumesSource& volumes)
try {
    const ExitCode code = dispatch(words, streams, volumes);
    if (code == ExitCode::success && !streams.out.flush())
        return failure(streams, "standard output", "cannot be written");
    return code;
} catch (const std::exception& error) {
    return failure(streams, words.empty() ? "zavikctl" : words.front(), error.what());
}

} // namespace cli
