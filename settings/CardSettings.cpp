#include "settings/CardSettings.h"

#include "cardtools/Volumes.h"
#include "common/Log.h"
#include "platform/ReplaceFile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

constexpr const char* cardName = "ZAVIK";
// Whatever is called config.bin but is no settings file by far is neither copied nor replaced.
constexpr uintmax_t largestToKeep = 16 * 1024 * 1024;

std::string settingsPathOn(const TKUSBDiskEntity& disk)
{
    return (fs::path(disk.mountedURL) / "config.bin").native();
}

bool isThere(const std::string& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

bool holds(const std::string& contents, const std::optional<_FILEDATA>& known)
{
    return known && contents.size() == sizeof(_FILEDATA)
        && std::memcmp(contents.data(), &*known, sizeof(_FILEDATA)) == 0;
}

/// The file's bytes; nothing when they cannot all be read or are too many.
std::optional<std::string> contentsOf(const std::string& path)
{
    std::error_code error;
    const uintmax_t size = fs::file_size(path, error);
    if (error || size > largestToKeep)
        return {};
    std::string contents(size_t(size), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(contents.data(), std::streamsize(size));
    if (!file || file.peek() != std::ifstream::traits_type::eof())
        return {};
    return contents;
}

enum class Previous { Known, Kept, CannotBeKept };

Previous keepOthers(const std::string& path, const std::optional<_FILEDATA>& known)
{
    std::error_code ignored;
    // What is neither a file nor missing is refused by the save itself.
    if (!fs::is_regular_file(path, ignored))
        return Previous::Known;
    const auto contents = contentsOf(path);
    std::string failure = "it cannot be read or is too large";
    if (contents) {
        if (holds(*contents, known))
            return Previous::Known;
        failure = platform::replaceFile(path + ".bak", *contents);
    }
    if (failure.empty())
        return Previous::Kept;
    logFormat("%s cannot be kept: %s", path.c_str(), failure.c_str());
    return Previous::CannotBeKept;
}

} // namespace

CardSettings findUSBVolume(platform::DiskArbitration& disks)
{
    if (usbVolumeURLs(disks).empty()) {
        logLine("no removable devices");
        return {};
    }
    const auto disk = preferredUSBDisk(disks);
    if (!disk)
        return {};
    std::error_code error;
    if (fs::file_size(settingsPathOn(*disk), error) != sizeof(_FILEDATA) || error)
        return {};
    return {settingsPathOn(*disk), disk};
}

bool isNamedAsCard(const CardSettings& card)
{
    return !card.disk || card.disk->volumeName == cardName;
}

CardSettings nameAsCard(const CardSettings& card, platform::DiskArbitration& disks)
{
    const std::string failure = disks.setVolumeName(card.disk->mountedURL, cardName);
    if (failure.empty())
        return findUSBVolume(disks);
    logFormat("error=%s", failure.c_str());
    return card;
}

std::optional<std::string> settingsPathToWrite(CardSettings& card, platform::DiskArbitration& disks)
{
    if (card.disk && isThere(settingsPathOn(*card.disk)))
        return settingsPathOn(*card.disk);
    const std::vector<TKUSBDiskEntity> present = usbDiskEntities(disks);
    const auto isTheCard = [&](const TKUSBDiskEntity& disk) {
        return card.disk && disk.key == card.disk->key;
    };
    auto disk = preferredUSBDisk(present);
    if (const auto same = std::ranges::find_if(present, isTheCard); same != present.end()) {
        disk = *same;
        card = {card.path.empty() ? std::string() : settingsPathOn(*same), disk};
    }
    return disk ? std::optional(settingsPathOn(*disk)) : std::nullopt;
}

SaveResult saveFileDataKeeping(
    const _FILEDATA& record, const std::string& path, const std::optional<_FILEDATA>& known)
{
    const Previous previous = keepOthers(path, known);
    if (previous == Previous::CannotBeKept)
        return {"msg.file_open_fail"};
    return {saveFileData(record, path), previous == Previous::Kept};
}

bool readsMiles(platform::DiskArbitration& disks, bool m_bKorean)
{
    _FILEDATA record;
    initFileDataForRegion(record, m_bKorean);
    if (const std::string path = findUSBVolume(disks).path; !path.empty())
        loadFileData(path, record);
    return (record.speed_disp_unit & 0xFF) != 0;
}
