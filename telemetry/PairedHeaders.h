#pragma once

#include "telemetry/ZVKAviGpsData.h"
#include "telemetry/ZVKGpsRecord.h"

#include <algorithm>
#include <span>

/// The GPS headers by G-sensor sample: element i is the header of the record that sample i is paired with. A
/// view; the records must outlive it.
class PairedHeaders {
public:
    explicit PairedHeaders(std::span<const ZVKGpsRecord> all)
        : records(all)
    {
    }

    size_t size() const { return records.empty() ? 0 : records.back().pairedUpTo; }
    bool empty() const { return size() == 0; }
    /// The index is below `size`.
    ZVKAviGpsData operator[](size_t index) const
    {
        return {std::ranges::upper_bound(records, index, {}, &ZVKGpsRecord::pairedUpTo)->header};
    }

private:
    std::span<const ZVKGpsRecord> records;
};
