#include "cardtools/drivelog/DriveCells.h"

#include <array>

namespace {

using Flash = FlashDataRecord;
using Text = std::string;

constexpr std::array flashColumns{
    rowNumberColumn("setting.flashdata.index", 38),
    driveColumn<Flash>("setting.flashdata.seq", 38, seqCell),
    driveColumn<Flash>("setting.flashdata.date", 86, dateCell, possibleDate),
    driveColumn<Flash>("setting.flashdata.time", 72, timeCell, possibleTime),
    driveColumn<Flash>("setting.flashdata.yoil", 70, yoilCell),
    driveColumn<Flash>("setting.flashdata.lat", 64, latCell, possibleLat),
    driveColumn<Flash>("setting.flashdata.lon", 72, lonCell, possibleLon),
    driveColumn<Flash>("setting.flashdata.driving_distance", 60,
        [](Text& text, const Flash& record) { appendTenths(text, record.driving_distance / 10.0); }),
    driveColumn<Flash>(
        "setting.flashdata.cur_speed", 60,
        [](Text& text, const Flash& record) { appendInteger(text, record.cur_speed); },
        possibleSpeed<&Flash::cur_speed>),
    driveColumn<Flash>(
        "setting.flashdata.max_speed", 60,
        [](Text& text, const Flash& record) { appendInteger(text, record.max_speed); },
        possibleSpeed<&Flash::max_speed>),
    driveColumn<Flash>("setting.flashdata.value", 48,
        [](Text& text, const Flash& record) { text += record.value == 1 ? 'A' : 'V'; }),
    driveColumn<Flash>("X", 48, xCell),
    driveColumn<Flash>("Y", 48, yCell),
    driveColumn<Flash>("Z", 48, zCell),
    driveColumn<Flash>("setting.flashdata.battery", 60,
        [](Text& text, const Flash& record) {
            appendInteger(text, record.battery / 10, 2, ' ');
            text += '.';
            appendInteger(text, record.battery % 10);
        }),
};

} // namespace

const DriveLogFormat flashDataFormat{
    .fileType = "drv",
    .exportName = "zavik_000",
    .recordSize = sizeof(Flash),
    .columns = flashColumns,
    .placeOf = placeOfRecord<Flash>,
};
