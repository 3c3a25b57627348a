#include "fuzz/Require.h"
#include "telemetry/MemoryByteSource.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <algorithm>

namespace {

/// Gives a few bytes at a time and fails at a place.
class SlowSource : public MemoryByteSource {
public:
    SlowSource(std::span<const std::byte> bytes, uint64_t failsAt)
        : MemoryByteSource(bytes),
          m_failsAt(failsAt)
    {
    }

    std::optional<size_t> read(std::span<std::byte> into) override
    {
        if (m_place >= m_failsAt)
            return {};
        const auto count = MemoryByteSource::read(into.first(std::min<size_t>(into.size(), 13)));
        m_place += *count;
        return count;
    }

    bool seek(uint64_t offset) override
    {
        m_place = offset;
        return MemoryByteSource::seek(offset);
    }

private:
    uint64_t m_failsAt;
    uint64_t m_place = 0;
};

void requireSound(const ZVKBlackBoxData& data)
{
    require(data.m_vGSensorData.size() == data.m_GSensors.size());
    require(data.m_vGpsData.size() <= data.m_GSensors.size());
    size_t snapshots = 0;
    size_t samples = 0;
    for (const ZVKGpsRecord& record : data.m_GpsRecords) {
        require(record.firstSnapshot == snapshots);
        snapshots += record.snapshotCount;
        require(record.snapshotCount == 0 || record.NS == data.m_NMEAs[snapshots - 1].NS);
        require(record.samplesBefore >= samples && record.samplesBefore <= data.m_GSensors.size());
        samples = record.samplesBefore;
    }
    require(snapshots == data.m_NMEAs.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    const auto bytes = std::as_bytes(std::span(input, size));
    ZVKBlackBoxData atOnce;
    MemoryByteSource memory(bytes);
    const bool result = atOnce.ExtractStreamInformation(memory);
    requireSound(atOnce);
    require(atOnce.walkEnd() != WalkEnd::ReadError);

    ZVKBlackBoxData inPortions;
    SlowSource slow(bytes, UINT64_MAX);
    require(inPortions.ExtractStreamInformation(slow) == result);
    require(inPortions.walkEnd() == atOnce.walkEnd());
    require(inPortions.m_GSensors.size() == atOnce.m_GSensors.size());
    require(inPortions.m_vGpsData.size() == atOnce.m_vGpsData.size());
    require(inPortions.m_NMEAs.size() == atOnce.m_NMEAs.size());

    ZVKBlackBoxData failed;
    SlowSource failing(bytes, size / 2);
    failed.ExtractStreamInformation(failing);
    requireSound(failed);
    require(failed.m_GSensors.size() <= atOnce.m_GSensors.size());
    return 0;
}
