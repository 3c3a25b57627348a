#include "cardtools/drivelog/DriveLogCsv.h"
#include "cardtools/drivelog/DriveLogTitles.h"
#include "cli/Commands.h"
#include "common/FileByteSource.h"

#include <ostream>

namespace cli {

namespace {

std::string_view problem(DriveLogEnd end)
{
    switch (end) {
    case DriveLogEnd::cut:
        return "ends early";
    case DriveLogEnd::deviceFailed:
        return "could not be read to its end";
    case DriveLogEnd::headerFailed:
        return "could not be read: input/output error";
    case DriveLogEnd::noHeader:
        return "is no drive log";
    case DriveLogEnd::impossibleCount:
        return "announces more records than a file can hold";
    default:
        return "could not be read";
    }
}

/// The records from where the reader stands, a piece at a time, however many there are.
uint64_t writeRecords(DriveLogReader& reader, const DriveLogFormat& format, DriveLogCsv& csv)
{
    constexpr size_t recordsAtOnce = 4096;
    std::vector<std::byte> records(recordsAtOnce * format.recordSize);
    uint64_t written = 0;
    for (size_t count = recordsAtOnce; count == recordsAtOnce;) {
        count = reader.read(records);
        for (size_t i = 0; i < count; ++i) {
            if (!csv.writeRecord(records.data() + i * format.recordSize))
                return written;
        }
        written += count;
    }
    csv.finish();
    return written;
}

} // namespace

ExitCode runDriveLog(const Arguments& arguments, Streams streams)
{
    const std::string& path = arguments.operands.front();
    const DriveLogFormat* format = driveLogFormatOf(path);
    if (!format)
        return failure(streams, path, "is neither a .drv nor an .obd file");
    FileError why;
    const auto file = FileByteSource::open(path.c_str(), why);
    if (!file)
        return failure(streams, path, "cannot be opened");
    DriveLogReader reader(*file, *format);
    const auto announced = reader.announced();
    if (!announced)
        return failure(streams, path, problem(reader.end()));

    DriveLogCsv csv(*format, [&](std::string_view lines, int64_t) {
        return bool(streams.out.write(lines.data(), static_cast<std::streamsize>(lines.size())));
    });
    csv.writeTitles(driveLogColumnNames(*format, arguments.value("--lang").value_or("en")));
    const uint64_t written = writeRecords(reader, *format, csv);
    if (reader.end() == DriveLogEnd::whole)
        return ExitCode::success;
    streams.out.flush();
    return failure(streams, path,
        std::string(problem(reader.end())) + ": " + std::to_string(written) + " of "
            + std::to_string(*announced) + " records");
}

} // namespace cli
