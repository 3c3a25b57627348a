#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Where a record was made, decimal degrees. A log stores no hemisphere, so neither is negative; 0 is no fix.
struct DrivePlace {
    double latitude = 0;
    double longitude = 0;
};

/// One column of the table and of the export.
struct DriveLogColumn {
    std::string_view title; // a text key, or the title itself when it has no dot
    int width; // points
    /// Appends the cell of a record, given its bytes and its row from 0. The text is the same in every
    /// locale.
    void (*append)(std::string& text, const std::byte* record, int64_t row);
    /// Whether the record's value is possible; null when every value is.
    bool (*isPossible)(const std::byte* record) = nullptr;

    bool hasTitleKey() const { return title.find('.') != std::string_view::npos; }
};

/// One of the two kinds of drive logs. The columns are in their logical order.
struct DriveLogFormat {
    std::string_view fileType; // the ending, without a dot
    std::string_view exportName; // proposed for the export, without an ending
    size_t recordSize;
    std::span<const DriveLogColumn> columns;
    DrivePlace (*placeOf)(const std::byte* record);
};

extern const DriveLogFormat flashDataFormat; // ".drv"
extern const DriveLogFormat obdDriveFormat; // ".obd"

/// The format that the path's ending names, in any case; null when it names none.
const DriveLogFormat* driveLogFormatOf(std::string_view path);
