#include "fuzz/Require.h"
#include "settings/FileDataFields.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    _FILEDATA record;
    if (size < sizeof record)
        return 0;
    std::memcpy(&record, input, sizeof record);
    // Every value that a record can hold is shown and read back; a plate that the camera cannot know is not.
    _FILEDATA back;
    std::memset(&back, 0, sizeof back);
    for (const FileDataField& field : fileDataFields()) {
        const bool isPlate = field.type == FileDataField::Type::Text8;
        if (setField(back, field, fieldText(record, field)))
            require(fieldText(back, field) == fieldText(record, field));
        else
            require(isPlate);
    }
    back.szPlateNumber = record.szPlateNumber;
    require(std::memcmp(&back, &record, sizeof record) == 0);
    finishFileData(record);
    const uint16_t checksum = record.checksum;
    finishFileData(record);
    require(record.checksum == checksum);
    // The rest of the input is a value for one of the fields.
    const std::string_view text(reinterpret_cast<const char*>(input) + sizeof record, size - sizeof record);
    for (const FileDataField& field : fileDataFields())
        (void)setField(record, field, text);
    return 0;
}
