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
    return ExitCode::success;
}

} // namespace

ExitCode runClock(const Arguments& arguments, Streams streams)
{
    const std::string& path = arguments.operands.front();
    if (arguments.operands.size() == 1)
        return showClock(path, streams);
    const auto moment = timeSetFromText(arguments.operands[1]);
    if (!moment)
        return failure(streams, arguments.operands[1], "is no date and time like 2016/05/03 14:22:01");
    return writtenTo(path, arguments.has(followLink), streams, [&](const FilePlace& place) {
        const FileError trouble = saveTimeSet(*moment, place);
        return trouble ? failure(streams, path, trouble.text()) : ExitCode::success;
    });
}

} // namespace cli
