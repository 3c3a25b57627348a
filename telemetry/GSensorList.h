#pragma once

#include "telemetry/ZVKAviGSensorData.h"
#include "telemetry/ZVKGSensor.h"

#include <cstddef>
#include <vector>

/// A recording's G-sensor samples in g, in file order. Kept as the records of the file, which hold the times
/// as well.
class GSensorList {
public:
    size_t size() const { return kept.size(); }
    bool empty() const { return kept.empty(); }
    /// The index is below `size`.
    ZVKGSensor operator[](size_t index) const { return sampleOf(kept[index].data); }
    /// A copy of the samples.
    operator std::vector<ZVKGSensor>() const
    {
        std::vector<ZVKGSensor> all;
        all.reserve(size());
        for (const ZVKAviGSensorData& record : kept)
            all.push_back(sampleOf(record.data));
        return all;
    }

    const std::vector<ZVKAviGSensorData>& records() const { return kept; }
    void push_back(const _AVI_GSENSOR_DATA_T& record) { kept.push_back({record}); }

private:
    static ZVKGSensor sampleOf(const _AVI_GSENSOR_DATA_T& record)
    {
        const auto inG = [](int32_t steps) { return static_cast<float>(steps) * 0.00390625f; };
        return {inG(record.xAxis), inG(record.yAxis), inG(record.zAxis)};
    }

    std::vector<ZVKAviGSensorData> kept;
};
