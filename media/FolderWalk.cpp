#include "media/FolderWalk.h"

#include <utility>

namespace fs = std::filesystem;

namespace {

bool leadsNowhere(const std::error_code& errorOfLink)
{
    return errorOfLink == std::errc::no_such_file_or_directory
        || errorOfLink == std::errc::too_many_symbolic_link_levels;
}

} // namespace

FolderWalk::FolderWalk(Visitor visitor, std::stop_token stop)
    : visit(std::move(visitor)),
      stopToken(std::move(stop))
{
}

void FolderWalk::enter(const std::string& folder)
{
    if (!isFirstVisit(folder))
        return;
    // The whole listing is read before any folder below is entered, so that only one folder is open at a
    // time.
    for (Entry& entry : entriesOf(folder)) {
        if (stopToken.stop_requested())
            return;
        if (entry.isFolder)
            enter(entry.path);
        else if (!visit(std::move(entry.path)))
            return;
    }
}

bool FolderWalk::isFirstVisit(const std::string& folder)
{
    std::error_code error;
    const fs::path canonical = fs::canonical(folder, error);
    if (error)
        noteFailure(folder, error);
    return !error && visitedFolders.insert(canonical.native()).second;
}

std::vector<FolderWalk::Entry> FolderWalk::entriesOf(const std::string& folder)
{
    std::vector<Entry> entries;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (stopToken.stop_requested())
            return {};
        addEntry(entries, *entry);
    }
    if (error)
        noteFailure(folder, error);
    return entries;
}

void FolderWalk::addEntry(std::vector<Entry>& entries, const fs::directory_entry& entry)
{
    // Both questions are answered from the listing itself, without a further look at the disk, except for
    // links and on file systems whose listings carry no types.
    std::error_code error;
    const bool isFolder = entry.is_directory(error);
    const bool isFile = !isFolder && !error && entry.is_regular_file(error);
    if (isFolder || isFile)
        entries.push_back({entry.path().native(), isFolder});
    else if (error && !leadsNowhere(error))
        noteFailure(entry.path().native(), error);
}

void FolderWalk::noteFailure(const std::string& path, const std::error_code& error)
{
    if (failureCount++ == 0)
        firstFailure = path + ": " + error.message();
}

std::string FolderWalk::failures() const
{
    if (failureCount < 2)
        return firstFailure;
    return firstFailure + " (and " + std::to_string(failureCount - 1) + " more)";
}
