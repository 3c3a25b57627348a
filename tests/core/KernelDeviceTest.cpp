#include "platform/KernelDevice.h"
#include "tests/support/TempFolder.h"
#include "tools/formathelper/FormatCard.h"
#include "tools/formathelper/FormatTool.h"

#include <gmock/gmock.h>

#include <map>

namespace {

namespace fs = std::filesystem;

/// A machine with one card reader, as /sys and /proc tell: sdb with sdb1 (the card) and sdb2.
class Machine {
public:
    Machine()
    {
        put("proc/self/mountinfo", "22 1 259:2 / / rw - ext4 /dev/nvme0n1p2 rw\n");
        put("proc/swaps", "Filename Type Size Used Priority\n");
        device("devices/pci0/usb1/1-2/block/sdb", "8:16", 1'000'000);
        put("sys/devices/pci0/usb1/1-2/block/sdb/removable", "1\n");
        put("sys/devices/pci0/usb1/1-2/block/sdb/diskseq", "17\n");
        device("devices/pci0/usb1/1-2/block/sdb/sdb1", "8:17", 900'000);
        device("devices/pci0/usb1/1-2/block/sdb/sdb2", "8:18", 90'000);
        for (const char* part : {"sdb1", "sdb2"})
            put("sys/devices/pci0/usb1/1-2/block/sdb/" + std::string(part) + "/partition", "1\n");
    }

    void put(const std::string& name, const std::string& text) const { folder.file(name, text); }
    void mount(const std::string& number, const std::string& place, const std::string& source) const
    {
        put("proc/self/mountinfo",
            "22 1 259:2 / / rw - ext4 /dev/nvme0n1p2 rw\n30 22 " + number + " / " + place
                + " rw shared:1 - vfat " + source + " rw\n");
    }
    void device(const std::string& path, const std::string& number, uint64_t sectors) const
    {
        put("sys/" + path + "/dev", number + "\n");
        put("sys/" + path + "/size", std::to_string(sectors) + "\n");
        put("sys/" + path + "/ro", "0\n");
        fs::create_directories(folder.path("sys/class/block"));
        fs::create_symlink(
            "../../" + path, folder.path("sys/class/block/" + fs::path(path).filename().native()));
    }
    /// Something is built on the partition.
    void hold(const std::string& part, const std::string& holder) const
    {
        device("devices/virtual/block/" + holder, "253:7", 80'000);
        put("sys/devices/pci0/usb1/1-2/block/sdb/" + part + "/holders/" + holder, "");
    }
    std::string card(const std::string& name) const
    {
        return folder.path("sys/devices/pci0/usb1/1-2/block/" + name);
    }

    FormatResult format(const std::string& name, const std::string& medium = "17") const
    {
        FormatPolicy policy;
        policy.roots = {folder.path("sys"), folder.path("proc"), folder.path("dev"),
            [this](const std::string& path) {
                const auto node = nodes.find(path);
                return node == nodes.end() ? "" : node->second;
            },
            [this](const std::string& node, const std::string&) { return std::vector{nodes[node]}; }};
        policy.patience = {};
        const uint64_t size = platform::kernelDevice(name, policy.roots).size;
        return formatCard({name, 32, size, medium}, policy);
    }

    /// What the nodes at these paths are, whatever they are called; of a loop device what it is on.
    mutable std::map<std::string, std::string> nodes;
    TempFolder folder;
};

struct Case {
    const char* name;
    FormatStatus expected;
    std::function<void(const Machine&)> change;
    const char* device = "sdb1";
};

const Case cases[] = {
    {"mounted", FormatStatus::stillMounted,
        [](const Machine& m) { m.mount("8:17", "/media/u/A\\040B", "/dev/sdb1"); }},
    {"a partition is mounted", FormatStatus::stillMounted,
        [](const Machine& m) { m.mount("8:18", "/media/u/B", "/dev/sdb2"); }, "sdb"},
    {"mounted with a number of its own", FormatStatus::stillMounted,
        [](const Machine& m) { m.mount("0:44", "/media/u/A", "/dev/sdb1"); }},
    {"system", FormatStatus::systemDisk, [](const Machine& m) { m.mount("8:17", "/", "/dev/root"); }},
    {"its neighbour is the system", FormatStatus::systemDisk,
        [](const Machine& m) { m.mount("8:18", "/boot/efi", "/dev/sdb2"); }},
    {"system on LUKS on its neighbour", FormatStatus::systemDisk,
        [](const Machine& m) {
            m.hold("sdb2", "dm-0");
            m.mount("253:7", "/", "/dev/mapper/root");
        }},
    {"LUKS or LVM on it", FormatStatus::heldByOthers, [](const Machine& m) { m.hold("sdb1", "dm-0"); }},
    {"a loop device on it", FormatStatus::heldByOthers,
        [](const Machine& m) {
            m.device("devices/virtual/block/loop3", "7:3", 80'000);
            m.put("sys/devices/virtual/block/loop3/loop/backing_file", "/dev/sdb1\n");
        }},
    {"a loop device on it by a node that has another name", FormatStatus::heldByOthers,
        [](const Machine& m) {
            m.device("devices/virtual/block/loop3", "7:3", 80'000);
            m.put("sys/devices/virtual/block/loop3/loop/backing_file", "/mnt/dev/card\n");
            m.nodes[m.folder.path("dev/loop3")] = "8:17";
        }},
    {"mounted by a node that has another name", FormatStatus::stillMounted,
        [](const Machine& m) {
            m.mount("0:44", "/media/u/A", "/dev/sdz:/root/card");
            m.nodes["/root/card"] = "8:17";
        }},
    {"mounted for the system, not for us", FormatStatus::systemDisk,
        [](const Machine& m) { m.put("proc/1/mountinfo", "22 1 8:18 / /cdrom ro - iso9660 /x ro\n"); }},
    {"swap by a node that has another name", FormatStatus::swapSpace,
        [](const Machine& m) {
            m.put("proc/swaps", "Filename\n/root/swap partition 1 0 -2\n");
            m.nodes["/root/swap"] = "8:18";
        }},
    {"open in a program", FormatStatus::stillMounted,
        [](const Machine& m) {
            m.put("proc/77/fd/4", "");
            m.nodes[m.folder.path("proc/77/fd/4")] = "8:17";
        }},
    {"its disk is open in a program", FormatStatus::stillMounted,
        [](const Machine& m) {
            m.put("proc/77/fd/4", "");
            m.nodes[m.folder.path("proc/77/fd/4")] = "8:16";
        }},
    {"btrfs over it and another", FormatStatus::heldByOthers,
        [](const Machine& m) {
            m.put("sys/fs/btrfs/1-2/devices/sdb1", "");
            m.put("sys/fs/btrfs/1-2/devices/sdx1", "");
        }},
    {"btrfs over its neighbour and another is the system", FormatStatus::systemDisk,
        [](const Machine& m) {
            m.put("sys/fs/btrfs/1-2/devices/sdb2", "");
            m.device("devices/virtual/block/sdx1", "9:7", 80'000);
            m.put("sys/fs/btrfs/1-2/devices/sdx1", "");
            m.mount("0:30", "/home", "/dev/sdx1");
        }},
    {"bcachefs over it and another", FormatStatus::heldByOthers,
        [](const Machine& m) {
            for (const std::string name : {"sdb1", "sdx1"}) {
                m.put("sys/fs/bcachefs/1-2/dev-" + name + "/label", "");
                fs::create_symlink(
                    "../../" + name, m.folder.path("sys/fs/bcachefs/1-2/dev-" + name + "/block"));
            }
        }},
    {"swap", FormatStatus::swapSpace,
        [](const Machine& m) { m.put("proc/swaps", "Filename\n/dev/sdb1 partition 1 0 -2\n"); }},
    {"swap on LVM on its neighbour", FormatStatus::swapSpace,
        [](const Machine& m) {
            m.hold("sdb2", "dm-0");
            m.put("proc/swaps", "Filename\n/dev/dm-0 partition 1 0 -2\n");
        }},
    {"not removable", FormatStatus::notACard,
        [](const Machine& m) { m.put("sys/devices/pci0/usb1/1-2/block/sdb/removable", "0\n"); }},
    {"read-only", FormatStatus::writeProtected,
        [](const Machine& m) { m.put("sys/devices/pci0/usb1/1-2/block/sdb/ro", "1\n"); }},
    {"another medium", FormatStatus::otherMedium,
        [](const Machine& m) { m.put("sys/devices/pci0/usb1/1-2/block/sdb/diskseq", "18\n"); }},
    {"gone", FormatStatus::notADevice, [](const Machine& m) { fs::remove_all(m.card("sdb")); }},
    {"no table of mounts", FormatStatus::notADevice,
        [](const Machine& m) { m.put("proc/self/mountinfo", ""); }},
    // All is well as far as the kernel tells, and then there is nothing of this name to open.
    {"no node", FormatStatus::cardGone, [](const Machine&) {}},
};

} // namespace

TEST(FormatHelper, RefusesByWhatTheKernelTells)
{
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        const Machine machine;
        one.change(machine);
        EXPECT_EQ(machine.format(one.device).status, one.expected);
    }
}

TEST(FormatHelper, OnlyACardInASlotNeedsNoRemovableFlag)
{
    for (const auto& [type, bootArea, expected] : {std::tuple("SD", "mmcblk1boot0", FormatStatus::cardGone),
             {"MMC", "mmcblk1boot0", FormatStatus::cardGone}, {"MMC", "mmcblk0boot0", FormatStatus::notACard},
             {"SDIO", "mmcblk1boot0", FormatStatus::notACard}}) {
        const Machine machine;
        machine.device("devices/pci0/mmc_host/mmc0/mmc0:1/block/mmcblk0", "179:0", 1'000'000);
        machine.device("devices/pci0/mmc_host/mmc1/mmc1:1/block/" + std::string(bootArea), "179:8", 1'000);
        machine.put("sys/devices/pci0/mmc_host/mmc0/mmc0:1/block/mmcblk0/removable", "0\n");
        machine.put(
            "sys/devices/pci0/mmc_host/mmc0/mmc0:1/block/mmcblk0/device/type", std::string(type) + "\n");
        EXPECT_EQ(machine.format("mmcblk0", "-").status, expected) << type << bootArea;
    }
}

TEST(FormatHelper, TakesNothingButFourPlainArguments)
{
    FormatRequest request;
    const auto reads = [&](std::vector<std::string_view> words) { return readRequest(words, request); };
    EXPECT_TRUE(reads({"sdb1", "32", "1024", "17"}));
    for (const std::vector<std::string_view>& words : std::vector<std::vector<std::string_view>>{{},
             {"sdb1", "32", "1024"}, {"sdb1", "32", "1024", "17", "x"}, {"sdb1", "", "1024", "17"},
             {"sdb1", "32x", "1024", "17"}, {"sdb1", "32", "-1", "17"}, {"sdb1", "32", "1e9", "17"}})
        EXPECT_FALSE(reads(words));
    for (const char* name : {"../sda", "/dev/sda", "..", "-I", "sdb1\n"})
        EXPECT_EQ(formatCard({name, 32, 1, "-"}, FormatPolicy()).status, FormatStatus::notADevice) << name;
}

TEST(FormatHelper, NodeIsNotFollowedAndMustBeTheDevice)
{
    const Machine machine;
    machine.put("dev/sdb1", "a file");
    EXPECT_EQ(machine.format("sdb1").status, FormatStatus::notADevice);
    fs::remove(machine.folder.path("dev/sdb1"));
    fs::create_symlink(machine.folder.file("dev/other"), machine.folder.path("dev/sdb1"));
    EXPECT_EQ(machine.format("sdb1").detail, "Too many levels of symbolic links");
}

TEST(FormatHelper, ToolRunsInAnEmptyEnvironmentAndItsErrorIsOneLine)
{
    const TempFolder folder;
    setenv("ZAVIK_TEST_LEAK", "1", 1);
    const auto run = runFormatTool(
        {folder.program("tool", "echo out; exec env >&2\n")}, std::chrono::minutes(1), ToolOutput::errors);
    unsetenv("ZAVIK_TEST_LEAK");
    EXPECT_THAT(run.text, testing::HasSubstr("LC_ALL=C"));
    EXPECT_THAT(run.text, testing::Not(testing::HasSubstr("ZAVIK_TEST_LEAK")));
    EXPECT_THAT(run.text, testing::Not(testing::HasSubstr("out")));

    EXPECT_EQ(errorLine("mkfs.fat", "WARNING: few\nmkfs.fat: unable to open\nmkfs.fat 4.2 (2021-01-31)"),
        "mkfs.fat: unable to open");
    EXPECT_EQ(errorLine("mkfs.fat", "/usr/sbin/mkfs.fat: error while loading\nbye"),
        "/usr/sbin/mkfs.fat: error while loading");
    EXPECT_EQ(errorLine("fsck.fat", "fsck.fat 4.2 (2021-01-31)\nDirty bit is set.\n/dev/x: 0 files"),
        "Dirty bit is set.");
    EXPECT_EQ(errorLine("fsck.fat", "fsck.fat 4.2 (2021-01-31)"), "");
}
