#include "fuzz/Require.h"
#include "telemetry/ZVKBlackBoxData.h"
#include "tests/support/UnreliableSource.h"

namespace {

void requireSound(const ZVKBlackBoxData& data)
{
    require(data.m_vGSensorData().size() == data.m_GSensors.size());
    require(data.m_vGpsData().size() <= data.m_GSensors.size());
    size_t snapshots = 0;
    size_t samples = 0;
    for (const ZVKGpsRecord& record : data.gpsRecords) {
        require(record.firstSnapshot == snapshots);
        snapshots += record.snapshotCount;
        require(record.snapshotCount == 0 || record.NS == data.m_NMEAs[snapshots - 1].NS);
        require(record.samplesBefore >= samples && record.samplesBefore <= data.m_GSensors.size());
        samples = record.samplesBefore;
    }
    require(snapshots == data.m_NMEAs.size());
}

} // namespace

void fuzz(std::string_view input)
{
    const auto bytes = std::as_bytes(std::span(input));
    ZVKBlackBoxData atOnce;
    MemoryByteSource memory(bytes);
    const bool result = atOnce.ExtractStreamInformation(memory);
    requireSound(atOnce);
    require(atOnce.walkEnd() != WalkEnd::readError);

    ZVKBlackBoxData inPortions;
    UnreliableSource slow(bytes);
    slow.portion = 13;
    require(inPortions.ExtractStreamInformation(slow) == result);
    require(inPortions.walkEnd() == atOnce.walkEnd());
    require(inPortions.m_GSensors.size() == atOnce.m_GSensors.size());
    require(inPortions.m_vGpsData().size() == atOnce.m_vGpsData().size());
    require(inPortions.m_NMEAs.size() == atOnce.m_NMEAs.size());

    ZVKBlackBoxData failed;
    UnreliableSource failing(bytes);
    failing.failsAt = input.size() / 2;
    failed.ExtractStreamInformation(failing);
    requireSound(failed);
    require(failed.m_GSensors.size() <= atOnce.m_GSensors.size());
}
