#pragma once

#include "cardtools/drivelog/DriveLogFormat.h"
#include "cardtools/drivelog/DriveRecords.h"

#include <cstdlib>
#include <cstring>

// The pieces that the cells of both kinds of drive logs are made of. Each appends what printf would in the C
// locale, but faster.

/// "%d"; with a width, filled up from the left ("%04d", "%4d").
void appendInteger(std::string& text, int64_t value, size_t width = 0, char fill = '0');
/// "%.1f"
void appendTenths(std::string& text, double value);
/// "%+.2f" of 1/256 steps
void appendGForce(std::string& text, int16_t steps);
void appendDayOfWeek(std::string& text, uint8_t yoil);
/// "%04d.%04d" and "%05d.%04d"
void appendCoordinate(std::string& text, uint16_t whole, size_t wholeWidth, uint16_t fraction);
DrivePlace drivePlace(uint16_t latWhole, uint16_t latFraction, uint16_t lonWhole, uint16_t lonFraction);

template <typename Record> Record driveRecordAt(const std::byte* bytes)
{
    Record record;
    std::memcpy(&record, bytes, sizeof record);
    return record;
}

// Whether a record's value is possible.
inline constexpr auto alwaysPossible = [](const auto&) { return true; };
inline constexpr auto possibleDate = [](const auto& record) {
    return record.month >= 1 && record.month <= 12 && record.day >= 1 && record.day <= 31;
};
inline constexpr auto possibleTime = [](const auto& record) {
    return record.hour <= 24 && record.minute <= 60 && record.second <= 60;
};
inline constexpr auto possibleLat = [](const auto& record) {
    return drivePlace(record.latWhole, record.latFraction, 0, 0).latitude <= 90;
};
inline constexpr auto possibleLon = [](const auto& record) {
    return drivePlace(0, 0, record.lonWhole, record.lonFraction).longitude <= 180;
};
template <auto field>
inline constexpr auto possibleSpeed = [](const auto& record) { return record.*field <= 1000; };

/// A column whose cells are made by `cell(text, record)`.
template <typename Record, typename Cell, typename Possible = decltype(alwaysPossible)>
constexpr DriveLogColumn driveColumn(std::string_view title, int width, Cell, Possible = {})
{
    return {title, width,
        [](std::string& text, const std::byte* bytes, int64_t) {
            Cell{}(text, driveRecordAt<Record>(bytes));
        },
        [](const std::byte* bytes) { return Possible{}(driveRecordAt<Record>(bytes)); }};
}

constexpr DriveLogColumn rowNumberColumn(std::string_view title, int width)
{
    return {
        title, width, [](std::string& text, const std::byte*, int64_t row) { appendInteger(text, row + 1); }};
}

// The cells that both kinds have.
inline constexpr auto dateCell = [](std::string& text, const auto& record) {
    appendInteger(text, record.year + 1900, 4, ' ');
    text += '/';
    appendInteger(text, record.month, 2);
    text += '/';
    appendInteger(text, record.day, 2);
};
inline constexpr auto timeCell = [](std::string& text, const auto& record) {
    appendInteger(text, record.hour, 2);
    text += ':';
    appendInteger(text, record.minute, 2);
    text += ':';
    appendInteger(text, record.second, 2);
};
inline constexpr auto seqCell = [](std::string& text, const auto& record) {
    appendInteger(text, static_cast<int32_t>(record.seq));
};
inline constexpr auto yoilCell = [](std::string& text, const auto& record) {
    appendDayOfWeek(text, record.yoil);
};
inline constexpr auto latCell = [](std::string& text, const auto& record) {
    appendCoordinate(text, record.latWhole, 4, record.latFraction);
};
inline constexpr auto lonCell = [](std::string& text, const auto& record) {
    appendCoordinate(text, record.lonWhole, 5, record.lonFraction);
};
inline constexpr auto xCell = [](std::string& text, const auto& record) { appendGForce(text, record.x); };
inline constexpr auto yCell = [](std::string& text, const auto& record) { appendGForce(text, record.y); };
inline constexpr auto zCell = [](std::string& text, const auto& record) { appendGForce(text, record.z); };

template <typename Record> DrivePlace placeOfRecord(const std::byte* bytes)
{
    const auto record = driveRecordAt<Record>(bytes);
    return drivePlace(record.latWhole, record.latFraction, record.lonWhole, record.lonFraction);
}
