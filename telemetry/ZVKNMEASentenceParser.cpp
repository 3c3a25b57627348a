#include "telemetry/ZVKNMEASentenceParser.h"

#include "common/Text.h"

#include <atomic>

namespace {

// Where the "$GPGSV" series stands. Shared by all parsers by definition of the format: the next parser goes
// on where the last one stopped. Atomic: two parsers at a time are no data race, but mix their series.
std::atomic<int32_t> nextChannel = 0;
std::atomic<int32_t> lastMessage = 0;

size_t characterCount(std::string_view text)
{
    return utf16Units(text).size();
}

uint8_t scanByte(std::string_view text)
{
    return static_cast<uint8_t>(scanInteger(text, 2).value_or(0));
}

_SYSTEMTIME dateAndTime(std::string_view date, std::string_view time)
{
    const auto [hour, minute, second] = scanThreePairs(time);
    int32_t milliseconds = 0;
    if (time.starts_with('.')) {
        time.remove_prefix(1);
        milliseconds = scanInteger(time, 3).value_or(0);
    }
    const auto [day, month, year] = scanThreePairs(date);
    return {
        .wYear = static_cast<uint16_t>(2000 + year),
        .wMonth = static_cast<uint16_t>(month),
        .wDayOfWeek = 0,
        .wDay = static_cast<uint16_t>(day),
        .wHour = static_cast<uint16_t>(hour),
        .wMinute = static_cast<uint16_t>(minute),
        .wSecond = static_cast<uint16_t>(second),
        .wMilliseconds = static_cast<uint16_t>(milliseconds),
    };
}

struct Kind {
    std::string_view name;
    bool (ZVKNMEASentenceParser::*read)(SentenceFields);
};

constexpr Kind kinds[] = {
    {"$GPRMC", &ZVKNMEASentenceParser::parseGPRMC},
    {"$GPGGA", &ZVKNMEASentenceParser::parseGPGGA},
    {"$GPGSV", &ZVKNMEASentenceParser::parseGPGSV},
    {"$GPGSA", &ZVKNMEASentenceParser::parseGPGSA},
};

} // namespace

bool ZVKNMEASentenceParser::parse(std::string_view sentence)
{
    const auto fields = sentenceFields(sentence);
    if (!fields)
        return false;
    for (const Kind& kind : kinds)
        if (fields->front() == kind.name)
            return (this->*kind.read)(*fields);
    return false;
}

bool ZVKNMEASentenceParser::parseGPRMC(SentenceFields fields)
{
    if (fields.size() < 10)
        return false;
    m_Current.SpeedOverGround = textNumber(fields[7]);
    m_Current.CourseOverGround = textNumber(fields[8]);
    if (characterCount(fields[9]) == 6 && characterCount(fields[1]) == 10)
        m_Current.Now = dateAndTime(fields[9], fields[1]);
    return true;
}

bool ZVKNMEASentenceParser::parseGPGGA(SentenceFields fields)
{
    if (fields.size() < 9)
        return false;
    if (!fields[2].empty())
        m_Current.Latitude = textNumber(fields[2]);
    if (!fields[3].empty())
        m_Current.NS = fields[3].front();
    if (!fields[4].empty())
        m_Current.Longitude = textNumber(fields[4]);
    if (!fields[5].empty())
        m_Current.EW = fields[5].front();
    m_Current.SatelliteUsedCount = static_cast<uint32_t>(textInteger(fields[7]));
    if (!fields[8].empty())
        m_Current.HDOP = textNumber(fields[8]);
    return true;
}

bool ZVKNMEASentenceParser::parseGPGSV(SentenceFields fields)
{
    if (fields.size() < 4)
        return false;
    m_Current.SatelliteCount = static_cast<uint32_t>(textInteger(fields[3]));
    if (m_Current.SatelliteCount == 0)
        return true;
    const int32_t message = textInteger(fields[2]);
    if (message == 1)
        nextChannel = 0;
    else if (message != int64_t{lastMessage} + 1)
        return false;
    storeSatellites(fields);
    lastMessage = message;
    return true;
}

void ZVKNMEASentenceParser::storeSatellites(SentenceFields fields)
{
    const size_t blockCount = (fields.size() - 4) / 4;
    for (size_t b = 0; b < blockCount && nextChannel < ZVKGpsData::channelCount; ++b) {
        const uint8_t prn = scanByte(fields[4 + 4 * b]);
        const uint8_t snr = scanByte(fields[7 + 4 * b]);
        m_Current.setSVonChannelWithFirst(prn, snr, nextChannel++);
    }
}

bool ZVKNMEASentenceParser::parseGPGSA(SentenceFields fields)
{
    if (fields.size() < 18)
        return false;
    for (int32_t slot = 0; slot < ZVKGpsData::channelCount; ++slot) {
        const int32_t prn = textInteger(fields[3 + static_cast<size_t>(slot)]);
        m_Current.setSatelliteUsed(static_cast<uint8_t>(prn), slot);
    }
    m_Current.PDOP = textNumber(fields[15]);
    m_Current.HDOP = textNumber(fields[16]);
    m_Current.VDOP = textNumber(fields[17]);
    return true;
}
