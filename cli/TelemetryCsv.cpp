#include "cli/Numbers.h"
#include "cli/TelemetryFormats.h"

#include <ostream>

namespace cli {

namespace {

// No cell needs quotes: all are numbers, empty where a number is infinite or NaN.
std::string cell(double number)
{
    return numberText(number).value_or("");
}

void writeHeaderCells(std::ostream& out, const _AVI_GPS_DATA_T& header)
{
    out << header.nTimestamp << ',' << header.nQualityIndicator << ',' << cell(header.fLatitude) << ','
        << cell(header.fLongitude) << ',' << cell(header.fSpeed) << ','
        << unsigned{static_cast<uint8_t>(header.KM)};
}

} // namespace

void writeTelemetryCsv(std::ostream& out, const ZVKBlackBoxData& data)
{
    out << "nTimestamp,x,y,z,nTemperature,"
           "gps_nTimestamp,nQualityIndicator,fLatitude,fLongitude,fSpeed,KM\r\n";
    for (size_t i = 0; i < data.m_GSensors.size(); ++i) {
        const ZVKGSensor sample = data.m_GSensors[i];
        const _AVI_GSENSOR_DATA_T& record = data.m_vGSensorData()[i].data;
        out << record.nTimestamp << ',' << cell(sample.x) << ',' << cell(sample.y) << ',' << cell(sample.z)
            << ',' << record.nTemperature << ',';
        if (i < data.m_vGpsData().size())
            writeHeaderCells(out, data.m_vGpsData()[i].data);
        else
            out << ",,,,,";
        out << "\r\n";
    }
}

} // namespace cli
