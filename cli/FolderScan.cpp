#include "cli/FolderScan.h"

#include "common/Text.h"
#include "media/MediaPath.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace cli {

std::optional<MediaScan> scanFolder(const std::string& folder, Streams streams)
{
    const std::string path = standardizedPath(folder);
    std::error_code error;
    const std::filesystem::directory_iterator listing(path, error);
    if (!error)
        return ZVKMediaList::scan(path);
    failure(streams, folder, error.message());
    return {};
}

ExitCode scanResult(
    const MediaScan& scan, const std::string& folder, Streams streams, const std::vector<std::string>& unread)
{
    for (const std::string& path : unread)
        failure(streams, path, "could not be read");
    if (scan.state.isCut)
        streams.err << "zavikctl: " << visibleText(standardizedPath(folder)) << ": only the first "
                    << scan.medias.size() << " recordings that were found are listed\n";
    if (!scan.state.failure.empty())
        return failure(streams, folder, "could not read " + scan.state.failure);
    return unread.empty() ? ExitCode::success : ExitCode::failure;
}

} // namespace cli
