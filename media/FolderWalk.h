#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <vector>

/// One walk through a folder and all folders below it, depth first, a folder at the point where it stands in
/// its parent's listing. Names come in the order of the file system, hidden ones included.
///
/// Links to folders are entered, but every folder only once, however many links lead to it. What is neither
/// a folder nor a regular file (a dangling link, a pipe) is passed over. What cannot be read contributes
/// nothing.
class FolderWalk {
public:
    /// Called with the path of every regular file; false passes over the rest of its folder (not of the
    /// enclosing ones).
    using Visitor = std::function<bool(std::string path)>;

    /// The walk ends early when a stop is requested.
    FolderWalk(Visitor visitor, std::stop_token stop);

    /// The paths that the visitor gets begin with the folder as it is given here.
    void enter(const std::string& folder);

    /// What could not be read, for the log; empty when everything could.
    std::string failures() const;

private:
    struct Entry {
        std::string path;
        bool isFolder = false;
    };

    bool isFirstVisit(const std::string& folder);
    std::vector<Entry> entriesOf(const std::string& folder);
    void addEntry(std::vector<Entry>& entries, const std::filesystem::directory_entry& entry);
    void noteFailure(const std::string& path, const std::error_code& error);

    Visitor visit;
    std::stop_token stopToken;
    std::unordered_set<std::string> visitedFolders; // canonical paths
    size_t failureCount = 0;
    std::string firstFailure;
};
