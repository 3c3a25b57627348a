#include "media/FolderWalk.h"

#include "common/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

namespace fs = std::filesystem;

namespace {

bool isForbidden(std::error_code error)
{
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted;
}

/// Folders that file systems, desktops and other systems make for themselves.
bool isKeptBySystem(const std::string& folder)
{
    constexpr std::array names{"lost+found", "system volume information", "$recycle.bin", "recycler",
        ".trashes", ".spotlight-v100", ".fseventsd", ".temporaryitems", ".documentrevisions-v100"};
    const std::string name = asciiLower(folder.substr(folder.rfind('/') + 1));
    return std::ranges::find(names, name) != names.end() || name.starts_with(".trash-");
}

} // namespace

FolderWalk::FolderWalk(Filter filter, Visitor visitor, std::stop_token stop)
    : isWanted(std::move(filter)),
      visit(std::move(visitor)),
      stopToken(std::move(stop))
{
}

void FolderWalk::run(const std::string& folder)
{
    root = folder;
    std::error_code error;
    canonicalRoot = fs::canonical(folder, error).native();
    enter(folder);
    // When the card was pulled, the failure is the root's, not that of the folder that was being read.
    if (failed > 0 && !errorOfRoot) {
        FolderListing again(root, FolderListing::Links::follow);
        again.next();
        errorOfRoot = again.error();
    }
}

void FolderWalk::enter(const std::string& folder)
{
    // The whole listing is read before any folder below is entered, so that only one folder is open at a
    // time.
    std::vector<Entry> entries = entriesOf(folder);
    for (auto entry = entries.begin(); entry != entries.end() && !stopToken.stop_requested(); ++entry) {
        if (entry->isFolder) {
            enter(entry->path);
        } else if (!visit(std::move(entry->path))) {
            passedOver = passedOver || entry + 1 != entries.end();
            return;
        }
    }
}

std::vector<FolderWalk::Entry> FolderWalk::entriesOf(const std::string& folder)
{
    const bool isRoot = folder == root;
    FolderListing listing(folder, isRoot ? FolderListing::Links::follow : FolderListing::Links::refuse);
    std::vector<Entry> entries;
    if (isRoot)
        volume = listing.volume();
    else if (listing.volume() != 0 && listing.volume() != volume)
        return entries;
    const std::string beginning = folder.ends_with('/') ? folder : folder + '/';
    while (const auto entry = listing.next()) {
        if (stopToken.stop_requested())
            return {};
        const bool isFolder = entry->kind == FolderListing::Kind::folder;
        if (!isFolder && (entry->kind == FolderListing::Kind::other || !isWanted(entry->name)))
            continue;
        std::string path;
        path.reserve(beginning.size() + entry->name.size());
        path.append(beginning).append(entry->name);
        if (entry->kind != FolderListing::Kind::link || leadsToFileInside(path))
            entries.push_back({std::move(path), isFolder});
    }
    if (listing.error())
        noteFailure(folder, listing.error());
    return entries;
}

bool FolderWalk::leadsToFileInside(const std::string& link)
{
    std::error_code error;
    const std::string target = fs::canonical(link, error).native();
    const std::string beginning = canonicalRoot.ends_with('/') ? canonicalRoot : canonicalRoot + '/';
    return !error && target.starts_with(beginning) && FolderListing::isFile(target, volume);
}

void FolderWalk::noteFailure(const std::string& path, std::error_code error)
{
    if (path == root) {
        errorOfRoot = error;
    } else if (!isForbidden(error) || !isKeptBySystem(path)) {
        if (failed++ == 0) {
            firstFailed = path;
            errorOfFirst = error;
        }
    }
}
