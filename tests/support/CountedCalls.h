#pragma once

#include <string>
#include <vector>

/// The calls by which this process makes files outlive a pulled card or a power cut, and `kill`, while one of
/// these lives: which, in which order. One at a time.
class CountedCalls {
public:
    CountedCalls();
    ~CountedCalls();
    CountedCalls(const CountedCalls&) = delete;
    CountedCalls& operator=(const CountedCalls&) = delete;

    /// "fsync", "fsync folder", "syncfs", "rename" (renameat, too) and "kill", of any thread.
    std::vector<std::string> names() const;
    /// From now on the calls of this name do nothing and fail with this error; with 0 they work again.
    void fail(const std::string& name, int error);
};
