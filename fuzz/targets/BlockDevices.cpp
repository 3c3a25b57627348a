#include "platform/BlockDevices.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <array>

using namespace platform;

namespace {

/// Few words, so that objects refer to each other.
std::string nextWord(std::string_view& rest)
{
    static constexpr std::array<const char*, 16> words{"", "sda", "sda1", "sdb", "sdb1", "dm-0", "mmcblk0",
        "loop0", "/", "/home", "/media/u/ZAVIK", "/tmp/image", "usb", "sdio", "flash_sdhc", "flash_mmc"};
    const size_t word = rest.empty() ? 0 : static_cast<unsigned char>(rest.front());
    rest.remove_prefix(std::min<size_t>(rest.size(), 1));
    return words[word % words.size()];
}

Block nextBlock(std::string_view& rest)
{
    Block block;
    for (std::string Block::*field : {&Block::object, &Block::device, &Block::drive, &Block::table,
             &Block::cryptoBacking, &Block::raid, &Block::raidMember, &Block::backingFile, &Block::type})
        block.*field = nextWord(rest);
    block.slaves = {nextWord(rest)};
    block.mountPoints = {nextWord(rest), nextWord(rest)};
    const std::string flags = nextWord(rest);
    block.isSwap = flags == "sda";
    block.systemHint = flags == "sda1";
    block.isFilesystem = flags != "";
    return block;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    std::string_view rest = textOf(input, std::min<size_t>(size, 600));
    BlockDevices devices;
    while (!rest.empty()) {
        switch (static_cast<unsigned char>(rest.front()) % 4) {
        case 0:
            devices.mounts.push_back({nextWord(rest), "/dev/" + nextWord(rest)});
            break;
        case 1:
            devices.drives.push_back({.object = nextWord(rest),
                .bus = nextWord(rest),
                .medium = nextWord(rest),
                .media = {nextWord(rest)},
                .mediaRemovable = true});
            break;
        case 2:
            devices.swaps.push_back("/dev/" + nextWord(rest));
            break;
        default:
            devices.blocks.push_back(nextBlock(rest));
        }
    }
    for (const VolumeDescription& volume : describedVolumes(devices))
        require(!volume.removable.value_or(false) || !holdsSystem(devices, volume.deviceName));
    for (const Block& block : devices.blocks)
        require(!block.isSwap || holdsSystem(devices, block.device) || devices.block(block.device) != &block);
    return 0;
}
