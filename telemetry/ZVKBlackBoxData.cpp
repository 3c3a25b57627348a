#include "telemetry/ZVKBlackBoxData.h"

#include "common/FileByteSource.h"
#include "common/Log.h"
#include "telemetry/SideDataWalk.h"

#include <chrono>
#include <new>
#include <utility>

namespace {

constexpr const char* startLine = "#############################   START";

uint32_t littleEndianWord(const uint8_t* bytes)
{
    return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
}

uint32_t bigEndianWord(const uint8_t* bytes)
{
    return bytes[3] | uint32_t{bytes[2]} << 8 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[0]} << 24;
}

_SYSTEMTIME calendarTime(uint32_t secondsSince1970)
{
    const std::chrono::sys_seconds moment{std::chrono::seconds(secondsSince1970)};
    const auto midnight = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date{midnight};
    const std::chrono::hh_mm_ss time{moment - midnight};
    return {
        .wYear = static_cast<uint16_t>(static_cast<int>(date.year())),
        .wMonth = static_cast<uint16_t>(static_cast<unsigned>(date.month())),
        .wDayOfWeek = 0,
        .wDay = static_cast<uint16_t>(static_cast<unsigned>(date.day())),
        .wHour = static_cast<uint16_t>(time.hours().count()),
        .wMinute = static_cast<uint16_t>(time.minutes().count()),
        .wSecond = static_cast<uint16_t>(time.seconds().count()),
        .wMilliseconds = 0,
    };
}

} // namespace

void ZVKBlackBoxData::clear()
{
    *this = {};
}

bool ZVKBlackBoxData::ExtractStreamInformation(const char* path, std::stop_token stop)
{
    FileError why;
    const auto source = FileByteSource::open(path, why);
    if (source)
        return ExtractStreamInformation(*source, std::move(stop));
    logLine(startLine);
    clear();
    logFormat("telemetry: cannot open %s: %s", path ? path : "(no path)", why.text().c_str());
    notOpened = why;
    ending = WalkEnd::cannotOpen;
    return false;
}

bool ZVKBlackBoxData::ExtractStreamInformation(ByteSource& source, std::stop_token stop)
{
    logLine(startLine);
    clear();
    try {
        ending = SideDataWalk(*this, source, std::move(stop)).run();
    } catch (const std::bad_alloc&) {
        clear();
        logLine("telemetry: not enough memory for the side data");
        ending = WalkEnd::noMemory;
    }
    return isSuccess(ending);
}

bool ZVKBlackBoxData::ParseNMEA(char* buffer, uint32_t bufferSize)
{
    if (!buffer || bufferSize == 0)
        return false;
    char* start = buffer;
    for (char* c = buffer; c != buffer + bufferSize; ++c) {
        if (*c == '$') {
            start = c;
        } else if (*c == '\0' || *c == '\n' || *c == '\r') {
            *c = '\0';
            takeSentence({start, static_cast<size_t>(c - start)});
            start = c + 1;
        }
    }
    return true;
}

void ZVKBlackBoxData::takeSentence(std::string_view sentence)
{
    if (!sentence.starts_with("$G"))
        return;
    m_NMEAParser.parse(sentence);
    m_NMEAs.push_back(m_NMEAParser.m_Current.duplicate());
}

bool ZVKBlackBoxData::ParseGSensor(const _AVI_GSENSOR_DATA_T* record, uint32_t)
{
    m_GSensors.push_back(*record);
    return true;
}

bool ZVKBlackBoxData::ParseFrameData(const uint8_t* buffer, uint32_t bufferSize)
{
    if (!buffer || bufferSize != 8)
        return false;
    m_udatSpeedDisplay = buffer[4];
    m_udatRecPark = buffer[6];
    m_udatIncludeEvent = buffer[7];
    return true;
}

bool ZVKBlackBoxData::ParseTime(const uint8_t* buffer, uint32_t bufferSize)
{
    if (!buffer || bufferSize < 16)
        return false;
    const uint32_t seconds = littleEndianWord(buffer);
    const uint32_t eventType = bigEndianWord(buffer + 12);
    if (eventType != m_LastTimeEventType && eventType != 0)
        m_TimeEvents.push_back({
            .e = eventType == 1 ? 0u : 1u,
            .t = calendarTime(seconds),
            .f = static_cast<uint32_t>(m_Times.size()),
        });
    m_LastTimeEventType = eventType;
    m_Times.push_back(static_cast<int32_t>(seconds));
    return true;
}

bool ZVKBlackBoxData::ParseTimeEvent(const uint8_t*, uint32_t)
{
    return true;
}

uint64_t ZVKBlackBoxData::frameCount() const
{
    return m_GSensors.size() < 2 ? 1 : m_GSensors.size() - 1;
}
