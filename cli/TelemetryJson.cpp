#include "cli/Json.h"
#include "cli/TelemetryFormats.h"

#include <numeric>
#include <ostream>
#include <vector>

namespace cli {

namespace {

Json json(const ZVKGSensor& sample, const _AVI_GSENSOR_DATA_T& record)
{
    return {{"nTimestamp", record.nTimestamp}, {"x", sample.x}, {"y", sample.y}, {"z", sample.z},
        {"nTemperature", record.nTemperature}};
}

Json json(const _AVI_GPS_DATA_T& header)
{
    return {{"nTimestamp", header.nTimestamp}, {"nQualityIndicator", header.nQualityIndicator},
        {"fLatitude", header.fLatitude}, {"fLongitude", header.fLongitude}, {"fSpeed", header.fSpeed},
        {"KM", static_cast<uint8_t>(header.KM)}};
}

Json json(const ZVKGpsData& fix)
{
    const _SYSTEMTIME& now = fix.Now;
    return {{"Latitude", fix.Latitude}, {"NS", std::string(1, fix.NS)}, {"Longitude", fix.Longitude},
        {"EW", std::string(1, fix.EW)}, {"SpeedOverGround", fix.SpeedOverGround},
        {"CourseOverGround", fix.CourseOverGround}, {"HDOP", fix.HDOP},
        {"SatelliteUsedCount", fix.SatelliteUsedCount},
        {"Now",
            {now.wYear, now.wMonth, now.wDayOfWeek, now.wDay, now.wHour, now.wMinute, now.wSecond,
                now.wMilliseconds}}};
}

std::vector<size_t> indices(const auto& list)
{
    std::vector<size_t> result(list.size());
    std::iota(result.begin(), result.end(), size_t{0});
    return result;
}

} // namespace

void writeTelemetryJson(std::ostream& out, const ZVKBlackBoxData& data)
{
    out << "{\"result\":" << jsonText(isSuccess(data.walkEnd())) << ",\"gsensor\":";
    writeJsonArray(out, indices(data.m_GSensors),
        [&](size_t i) { return json(data.m_GSensors[i], data.m_vGSensorData()[i].data); });
    out << ",\"gps\":";
    writeJsonArray(
        out, indices(data.m_vGpsData()), [&](size_t i) { return json(data.m_vGpsData()[i].data); });
    out << ",\"fixes\":";
    writeJsonArray(out, indices(data.m_NMEAs), [&](size_t i) { return json(data.m_NMEAs[i]); });
    out << "}\n";
}

} // namespace cli
