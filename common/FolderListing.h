#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// A folder that is open for listing, its names in the order of the file system.
class FolderListing {
public:
    enum class Links { follow, refuse };
    enum class Kind { file, folder, link, other };

    struct Entry {
        std::string_view name; ///< valid until the next entry
        Kind kind = Kind::other;
    };

    /// `Links::refuse`: a path that is itself a link is not opened.
    FolderListing(const std::string& path, Links links);

    /// Why the folder could not be opened or read to its end; none otherwise.
    std::error_code error() const { return trouble; }
    /// Which file system the folder is on; 0 when it could not be found out.
    uint64_t volume() const { return device; }
    /// The next entry, without "." and ".."; nothing at the end and after a failure (see `error`).
    std::optional<Entry> next();

    /// Whether the path, its links followed, is a regular file on that file system.
    static bool isFile(const std::string& path, uint64_t volume);

private:
    struct Close {
        void operator()(void* folder) const;
    };

    Kind kindOf(const char* name, unsigned char listed);

    std::unique_ptr<void, Close> handle;
    uint64_t device = 0;
    std::error_code trouble;
};
