#include "cardtools/clock/TimeSet.h"
#include "cli/Commands.h"
#include "cli/Written.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <system_error>

namespace cli {

namespace {

ExitCode showClock(const std::string& path, Streams streams)
{
    const auto moment = loadTimeSet(FilePlace::chosen(path));
    if (!moment) {
        std::error_code error;
        const auto size = std::filesystem::file_size(path, error);
        (void)size;
        return failure(streams, path, error ? error.message() : "holds no date and time");
    }
    streams.out << timeSetText(*moment) << '\n';
    return ExitCode::Success;
}

ExitCode runClock(const Arguments& arguments, Streams streams)
{
    const std::string path(arguments.operands.front());
    if (arguments.operands.size() == 1)
        return showClock(path, streams);
    const auto moment = timeSetFromText(arguments.operands[1]);
    if (!moment)
        return failure(streams, arguments.operands[1], "is no date and time like 2016/05/03 14:22:01");
    return writtenTo(path, !arguments.flag.empty(), streams, [&](const FilePlace& place) {
        const FileError trouble = saveTimeSet(*moment, place);
        return trouble ? failure(streams, path, trouble.text()) : ExitCode::Success;
    });
}

constexpr std::string_view flags[] = {followLink};

} // namespace

const Command clockCommand = {
    .name = "clock",
    .synopsis = "[--follow-link] FILE [\"yyyy/MM/dd HH:mm:ss\"]",
    .summary = "Prints the time that a timeset.cfg sets the camera's clock to, or writes it.",
    .details =
        "Years 1 to 9999 of the Gregorian calendar, the clock of 24 hours, no time zone. A date or time\n"
        "that does not exist is refused and nothing is written. The file is replaced as a whole.\n"
        "A link is refused, because a card may hold any; --follow-link writes the file that it leads to.\n",
    .fewestOperands = 1,
    .mostOperands = 2,
    .flags = flags,
    .run = runClock,
};

} // namespace cli
