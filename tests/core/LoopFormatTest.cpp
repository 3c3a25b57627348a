#include "cardtools/format/FormatWriting.h"
#include "platform/disks/DeviceUse.h"
#include "platform/disks/WrittenBytes.h"
#include "tests/support/CountedCalls.h"
#include "tests/support/LoopDevice.h"
#include "tests/support/Testing.h"
#include "tools/formathelper/BootSector.h"
#include "tools/formathelper/FormatCard.h"

#include <sys/sysmacros.h>

namespace {

constexpr uint64_t gib = uint64_t(1) << 30;

FormatPolicy loopPolicy()
{
    FormatPolicy policy;
    policy.acceptsLoopDevices = true;
    policy.patience = {};
    return policy;
}

FormatRequest request(const LoopDevice& card, uint64_t size)
{
    return {card.name, clusterSizeByVolumeSizeInKB(size), size, card.sequence()};
}

std::vector<std::byte> start(const std::string& path)
{
    std::vector<std::byte> bytes(checkedBytes);
    std::ifstream(path, std::ios::binary).read(reinterpret_cast<char*>(bytes.data()), checkedBytes);
    return bytes;
}

using LoopFormat = LoopDeviceTest;

} // namespace

TEST_F(LoopFormat, EverySizeOfCardIsAsTheCameraNeedsIt)
{
    for (const uint64_t size : {gib / 2, 4 * gib, 7 * gib - 512, 7 * gib, 32 * gib, 128 * gib}) {
        SCOPED_TRACE(size);
        const LoopDevice card(size);
        ASSERT_NE(card.name, "");
        const uint64_t before = platform::writtenBytes(card.name).value();
        const FormatResult result = formatCard(request(card, size), loopPolicy());
        EXPECT_EQ(result.status, FormatStatus::ok) << result.detail;
        const uint64_t written = platform::writtenBytes(card.name).value() - before;
        EXPECT_GE(written, bytesOfFormat(size));
        EXPECT_LE(written, bytesOfFormat(size) + uint64_t(3) * 4096) << "some blocks may go twice";
        const auto bytes = start(card.image());
        EXPECT_EQ(fileSystemFault(bytes, {size, size < 7 * gib ? 32 : 128}), "");
        // Each field counts: with one bit of it changed the card is not as asked.
        for (const size_t offset : {11, 13, 14, 16, 17, 19, 21, 22, 32, 37, 40, 42, 44, 48, 50, 65, 66, 71,
                 82, 511, 512, 996, 3072, 3584 + 484}) {
            auto changed = bytes;
            changed[offset] ^= std::byte(4);
            EXPECT_NE(fileSystemFault(changed, {size, size < 7 * gib ? 32 : 128}), "") << offset;
        }
        EXPECT_TRUE(platform::runTool({{"fsck.fat", "-n", card.path()}, 1min}).succeeded());
    }
}

TEST_F(LoopFormat, WhatFailsIsToldAsWhatItIs)
{
    const uint64_t size = gib / 2;
    const TempFolder folder;
    FormatPolicy policy = loopPolicy();
    FormatResult result;
    const auto with = [&](const LoopDevice& card, const std::string& text) {
        policy.mkfs = text.empty() ? folder.path("nothing") : folder.program("tool", text);
        policy.mkfsLimit = std::chrono::milliseconds(text.find("sleep") == std::string::npos ? 60'000 : 100);
        result = formatCard(request(card, size), policy);
        return result.status;
    };
    const LoopDevice card(size);
    EXPECT_EQ(with(card, ""), FormatStatus::toolMissing);
    EXPECT_EQ(with(card, "sleep 600\n"), FormatStatus::tookTooLong);
    EXPECT_EQ(with(card, "exit 0\n"), FormatStatus::notAsAsked);
    EXPECT_EQ(with(card, "echo 'mkfs.fat 4.2'; echo no >&2; exit 1\n"), FormatStatus::toolFailed);
    EXPECT_EQ(result.detail, "no");
    {
        CountedCalls calls;
        calls.fail("fsync", EIO);
        EXPECT_EQ(with(card, "exec mkfs.fat \"$@\"\n"), FormatStatus::mediumErrors);
        EXPECT_EQ(result.detail, "Input/output error");
        calls.fail("kill", EPERM);
        EXPECT_EQ(with(card, "sleep 1\n"), FormatStatus::stillWorking);
    }
    EXPECT_EQ(with(card, "blockdev --setro " + card.path() + "; echo no >&2; exit 1\n"),
        FormatStatus::writeProtected);

    const LoopDevice lost(size);
    // It reads well as long as the system remembers it.
    EXPECT_EQ(with(lost,
                  "mkfs.fat \"$@\" && sync && exec dd if=/dev/zero bs=4096 count=64 conv=notrunc of="
                      + lost.image() + "\n"),
        FormatStatus::notAsAsked);
    EXPECT_EQ(
        with(lost, "truncate -s 0 " + lost.image() + "; exec mkfs.fat \"$@\"\n"), FormatStatus::mediumErrors);
    EXPECT_TRUE(result.detail.starts_with("mkfs.fat: failed whilst writing")) << result.detail;

    const LoopDevice pulled(size);
    policy.roots.dev = folder.path();
    ASSERT_TRUE(platform::runTool({{"cp", "-a", pulled.path(), folder.path()}}).succeeded());
    EXPECT_EQ(
        with(pulled, "rm " + folder.path(pulled.name) + "; echo no >&2; exit 1\n"), FormatStatus::cardGone);

    policy = loopPolicy();
    policy.fsck = folder.program("tool", "echo fsck.fat 4.2; echo bad; echo clusters; exit 1\n");
    const LoopDevice second(size);
    result = formatCard(request(second, size), policy);
    EXPECT_EQ(result.status, FormatStatus::notClean);
    EXPECT_EQ(result.detail, "bad");
}

TEST_F(LoopFormat, DeviceThatIsNotWhatTheKernelToldIsNotTouched)
{
    constexpr uint64_t size = gib / 2;
    enum class Odd { nothing, number, bytes, readOnly, linked, built };
    for (const auto& [odd, expected] :
        {std::pair(Odd::nothing, FormatStatus::ok), {Odd::number, FormatStatus::notADevice},
            {Odd::bytes, FormatStatus::otherSize}, {Odd::readOnly, FormatStatus::writeProtected},
            {Odd::linked, FormatStatus::notADevice}, {Odd::built, FormatStatus::heldByOthers}}) {
        SCOPED_TRACE(static_cast<int>(odd));
        const LoopDevice card(size, odd == Odd::readOnly ? "--read-only" : "--nooverlap");
        const uint64_t told = odd == Odd::bytes ? size + 512 : size;
        const TempFolder folder;
        const std::string device = "sys/devices/virtual/block/" + card.name;
        folder.file(device + "/dev", odd == Odd::number ? "7:99" : platform::blockNumber(card.path()));
        folder.file(device + "/size", std::to_string(told / 512));
        folder.file(device + "/ro", "0");
        fs::create_directories(folder.path("sys/class/block"));
        fs::create_symlink("../../../" + device, folder.path("sys/class/block/" + card.name));
        FormatPolicy policy = loopPolicy();
        policy.roots.sys = folder.path("sys");
        policy.mkfs =
            folder.program("mkfs", "echo run > " + folder.path("mark") + "; exec mkfs.fat \"$@\"\n");
        if (odd == Odd::linked) {
            policy.roots.dev = folder.path();
            fs::create_symlink(card.path(), folder.path(card.name));
        }
        // Something is built on the card after the first look.
        if (odd == Odd::built)
            policy.opened = [&] { folder.file(device + "/holders/dm-0"); };
        EXPECT_EQ(formatCard({card.name, 32, told, "-"}, policy).status, expected);
        EXPECT_EQ(fs::exists(folder.path("mark")), odd == Odd::nothing);
    }
}

TEST_F(LoopFormat, CardThatIsInUseIsNotTouchedHoweverThatIsHidden)
{
    const uint64_t size = gib / 2;
    const LoopDevice card(size, "--partscan");
    const TempFolder folder;
    FormatPolicy policy = loopPolicy();
    const auto formatted = [&](const std::string& part = {}) {
        const std::string name = card.name + part;
        return formatCard({name, 32, platform::kernelDevice(name).size, card.sequence()}, policy);
    };
    const int holder = open(card.path().c_str(), O_RDONLY | O_CLOEXEC);
    FormatResult result = formatted();
    EXPECT_EQ(result.status, FormatStatus::stillMounted);
    EXPECT_EQ(result.detail, platform::firstLine("/proc/self/comm") + " (" + std::to_string(getpid()) + ")");
    close(holder);
    // Mounted where nobody here can see it.
    const int claim = open(card.path().c_str(), O_RDONLY | O_EXCL | O_CLOEXEC);
    folder.file("proc/self/mountinfo", contents("/proc/self/mountinfo"));
    policy.roots.proc = folder.path("proc");
    result = formatted();
    EXPECT_EQ(result.status, FormatStatus::stillMounted);
    EXPECT_EQ(result.detail, "Device or resource busy");
    policy.roots.proc = "/proc";
    close(claim);
    // The program that is installed takes no file for a card.
    EXPECT_EQ(formatCard(request(card, size), FormatPolicy()).status, FormatStatus::notACard);

    // A loop device upon it, by a node made by hand.
    const std::string node = folder.path("node");
    ASSERT_EQ(mknod(node.c_str(), S_IFBLK | 0600, makedev(7, std::stoi(card.name.substr(4)))), 0);
    const auto upper = platform::runTool({{"losetup", "--find", "--show", node}, 30s, true});
    EXPECT_EQ(formatted().status, FormatStatus::heldByOthers);
    EXPECT_TRUE(platform::runTool({{"losetup", "--detach", upper.text}}).succeeded());
    EXPECT_EQ(start(card.image()), std::vector<std::byte>(checkedBytes));

    // A neighbour that is claimed for somebody whom no table names, and one that is part of a pool.
    for (const auto& part : {std::vector<std::string>{"1", "2048", "409600"}, {"2", "411648", "409600"}})
        ASSERT_TRUE(platform::runTool({{"addpart", card.path(), part[0], part[1], part[2]}}).succeeded());
    const std::string neighbour = card.path() + "p1";
    const int claimed = open(neighbour.c_str(), O_RDWR | O_EXCL | O_CLOEXEC);
    EXPECT_EQ(formatted("p2").status, FormatStatus::heldByOthers);
    close(claimed);
    for (const uint64_t magic : {uint64_t(0x00bab10c), uint64_t(0)}) {
        const int label = open(neighbour.c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_EQ(pwrite(label, &magic, sizeof magic, 131 * 1024), ssize_t(sizeof magic));
        close(label);
        for (const char* part : {"p2", "p1", ""})
            EXPECT_EQ(formatted(part).status, magic == 0 ? FormatStatus::ok : FormatStatus::heldByOthers)
                << part;
    }
}
