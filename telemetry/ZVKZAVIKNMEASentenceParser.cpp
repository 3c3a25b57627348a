#include "telemetry/ZVKZAVIKNMEASentenceParser.h"

namespace {

_SYSTEMTIME timeOfDay(std::string_view text)
{
    const auto [hour, minute, second] = scanThreePairs(text);
    _SYSTEMTIME time;
    time.wHour = static_cast<uint16_t>(hour);
    time.wMinute = static_cast<uint16_t>(minute);
    time.wSecond = static_cast<uint16_t>(second);
    return time;
}

} // namespace

bool ZVKZAVIKNMEASentenceParser::parse(std::string_view sentence)
{
    const auto fields = sentenceFields(sentence);
    if (!fields)
        return false;
    if (fields->front() == "$GA")
        return parseGA(*fields);
    if (fields->front() == "$GC")
        return parseGC(*fields);
    return false;
}

bool ZVKZAVIKNMEASentenceParser::parseGA(SentenceFields fields)
{
    if (fields.size() < 8)
        return false;
    m_Current.Now = timeOfDay(fields[1]);
    if (!fields[3].empty())
        m_Current.Latitude = textNumber(fields[3]);
    if (!fields[4].empty())
        m_Current.Longitude = textNumber(fields[4]);
    if (!fields[5].empty())
        m_Current.SpeedOverGround = textNumber(fields[5]);
    if (!fields[6].empty())
        m_Current.NS = fields[6].front();
    if (!fields[7].empty() && !fields[2].starts_with('V'))
        m_Current.EW = fields[7].front();
    return true;
}

bool ZVKZAVIKNMEASentenceParser::parseGC(SentenceFields fields)
{
    if (fields.size() < 9)
        return false;
    m_Current.SpeedOverGround = textNumber(fields[7]);
    m_Current.CourseOverGround = textNumber(fields[8]);
    m_Current.Now = timeOfDay(fields[1]);
    std::string_view date = fields[2];
    const auto [day, month, year] = scanThreePairs(date);
    m_Current.Now.wYear = static_cast<uint16_t>(2000 + year);
    m_Current.Now.wMonth = static_cast<uint16_t>(month);
    m_Current.Now.wDay = static_cast<uint16_t>(day);
    m_Current.SatelliteUsedCount = static_cast<uint32_t>(textInteger(fields[5]));
    m_Current.HDOP = textNumber(fields[6]);
    return true;
}
