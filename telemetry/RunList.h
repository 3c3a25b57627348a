#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>

/// A list in which equal neighbours are stored once. `Kept` is the stored form of an element; each converts
/// to the other.
template <typename Value, typename Kept> class RunList {
public:
    size_t size() const { return count; }
    bool empty() const { return count == 0; }

    void push_back(const Value& value)
    {
        const Kept kept(value);
        if (runs.empty() || !(runs.back().kept == kept))
            runs.push_back({kept, count});
        ++count;
    }

    /// The index is below `size`.
    Value operator[](size_t index) const
    {
        const auto after = std::ranges::upper_bound(runs, index, {}, &Run::first);
        return static_cast<Value>((after - 1)->kept);
    }
    Value back() const { return static_cast<Value>(runs.back().kept); }

    bool operator==(const RunList&) const = default;

private:
    struct Run {
        Kept kept;
        size_t first = 0; // index

        bool operator==(const Run&) const = default;
    };

    std::deque<Run> runs; // grows without being copied
    size_t count = 0;
};
