#pragma once

#include "common/FolderListing.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// One walk through a folder and all folders below it, depth first, a folder at the point where it stands in
/// its parent's listing. Names come in the order of the file system, hidden ones included.
///
/// The walk stays on the volume of the folder in which it began, and below that folder: a folder of another
/// file system is passed over, and so is a link that leads outside. A link to a folder inside is not followed
/// either: the walk comes to that folder by itself, so every folder is entered once. What is neither a folder
/// nor a regular file (a dangling link, a pipe) is passed over.
class FolderWalk {
public:
    /// Whether a file of that name is looked for.
    using Filter = std::function<bool(std::string_view name)>;
    /// Called with the path of every regular file that is looked for; false passes over the rest of its
    /// folder (not of the enclosing ones).
    using Visitor = std::function<bool(std::string path)>;

    /// The walk ends early when a stop is requested.
    FolderWalk(Filter filter, Visitor visitor, std::stop_token stop);

    /// Once. The paths that the visitor gets begin with the folder as it is given here.
    void run(const std::string& folder);

    /// Why the folder itself could not be read (also when it went away during the walk); none when it could.
    std::error_code rootError() const { return errorOfRoot; }
    /// What could not be read below it; a folder that a system keeps for itself (lost+found, ...) is no
    /// failure.
    size_t failureCount() const { return failed; }
    /// The first of them, and why.
    const std::string& firstFailure() const { return firstFailed; }
    std::error_code firstError() const { return errorOfFirst; }
    /// Whether files that are looked for, or whole folders, were passed over because the visitor said so.
    bool hasPassedOver() const { return passedOver; }

private:
    struct Entry {
        std::string path;
        bool isFolder = false;
    };

    void enter(const std::string& folder);
    std::vector<Entry> entriesOf(const std::string& folder);
    bool leadsToFileInside(const std::string& link);
    void noteFailure(const std::string& path, std::error_code error);

    Filter isWanted;
    Visitor visit;
    std::stop_token stopToken;
    std::string root; // as it was given
    std::string canonicalRoot;
    uint64_t volume = 0;
    std::error_code errorOfRoot;
    size_t failed = 0;
    std::string firstFailed;
    std::error_code errorOfFirst;
    bool passedOver = false;
};
