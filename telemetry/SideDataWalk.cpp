#include "telemetry/SideDataWalk.h"

#include "common/Log.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <array>
#include <cinttypes>
#include <utility>
#include <vector>

namespace {

constexpr uint32_t chunkId(const char (&text)[5])
{
    uint32_t id = 0;
    for (int i = 3; i >= 0; --i)
        id = id << 8 | static_cast<uint8_t>(text[i]);
    return id;
}

constexpr uint32_t riffId = chunkId("RIFF");
constexpr uint32_t aviId = chunkId("AVI ");
constexpr uint32_t sideDataId = chunkId("JUNK");
constexpr uint32_t gsensorId = chunkId("0GDA");
constexpr uint32_t gpsId = chunkId("0GPS");

constexpr uint64_t furtherBytes = 7;

bool hasFurtherBytes(char km)
{
    return km == '1' || km == '9';
}

template <typename Record> std::span<std::byte> bytesOf(Record& record)
{
    return std::as_writable_bytes(std::span(&record, 1));
}

int64_t tenthsOfASecond(int64_t milliseconds)
{
    return milliseconds / 100;
}

} // namespace

SideDataWalk::SideDataWalk(ZVKBlackBoxData& into, ByteSource& source, std::stop_token stop)
    : m_into(into),
      m_cursor(source, std::move(stop)),
      m_sourceSize(source.size())
{
}

WalkEnd SideDataWalk::run()
{
    Step end = readFileHeader();
    if (!end)
        end = findSideData();
    while (!end)
        end = readNextRecord();
    if (*end == WalkEnd::ReadError)
        logFormat("telemetry: the device failed at byte %" PRIu64
                  "; %zu samples and %zu GPS records were read",
            m_cursor.position(), m_into.m_GSensors.size(), m_into.m_GpsRecords.size());
    return *end;
}

SideDataWalk::Step SideDataWalk::readFileHeader()
{
    const std::optional<uint32_t> riff = m_cursor.readWord();
    if (!riff || *riff != riffId)
        return endOfShortRead(WalkEnd::NotAvi);
    m_cursor.skip(4);
    const std::optional<uint32_t> form = m_cursor.readWord();
    if (!form || *form != aviId)
        return endOfShortRead(WalkEnd::NotAvi);
    return {};
}

SideDataWalk::Step SideDataWalk::findSideData()
{
    while (true) {
        const std::optional<uint32_t> id = m_cursor.readWord();
        const std::optional<uint32_t> size = id ? m_cursor.readWord() : id;
        if (!size)
            return endOfShortRead(WalkEnd::NoSideData);
        if (*id == sideDataId) {
            m_remaining = *size;
            return m_remaining == 0 ? Step(WalkEnd::Complete) : Step();
        }
        m_cursor.skip(*size);
    }
}

SideDataWalk::Step SideDataWalk::readNextRecord()
{
    const std::optional<uint32_t> id = m_cursor.readWordsUntil(gsensorId, gpsId);
    if (!id)
        return endOfShortRead(WalkEnd::EndOfFile);
    return *id == gsensorId ? readGSensorRecord() : readGpsRecord();
}

SideDataWalk::Step SideDataWalk::readGSensorRecord()
{
    ZVKAviGSensorData record;
    if (!m_cursor.readWhole(bytesOf(record.data)))
        return endOfShortRead(WalkEnd::CutGSensorRecord);
    m_into.ParseGSensor(&record.data, sizeof record.data);
    return countDown(sizeof record.data);
}

SideDataWalk::Step SideDataWalk::readGpsRecord()
{
    _AVI_GPS_DATA_T header;
    if (!m_cursor.readWhole(bytesOf(header)))
        return endOfShortRead(WalkEnd::EndOfFile);
    if (header.dwExtLength >= 0 && header.dwExtLength <= ZVKBlackBoxData::largestText) {
        if (const Step end = readText(header))
            return end;
    } else {
        if (!fits(header.dwExtLength))
            return WalkEnd::ImpossibleText;
        m_cursor.skip(static_cast<uint64_t>(header.dwExtLength));
    }
    return finishGpsRecord(header);
}

SideDataWalk::Step SideDataWalk::readText(const _AVI_GPS_DATA_T& header)
{
    std::array<char, ZVKBlackBoxData::largestText> text;
    const auto wanted = std::span(text).first(static_cast<size_t>(header.dwExtLength));
    const size_t length = m_cursor.read(std::as_writable_bytes(wanted));
    if (length < wanted.size() && m_cursor.shortfall() != ByteCursor::Shortfall::EndOfData)
        return endOfShortRead(WalkEnd::EndOfFile);

    const size_t firstSnapshot = m_into.m_NMEAs.size();
    m_into.ParseNMEA(text.data(), static_cast<uint32_t>(length));
    m_into.m_GpsRecords.push_back({
        .header = header,
        .NS = m_into.m_NMEAParser.m_Current.NS,
        .EW = m_into.m_NMEAParser.m_Current.EW,
        .firstSnapshot = firstSnapshot,
        .snapshotCount = m_into.m_NMEAs.size() - firstSnapshot,
        .samplesBefore = m_into.m_GSensors.size(),
        .pairedUpTo = m_into.m_vGpsData().size(),
    });
    pairWithWaitingSamples(m_into.m_GpsRecords.back());
    return {};
}

SideDataWalk::Step SideDataWalk::finishGpsRecord(const _AVI_GPS_DATA_T& header)
{
    if (hasFurtherBytes(header.KM))
        m_cursor.skip(furtherBytes);
    else
        m_cursor.stepBack();
    std::byte lookAhead{};
    const bool isThere = m_cursor.readWhole(std::span(&lookAhead, 1));
    if (!isThere && m_cursor.shortfall() != ByteCursor::Shortfall::EndOfData)
        return endOfShortRead(WalkEnd::EndOfFile);
    const bool isClosed = isThere && lookAhead == std::byte{0};
    if (isThere && !isClosed)
        m_cursor.stepBack();
    return countDown(static_cast<uint32_t>(header.dwExtLength) + sizeof header + (isClosed ? 1 : 0));
}

void SideDataWalk::pairWithWaitingSamples(ZVKGpsRecord& record)
{
    const std::vector<ZVKAviGSensorData>& samples = m_into.m_vGSensorData();
    size_t paired = record.pairedUpTo;
    bool hasReachedFix = false;
    while (!hasReachedFix && paired < samples.size()) {
        const int64_t sampleTime = samples[paired].data.nTimestamp;
        hasReachedFix = tenthsOfASecond(sampleTime) >= tenthsOfASecond(record.header.nTimestamp);
        ++paired;
    }
    record.pairedUpTo = paired;
}

SideDataWalk::Step SideDataWalk::countDown(uint32_t recordSize)
{
    m_remaining -= recordSize;
    return m_remaining == 0 ? Step(WalkEnd::Complete) : Step();
}

bool SideDataWalk::fits(int32_t textLength) const
{
    return textLength >= 0 && m_cursor.position() + static_cast<uint64_t>(textLength) <= m_sourceSize;
}

/// What a read that fell short means; at the end of the data it depends on where that happened.
WalkEnd SideDataWalk::endOfShortRead(WalkEnd atEndOfData) const
{
    switch (m_cursor.shortfall()) {
    case ByteCursor::Shortfall::DeviceFailed:
        return WalkEnd::ReadError;
    case ByteCursor::Shortfall::Stopped:
        return WalkEnd::Stopped;
    case ByteCursor::Shortfall::None:
    case ByteCursor::Shortfall::EndOfData:
        break;
    }
    return atEndOfData;
}
