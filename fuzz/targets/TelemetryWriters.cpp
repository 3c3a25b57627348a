#include "cli/TelemetryFormats.h"
#include "common/MemoryByteSource.h"
#include "fuzz/Require.h"
#include "fuzz/WellFormed.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <sstream>

/// A name up to the first line feed, then a recording.
void fuzz(std::string_view rest)
{
    const std::string_view name = nextPart(rest, '\n');
    ZVKBlackBoxData data;
    MemoryByteSource source(std::as_bytes(std::span(rest.data(), rest.size())));
    data.ExtractStreamInformation(source);

    std::ostringstream json;
    cli::writeTelemetryJson(json, data);
    require(isJson(json.view()));
    std::ostringstream gpx;
    cli::writeTelemetryGpx(gpx, data, name);
    require(isXml(gpx.view()));

    std::ostringstream csv;
    cli::writeTelemetryCsv(csv, data);
    std::string_view lines = csv.view();
    for (size_t line = 0; line <= data.m_GSensors.size(); ++line) {
        const std::string_view row = nextPart(lines, '\n');
        require(row.ends_with('\r') && std::ranges::count(row, ',') == 10);
        require(line == 0 || row.find_first_not_of("-+.0123456789e,\r") == row.npos);
    }
    require(lines.empty());
    std::ostringstream summary;
    cli::writeTelemetrySummary(summary, data, name);
    require(isValidUtf8(summary.view()));
}
