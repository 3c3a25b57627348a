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
    : target(into),
      cursor(source, std::move(stop)),
      sourceSize(source.size())
{
}

WalkEnd SideDataWalk::run()
{
    Step end = readFileHeader();
    if (!end)
        end = findSideData();
    while (!end)
        end = readNextRecord();
    if (*end == WalkEnd::readError)
        logFormat("telemetry: the device failed at byte %" PRIu64
                  "; %zu samples and %zu GPS records were read",
            cursor.position(), target.m_GSensors.size(), target.gpsRecords.size());
    return *end;
}

SideDataWalk::Step SideDataWalk::readFileHeader()
{
    const std::optional<uint32_t> riff = cursor.readWord();
    if (!riff || *riff != riffId)
        return endOfShortRead(WalkEnd::notAvi);
    cursor.skip(4);
    const std::optional<uint32_t> form = cursor.readWord();
    if (!form || *form != aviId)
        return endOfShortRead(WalkEnd::notAvi);
    return {};
}

SideDataWalk::Step SideDataWalk::findSideData()
{
    while (true) {
        const std::optional<uint32_t> id = cursor.readWord();
        const std::optional<uint32_t> size = id ? cursor.readWord() : id;
        if (!size)
            return endOfShortRead(WalkEnd::noSideData);
        if (*id == sideDataId) {
            remaining = *size;
            return remaining == 0 ? Step(WalkEnd::complete) : Step();
        }
        cursor.skip(*size);
    }
}

SideDataWalk::Step SideDataWalk::readNextRecord()
{
    const std::optional<uint32_t> id = cursor.readWordsUntil(gsensorId, gpsId);
    if (!id)
        return endOfShortRead(WalkEnd::endOfFile);
    return *id == gsensorId ? readGSensorRecord() : readGpsRecord();
}

SideDataWalk::Step SideDataWalk::readGSensorRecord()
{
    ZVKAviGSensorData record;
    if (!cursor.readWhole(bytesOf(record.data)))
        return endOfShortRead(WalkEnd::cutGSensorRecord);
    target.ParseGSensor(&record.data, sizeof record.data);
    return countDown(sizeof record.data);
}

SideDataWalk::Step SideDataWalk::readGpsRecord()
{
    _AVI_GPS_DATA_T header;
    if (!cursor.readWhole(bytesOf(header)))
        return endOfShortRead(WalkEnd::endOfFile);
    if (header.dwExtLength >= 0 && header.dwExtLength <= ZVKBlackBoxData::largestText) {
        if (const Step end = readText(header))
            return end;
    } else {
        if (!fits(header.dwExtLength))
            return WalkEnd::impossibleText;
        cursor.skip(static_cast<uint64_t>(header.dwExtLength));
    }
    return finishGpsRecord(header);
}

SideDataWalk::Step SideDataWalk::readText(const _AVI_GPS_DATA_T& header)
{
    std::array<char, ZVKBlackBoxData::largestText> text;
    const auto wanted = std::span(text).first(static_cast<size_t>(header.dwExtLength));
    const size_t length = cursor.read(std::as_writable_bytes(wanted));
    if (length < wanted.size() && cursor.shortfall() != ByteCursor::Shortfall::endOfData)
        return endOfShortRead(WalkEnd::endOfFile);

    const size_t firstSnapshot = target.m_NMEAs.size();
    target.ParseNMEA(text.data(), static_cast<uint32_t>(length));
    target.gpsRecords.push_back({
        .header = header,
        .NS = target.m_NMEAParser.m_Current.NS,
        .EW = target.m_NMEAParser.m_Current.EW,
        .firstSnapshot = firstSnapshot,
        .snapshotCount = target.m_NMEAs.size() - firstSnapshot,
        .samplesBefore = target.m_GSensors.size(),
        .pairedUpTo = target.m_vGpsData().size(),
    });
    pairWithWaitingSamples(target.gpsRecords.back());
    return {};
}

SideDataWalk::Step SideDataWalk::finishGpsRecord(const _AVI_GPS_DATA_T& header)
{
    if (hasFurtherBytes(header.KM))
        cursor.skip(furtherBytes);
    else
        cursor.stepBack();
    std::byte lookAhead{};
    const bool isThere = cursor.readWhole(std::span(&lookAhead, 1));
    if (!isThere && cursor.shortfall() != ByteCursor::Shortfall::endOfData)
        return endOfShortRead(WalkEnd::endOfFile);
    const bool isClosed = isThere && lookAhead == std::byte{0};
    if (isThere && !isClosed)
        cursor.stepBack();
    return countDown(static_cast<uint32_t>(header.dwExtLength) + sizeof header + (isClosed ? 1 : 0));
}

void SideDataWalk::pairWithWaitingSamples(ZVKGpsRecord& record)
{
    const std::vector<ZVKAviGSensorData>& samples = target.m_vGSensorData();
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
    remaining -= recordSize;
    return remaining == 0 ? Step(WalkEnd::complete) : Step();
}

bool SideDataWalk::fits(int32_t textLength) const
{
    return textLength >= 0 && cursor.position() + static_cast<uint64_t>(textLength) <= sourceSize;
}

/// Why the walk ends after a short read; at the end of the data it is `atEndOfData`.
WalkEnd SideDataWalk::endOfShortRead(WalkEnd atEndOfData) const
{
    switch (cursor.shortfall()) {
    case ByteCursor::Shortfall::deviceFailed:
        return WalkEnd::readError;
    case ByteCursor::Shortfall::stopped:
        return WalkEnd::stopped;
    case ByteCursor::Shortfall::none:
    case ByteCursor::Shortfall::endOfData:
        break;
    }
    return atEndOfData;
}
