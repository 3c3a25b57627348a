#include "media/ZVKMedia.h"

#include "common/Text.h"
#include "media/MediaPath.h"
#include "media/RecordingName.h"

#include <utility>

namespace {

/// A lenient decimal number: white space, an optional sign, digits up to the first other character; 0 without
/// digits. At most four characters long, so it cannot overflow.
int32_t lenientNumber(std::string_view text)
{
    size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || (text[at] >= '\t' && text[at] <= '\r')))
        ++at;
    const bool isNegative = at < text.size() && text[at] == '-';
    if (at < text.size() && (isNegative || text[at] == '+'))
        ++at;
    int32_t number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        number = number * 10 + (text[at] - '0');
    return isNegative ? -number : number;
}

} // namespace

ZVKMedia ZVKMedia::mediaWithPath(std::string path)
{
    return mediaWithStandardizedPath(standardizedPath(std::move(path)));
}

ZVKMedia ZVKMedia::mediaWithStandardizedPath(std::string path)
{
    ZVKMedia media;
    media.parsePath(std::move(path));
    return media;
}

void ZVKMedia::parsePath(std::string path)
{
    wholePath = std::move(path);

    const RecordingNameUnits units(mediaName());
    if (!hasRecordingNameLength(units))
        return _updateToUknown();
    const RecordingNameTemplate* known = recordingNameTemplate(units);
    if (!known)
        return;
    division = known->mediaDivision;
    if (!_parseTimeByName(units, known->datePosition()))
        _updateToUknown();
}

bool ZVKMedia::_parseTimeByName(std::string_view units, int64_t position)
{
    struct Field {
        int32_t Start::*value;
        size_t offset;
        size_t width;
        int32_t smallest;
        int32_t largest;
    };
    constexpr Field fields[] = {
        {&Start::year, 0, 4, 1970, 2700},
        {&Start::month, 4, 2, 1, 12},
        {&Start::day, 6, 2, 1, 31},
        {&Start::hour, 9, 2, 0, 24},
        {&Start::minute, 11, 2, 0, 60},
        {&Start::second, 13, 2, 0, 60},
    };

    const auto first = static_cast<size_t>(position);
    if (units.size() < recordingDateTemplate.size() + first)
        return false;
    bool isValid = true;
    for (const Field& field : fields) {
        const int32_t value = lenientNumber(units.substr(first + field.offset, field.width));
        start.*field.value = value;
        isValid = isValid && value >= field.smallest && value <= field.largest;
    }
    return isValid;
}

void ZVKMedia::_updateToUknown()
{
    start = {};
}

std::string_view ZVKMedia::mediaName() const
{
    return piecesOfPath(wholePath).name;
}

std::string_view ZVKMedia::extension() const
{
    return piecesOfPath(wholePath).extension;
}

std::string_view ZVKMedia::dir() const
{
    return piecesOfPath(wholePath).dir;
}

std::string ZVKMedia::fileName() const
{
    return std::string(mediaName()).append(".").append(extension());
}

std::string ZVKMedia::yyyymmddhhmiss() const
{
    std::string digits = std::to_string(startNumber());
    return digits.insert(0, 14 - digits.size(), '0');
}

int64_t ZVKMedia::startNumber() const
{
    // Every field is within its range or 0, so each takes its own digits.
    int64_t number = start.year;
    for (const int32_t field : {start.month, start.day, start.hour, start.minute, start.second})
        number = number * 100 + field;
    return number;
}

bool ZVKMedia::standsBefore(const ZVKMedia& other) const
{
    const auto lowerName = [](const ZVKMedia& media) {
        return asciiLower(std::string_view(media.wholePath).substr(media.wholePath.rfind('/') + 1));
    };
    const int byName = lowerName(*this).compare(lowerName(other));
    return byName != 0 ? byName < 0 : wholePath < other.wholePath;
}

int64_t ZVKMedia::sortKey() const
{
    return startNumber() * 4 - division;
}
