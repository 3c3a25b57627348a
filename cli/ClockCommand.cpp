#include "cardtools/clock/TimeSet.h"
#include "cli/Commands.h"
#include "cli/Written.h"

#include <ostream>
#include <string>

namespace cli {

namespace {

ExitCode showClock(const std::string& path, Streams streams)
{
    FileError why;
    const auto moment = loadTimeSet(FilePlace::chosen(path), why);
    if (!moment)
        return failure(streams, path, why ? why.text() : "holds no date and time");
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
