#pragma once

#include "settings/record/FileData.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// One field of the camera's record, for access by name.
struct FileDataField {
    enum class Type { unsigned16, unsigned32, signed32, text8 };

    std::string_view name;
    size_t offset;
    Type type;
};

/// All fields, in the order of the record.
std::span<const FileDataField> fileDataFields();

/// The value as text: a decimal number, or the characters up to the first zero byte (at most 8 bytes).
std::string fieldText(const _FILEDATA& record, const FileDataField& field);

/// Sets the field from text. False, and the record as it was, when the value does not fit: not one whole
/// decimal number within the type's range; for a text more than 8 bytes, a zero byte or anything but the
/// letters and digits that the camera knows.
bool setField(_FILEDATA& record, const FileDataField& field, std::string_view value);
