#include "cardtools/drivelog/DriveLogCsv.h"

#include <utility>

namespace {

constexpr size_t pieceSize = size_t{64} * 1024;

}

DriveLogCsv::DriveLogCsv(const DriveLogFormat& kind, CsvSink consumer)
    : format(kind),
      sink(std::move(consumer))
{
    lines.reserve(pieceSize + 1024);
}

bool DriveLogCsv::writeTitles(std::span<const std::string> titles)
{
    for (const std::string& title : titles)
        (lines += title) += ',';
    lines.back() = '\n';
    return passOn(pieceSize);
}

bool DriveLogCsv::writeRecord(const std::byte* record)
{
    for (const DriveLogColumn& column : format.columns) {
        column.append(lines, record, rows);
        lines += ',';
    }
    lines.back() = '\n';
    ++rows;
    return passOn(pieceSize);
}

bool DriveLogCsv::finish()
{
    return passOn(1);
}

bool DriveLogCsv::passOn(size_t threshold)
{
    if (lines.size() < threshold)
        return true;
    const bool isTaken = sink(lines, rows);
    lines.clear();
    return isTaken;
}

bool writeDriveLogCsv(const DriveLog& log, std::span<const std::string> titles, CsvSink sink)
{
    DriveLogCsv csv(log.format(), std::move(sink));
    if (!csv.writeTitles(titles))
        return false;
    for (int64_t row = 0; row < log.count(); ++row) {
        if (!csv.writeRecord(log.recordAt(row)))
            return false;
    }
    return csv.finish();
}
