#include "cli/JsonWriter.h"
#include "cli/TelemetryFormats.h"

#include <ostream>

namespace cli {

namespace {

void write(JsonWriter& json, const ZVKGSensor& sample, const _AVI_GSENSOR_DATA_T& record)
{
    json.beginObject();
    json.key("nTimestamp").integer(record.nTimestamp);
    json.key("x").number(sample.x);
    json.key("y").number(sample.y);
    json.key("z").number(sample.z);
    json.key("nTemperature").integer(record.nTemperature);
    json.endObject();
}

void write(JsonWriter& json, const _AVI_GPS_DATA_T& header)
{
    json.beginObject();
    json.key("nTimestamp").integer(header.nTimestamp);
    json.key("nQualityIndicator").integer(header.nQualityIndicator);
    json.key("fLatitude").number(header.fLatitude);
    json.key("fLongitude").number(header.fLongitude);
    json.key("fSpeed").number(header.fSpeed);
    json.key("KM").integer(static_cast<uint8_t>(header.KM));
    json.endObject();
}

void write(JsonWriter& json, const ZVKGpsData& fix)
{
    const _SYSTEMTIME& now = fix.Now;
    json.beginObject();
    json.key("Latitude").number(fix.Latitude);
    json.key("NS").string({&fix.NS, 1});
    json.key("Longitude").number(fix.Longitude);
    json.key("EW").string({&fix.EW, 1});
    json.key("SpeedOverGround").number(fix.SpeedOverGround);
    json.key("CourseOverGround").number(fix.CourseOverGround);
    json.key("HDOP").number(fix.HDOP);
    json.key("SatelliteUsedCount").integer(fix.SatelliteUsedCount);
    json.key("Now").beginArray();
    for (const uint16_t field : {now.wYear, now.wMonth, now.wDayOfWeek, now.wDay, now.wHour, now.wMinute,
             now.wSecond, now.wMilliseconds})
        json.integer(field);
    json.endArray();
    json.endObject();
}

} // namespace

void writeTelemetryJson(std::ostream& out, const ZVKBlackBoxData& data)
{
    JsonWriter json(out);
    json.beginObject();
    json.key("result").boolean(isSuccess(data.walkEnd()));
    json.key("gsensor").beginArray();
    for (size_t i = 0; i < data.m_GSensors.size(); ++i)
        write(json, data.m_GSensors[i], data.m_vGSensorData()[i].data);
    json.endArray();
    json.key("gps").beginArray();
    for (size_t i = 0; i < data.m_vGpsData().size(); ++i)
        write(json, data.m_vGpsData()[i].data);
    json.endArray();
    json.key("fixes").beginArray();
    for (size_t i = 0; i < data.m_NMEAs.size(); ++i)
        write(json, data.m_NMEAs[i]);
    json.endArray();
    json.endObject();
    json.finish();
}

} // namespace cli
