#include "platform/disks/BlockDevices.h"
#include "fuzz/Require.h"

using namespace platform;

namespace {

/// Few words, so that objects refer to each other.
std::string nextWord(std::string_view& rest)
{
    static constexpr std::array<const char*, 16> words{"", "sda", "sda1", "sdb", "sdb1", "dm-0", "mmcblk0",
        "loop0", "/", "/home", "/media/u/ZAVIK", "/tmp/image", "usb", "sdio", "flash_sdhc", "flash_mmc"};
    return words[nextByte(rest) % words.size()];
}

} // namespace

/// Mounts, swaps, drives and blocks in any order, each made of words.
void fuzz(std::string_view input)
{
    std::string_view rest = input.substr(0, 240);
    BlockDevices devices;
    while (!rest.empty()) {
        const auto kind = static_cast<unsigned char>(rest.front()) % 4;
        const std::string name = nextWord(rest);
        if (kind == 0) {
            devices.mounts.push_back({name, "/dev/" + nextWord(rest)});
        } else if (kind == 1) {
            devices.drives.push_back(
                {.object = name, .bus = nextWord(rest), .media = {nextWord(rest)}, .mediaRemovable = true});
        } else if (kind == 2) {
            devices.swaps.push_back("/dev/" + name);
        } else {
            Block block{.object = name, .slaves = {nextWord(rest)}, .isSwap = rest.starts_with("s")};
            for (std::string Block::*field : {&Block::device, &Block::drive, &Block::table,
                     &Block::cryptoBacking, &Block::raid, &Block::raidMember, &Block::backingFile})
                block.*field = nextWord(rest);
            block.isFilesystem = true;
            block.mountPoints = {nextWord(rest)};
            devices.blocks.push_back(std::move(block));
        }
    }
    for (const VolumeDescription& volume : describedVolumes(devices))
        require(!volume.removable.value_or(false) || !holdsSystem(devices, volume.deviceName));
    for (const Block& block : devices.blocks)
        require(!block.isSwap || holdsSystem(devices, block.device) || devices.block(block.device) != &block);
}
