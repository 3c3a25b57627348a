#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>

/// A list in which equal neighbours are kept once: the memory follows what differs. `Kept` is what an element
/// is kept as; it is made from one and makes one again.
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

    std::deque<Run> runs; // grows without a second copy of itself
    size_t count = 0;
};
