#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// A file that is opened and read on a thread of its own, so that callers can stop waiting for a card that
/// hangs. One reader at a time; `giveUp` may come from any thread.
class PatientFile {
public:
    /// Returns at once; the file is opened on the other thread.
    explicit PatientFile(std::string path);
    /// Does not wait for a read that hangs.
    ~PatientFile();
    PatientFile(const PatientFile&) = delete;
    PatientFile& operator=(const PatientFile&) = delete;

    /// The file's size; -1 when it cannot be opened, is no plain file, is empty, or was given up.
    int64_t size();
    /// Bytes read at the offset, at most `count`; 0 at the end, -1 on failure or when given up.
    int64_t read(uint64_t offset, char* into, size_t count);
    /// Ends every wait; later calls fail.
    void giveUp();
    /// From now on the file is given up when a wait lasts beyond the moment, or soon after a stop is
    /// requested while one lasts. For the reader only.
    void waitUntil(std::chrono::steady_clock::time_point moment, std::stop_token stop);
    /// Why the file could not be opened or read, as a readable message; empty if it could.
    std::string failure() const;

private:
    struct Shared;
    static void serve(const std::shared_ptr<Shared>& shared);
    void wait(std::unique_lock<std::mutex>& lock, const bool& isDone);

    std::shared_ptr<Shared> shared;
    std::optional<std::chrono::steady_clock::time_point> deadline;
    std::stop_token stopped;
};
