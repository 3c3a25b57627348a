#include "fuzz/Require.h"
#include "settings/record/FileDataFields.h"

void fuzz(std::string_view input)
{
    _FILEDATA record;
    if (input.size() < sizeof record)
        return;
    std::memcpy(&record, input.data(), sizeof record);
    // Every value that a record can hold is shown and read back; a plate that the camera cannot know is not.
    _FILEDATA back;
    std::memset(&back, 0, sizeof back);
    for (const FileDataField& field : fileDataFields()) {
        const bool isPlate = field.type == FileDataField::Type::text8;
        if (setField(back, field, fieldText(record, field)))
            require(fieldText(back, field) == fieldText(record, field));
        else
            require(isPlate);
    }
    back.szPlateNumber = record.szPlateNumber;
    require(std::memcmp(&back, &record, sizeof record) == 0);
    const _FILEDATA finished = FinishedFileData(record).record();
    require(FinishedFileData(finished).record().checksum == finished.checksum);
    record = finished;
    // The rest of the input is a value for one of the fields.
    const std::string_view text = input.substr(sizeof record);
    for (const FileDataField& field : fileDataFields())
        (void)setField(record, field, text);
}
