#include "cardtools/drivelog/DriveCells.h"

#include <array>

namespace {

using Obd = ObdDriveRecord;
using Text = std::string;

constexpr int16_t absent = 9999;

void appendUnlessNegative(Text& text, int16_t value)
{
    if (value < 0)
        text += '-';
    else
        appendInteger(text, value);
}

void appendThousandths(Text& text, int32_t value)
{
    if (value < 0)
        text += '-';
    else
        appendTenths(text, value / 1000.0);
}

void appendSwitch(Text& text, int16_t value)
{
    text += value < 0 ? "-" : value == 0 ? "OFF" : "ON";
}

constexpr std::array obdColumns{
    rowNumberColumn("setting.obdata.index", 38),
    driveColumn<Obd>("setting.obdata.seq", 38, seqCell),
    driveColumn<Obd>("setting.obdata.date", 86, dateCell, possibleDate),
    driveColumn<Obd>("setting.obdata.time", 72, timeCell, possibleTime),
    driveColumn<Obd>("setting.obdata.yoil", 70, yoilCell),
    driveColumn<Obd>("setting.obdata.lat", 64, latCell, possibleLat),
    driveColumn<Obd>("setting.obdata.lon", 72, lonCell, possibleLon),
    driveColumn<Obd>(
        "setting.obdata.cur_speed", 60,
        [](Text& text, const Obd& record) { appendUnlessNegative(text, record.cur_speed); },
        possibleSpeed<&Obd::cur_speed>),
    driveColumn<Obd>(
        "setting.obdata.gps_speed", 60,
        [](Text& text, const Obd& record) { appendUnlessNegative(text, record.gps_speed); },
        possibleSpeed<&Obd::gps_speed>),
    driveColumn<Obd>("setting.obdata.rpm", 60,
        [](Text& text, const Obd& record) { appendUnlessNegative(text, record.rpm); }),
    driveColumn<Obd>("setting.obdata.driving_distance", 68,
        [](Text& text, const Obd& record) { appendThousandths(text, record.driving_distance); }),
    driveColumn<Obd>("setting.obdata.battery", 60,
        [](Text& text, const Obd& record) { appendThousandths(text, record.battery); }),
    driveColumn<Obd>("setting.obdata.acp", 50,
        [](Text& text, const Obd& record) { appendUnlessNegative(text, record.acp); }),
    driveColumn<Obd>(
        "setting.obdata.fbk", 66, [](Text& text, const Obd& record) { appendSwitch(text, record.fbk); }),
    driveColumn<Obd>(
        "setting.obdata.rll", 66, [](Text& text, const Obd& record) { appendSwitch(text, record.rll); }),
    driveColumn<Obd>(
        "setting.obdata.lll", 66, [](Text& text, const Obd& record) { appendSwitch(text, record.lll); }),
    driveColumn<Obd>("setting.obdata.swa", 66,
        [](Text& text, const Obd& record) {
            if (record.swa == absent)
                text += '-';
            else
                appendInteger(text, record.swa);
        }),
    driveColumn<Obd>(
        "setting.obdata.sbt", 70, [](Text& text, const Obd& record) { appendSwitch(text, record.sbt); }),
    driveColumn<Obd>("setting.obdata.gel", 70,
        [](Text& text, const Obd& record) {
            if (record.gel > 0)
                appendInteger(text, record.gel);
            else
                text += '-';
        }),
    driveColumn<Obd>("setting.obdata.gep", 70,
        [](Text& text, const Obd& record) {
            text += record.gep >= 1 && record.gep <= 4 ? "PRND"[record.gep - 1] : '-';
        }),
    driveColumn<Obd>("setting.obdata.sbk", 70,
        [](Text& text, const Obd& record) {
            text += record.sbk == 0 ? "OFF" : record.sbk == 1 ? "ON" : "-";
        }),
    driveColumn<Obd>("setting.obdata.tpa", 70,
        [](Text& text, const Obd& record) { appendUnlessNegative(text, record.tpa); }),
    driveColumn<Obd>("setting.obdata.abt", 60,
        [](Text& text, const Obd& record) {
            if (record.abt == absent)
                text += '-';
            else
                appendTenths(text, record.abt / 100.0);
        }),
    driveColumn<Obd>("X", 60, xCell),
    driveColumn<Obd>("Y", 60, yCell),
    driveColumn<Obd>("Z", 60, zCell),
};

} // namespace

const DriveLogFormat obdDriveFormat{
    .fileType = "obd",
    .exportName = "zavik_obd",
    .recordSize = sizeof(Obd),
    .columns = obdColumns,
    .placeOf = placeOfRecord<Obd>,
};
