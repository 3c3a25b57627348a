#pragma once

#include "telemetry/ZVKBlackBoxData.h"

#include <iosfwd>
#include <string_view>

namespace cli {

/// Why a file that the walk gave up on is no readable recording; empty when it is one.
std::string_view walkProblem(WalkEnd end);

/// {"result", "gsensor": [...], "gps": [...], "fixes": [...]}: whether the walk succeeded, `m_GSensors` with
/// `m_vGSensorData`, `m_vGpsData` and `m_NMEAs`.
void writeTelemetryJson(std::ostream& out, const ZVKBlackBoxData& data);

/// RFC 4180: a header line, then a row for each G-sensor sample with the GPS header that is paired with it.
void writeTelemetryCsv(std::ostream& out, const ZVKBlackBoxData& data);

/// GPX 1.1: the GPS records as one track of that name.
void writeTelemetryGpx(std::ostream& out, const ZVKBlackBoxData& data, std::string_view name);

/// A short summary as text.
void writeTelemetrySummary(std::ostream& out, const ZVKBlackBoxData& data, std::string_view name);

} // namespace cli
