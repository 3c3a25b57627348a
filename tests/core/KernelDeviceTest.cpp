#include "platform/disks/KernelDevice.h"
#include "tests/support/Testing.h"
#include "tools/formathelper/FormatCard.h"
#include "tools/formathelper/FormatTool.h"

namespace {

constexpr const char* card = "sys/devices/pci0/usb1/1-2/block/sdb/";
constexpr const char* mountinfo = "proc/self/mountinfo";
constexpr const char* swaps = "proc/swaps";

/// A machine with one card reader, as /sys and /proc tell: sdb with sdb1 (the card) and sdb2.
class Machine {
public:
    Machine()
    {
        put(mountinfo, "22 1 259:2 / / rw - ext4 /dev/nvme0n1p2 rw\n");
        put(swaps, "Filename Type Size Used Priority\n");
        device(card, "8:16");
        put(card + std::string("removable"), "1\n");
        put(card + std::string("diskseq"), "17\n");
        for (const char* part : {"1", "2"}) {
            const std::string path = std::string(card) + "sdb" + part + "/";
            device(path, std::string("8:1") + (*part == '1' ? "7" : "8"));
            put(path + "partition", part);
        }
    }

    void put(const std::string& name, const std::string& text) const { folder.file(name, text); }
    void device(const std::string& path, const std::string& number) const
    {
        put(path + "dev", number + "\n");
        put(path + "size", "900000\n");
        put(path + "ro", "0\n");
        fs::create_directories(folder.path("sys/class/block"));
        fs::create_symlink(folder.path(path),
            folder.path("sys/class/block/" + fs::path(path).parent_path().filename().native()));
    }

    FormatResult format(
        const std::string& name, const std::string& medium = "17", uint64_t more = 0, long cluster = 32) const
    {
        const auto numberAt = [this](const std::string& path) {
            const auto node = nodes.find(fs::path(path).filename());
            return node == nodes.end() ? "" : node->second;
        };
        FormatPolicy policy;
        policy.roots = {folder.path("sys"), folder.path("proc"), folder.path("dev"), numberAt,
            [=](const std::string& node, const std::string&) { return std::vector{numberAt(node)}; }};
        policy.patience = {};
        const uint64_t size = platform::kernelDevice(name, policy.roots).size;
        return formatCard({name, cluster, size + more, medium}, policy);
    }

    /// What the nodes of these names are, wherever they are; of a loop device what it is on.
    std::map<std::string, std::string> nodes;
    TempFolder folder;
};

struct Case {
    const char* name;
    FormatStatus expected;
    std::vector<std::pair<std::string, std::string>> files; // what the kernel tells, too
    std::map<std::string, std::string> nodes = {};
    const char* device = "sdb1";
};

std::string mount(const std::string& number, const std::string& place, const std::string& source)
{
    return "22 1 259:2 / / rw - ext4 /dev/nvme0n1p2 rw\n30 22 " + number + " / " + place
        + " rw shared:1 - vfat " + source + " rw\n";
}

std::string ofCard(const std::string& name)
{
    return card + name;
}

const std::string all = "sys/class/block/";

const Case cases[] = {
    {"mounted", FormatStatus::stillMounted, {{mountinfo, mount("8:17", "/media/u/A\\040B", "/dev/sdb1")}}},
    {"a partition is mounted", FormatStatus::stillMounted,
        {{mountinfo, mount("8:18", "/media/u/B", "/dev/sdb2")}}, {}, "sdb"},
    {"mounted with a number of its own", FormatStatus::stillMounted,
        {{mountinfo, mount("0:44", "/media/u/A", "/dev/sdb1")}}},
    {"mounted by a node that has another name", FormatStatus::stillMounted,
        {{mountinfo, mount("0:44", "/media/u/A", "/dev/sdz:/root/card")}}, {{"card", "8:17"}}},
    {"system", FormatStatus::systemDisk, {{mountinfo, mount("8:17", "/", "/dev/root")}}},
    {"its neighbour is the system", FormatStatus::systemDisk,
        {{mountinfo, mount("8:18", "/boot/efi", "/dev/sdb2")}}},
    {"mounted for the system, not for us", FormatStatus::systemDisk,
        {{"proc/1/mountinfo", mount("8:18", "/cdrom", "/x")}}},
    {"system on LUKS on its neighbour", FormatStatus::systemDisk,
        {{ofCard("sdb2/holders/dm-0"), ""}, {all + "dm-0/dev", "253:7"},
            {mountinfo, mount("253:7", "/", "/dev/mapper/root")}}},
    {"LUKS or LVM on it", FormatStatus::heldByOthers, {{ofCard("sdb1/holders/dm-0"), ""}}},
    {"an array on a partition of the whole", FormatStatus::heldByOthers, {{ofCard("sdb2/holders/md0"), ""}},
        {}, "sdb"},
    {"a loop device on it", FormatStatus::heldByOthers, {{all + "loop3/loop/backing_file", "/dev/sdb1\n"}}},
    {"a loop device on it by a node that has another name", FormatStatus::heldByOthers,
        {{all + "loop3/loop/backing_file", "/mnt/dev/card\n"}}, {{"loop3", "8:17"}}},
    {"btrfs over it and another", FormatStatus::heldByOthers,
        {{"sys/fs/btrfs/1-2/devices/sdb1", ""}, {"sys/fs/btrfs/1-2/devices/sdx1", ""}}},
    {"btrfs over its neighbour and another is the system", FormatStatus::systemDisk,
        {{"sys/fs/btrfs/1-2/devices/sdb2", ""}, {"sys/fs/btrfs/1-2/devices/sdx1", ""},
            {mountinfo, mount("0:30", "/home", "/dev/sdx1")}}},
    {"open in a program", FormatStatus::stillMounted, {{"proc/77/fd/4", ""}}, {{"4", "8:17"}}},
    {"its disk is open in a program", FormatStatus::stillMounted, {{"proc/77/fd/4", ""}}, {{"4", "8:16"}}},
    {"its neighbour is open in a program", FormatStatus::cardGone, {{"proc/77/fd/4", ""}}, {{"4", "8:18"}}},
    {"swap", FormatStatus::swapSpace, {{swaps, "Filename\n/dev/sdb1 partition 1 0 -2\n"}}},
    {"swap by a node that has another name", FormatStatus::swapSpace,
        {{swaps, "Filename\n/root/swap partition 1 0 -2\n"}}, {{"swap", "8:18"}}},
    {"swap on LVM on its neighbour", FormatStatus::swapSpace,
        {{ofCard("sdb2/holders/dm-0"), ""}, {swaps, "Filename\n/dev/dm-0 partition 1 0 -2\n"}}},
    {"not removable", FormatStatus::notACard, {{ofCard("removable"), "0\n"}}},
    {"read-only", FormatStatus::writeProtected, {{ofCard("ro"), "1\n"}}},
    {"another medium", FormatStatus::otherMedium, {{ofCard("diskseq"), "18\n"}}},
    {"too large", FormatStatus::tooLarge, {{ofCard("sdb1/size"), "4294967296\n"}}},
    {"no size", FormatStatus::otherSize, {{ofCard("sdb1/size"), "0\n"}}},
    {"system, whatever else is wrong", FormatStatus::systemDisk,
        {{mountinfo, mount("8:17", "/", "/dev/sdb1")}, {swaps, "Filename\n/dev/sdb1 partition 1 0 -2\n"},
            {ofCard("sdb1/holders/dm-0"), ""}, {ofCard("removable"), "0\n"}, {ofCard("ro"), "1\n"},
            {ofCard("diskseq"), "18\n"}}},
    {"gone", FormatStatus::notADevice, {}, {}, "sdc1"},
    {"no table of mounts", FormatStatus::notADevice, {{mountinfo, ""}}},
    // All is well as far as the kernel tells, and then there is nothing of this name to open.
    {"no node", FormatStatus::cardGone, {}},
};

} // namespace

TEST(FormatHelper, RefusesByWhatTheKernelTells)
{
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        Machine machine;
        machine.nodes = one.nodes;
        for (const auto& [name, text] : one.files)
            machine.put(name, text);
        EXPECT_EQ(machine.format(one.device).status, one.expected);
    }
    // Each member of this one is a link.
    const Machine machine;
    for (const std::string name : {"sdb1", "sdx1"}) {
        machine.put("sys/fs/bcachefs/1-2/dev-" + name + "/label", "");
        fs::create_symlink(
            "../../" + name, machine.folder.path("sys/fs/bcachefs/1-2/dev-" + name + "/block"));
    }
    EXPECT_EQ(machine.format("sdb1").status, FormatStatus::heldByOthers);

    const Machine other;
    EXPECT_EQ(other.format("sdb1", "17", 512).status, FormatStatus::otherSize) << "than the user saw";
    for (const long cluster : {64, 128})
        EXPECT_EQ(other.format("sdb1", "17", 0, cluster).status, FormatStatus::wrongCluster);
    for (int status = 1; status <= static_cast<int>(FormatStatus::stillWorking); ++status)
        EXPECT_EQ(formatStatusKey(status).empty(), status > 8 && status < 20) << status;
}

TEST(FormatHelper, OnlyACardInASlotNeedsNoRemovableFlag)
{
    for (const auto& [type, bootArea, expected] : {std::tuple("SD", "mmcblk1boot0", FormatStatus::cardGone),
             {"MMC", "mmcblk1boot0", FormatStatus::cardGone}, {"MMC", "mmcblk0boot0", FormatStatus::notACard},
             {"SDIO", "mmcblk1boot0", FormatStatus::notACard}}) {
        const Machine machine;
        const std::string disk = "sys/devices/pci0/mmc_host/mmc0/mmc0:1/block/mmcblk0/";
        machine.device(disk, "179:0");
        machine.put(all + bootArea + "/dev", "179:8");
        machine.put(disk + "removable", "0\n");
        machine.put(disk + "device/type", std::string(type) + "\n");
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
    const auto run =
        runFormatTool({folder.program("tool", "echo out; exec env >&2\n")}, 1min, ToolOutput::errors);
    unsetenv("ZAVIK_TEST_LEAK");
    EXPECT_THAT(run.text, HasSubstr("LC_ALL=C"));
    EXPECT_THAT(run.text, testing::Not(HasSubstr("ZAVIK_TEST_LEAK")));
    EXPECT_THAT(run.text, testing::Not(HasSubstr("out")));

    EXPECT_EQ(errorLine("mkfs.fat", "WARNING: few\nmkfs.fat: unable to open\nmkfs.fat 4.2 (2021-01-31)"),
        "mkfs.fat: unable to open");
    EXPECT_EQ(errorLine("mkfs.fat", "/usr/sbin/mkfs.fat: error while loading\nbye"),
        "/usr/sbin/mkfs.fat: error while loading");
    EXPECT_EQ(errorLine("fsck.fat", "fsck.fat 4.2 (2021-01-31)\nDirty bit is set.\n/dev/x: 0 files"),
        "Dirty bit is set.");
    EXPECT_EQ(errorLine("fsck.fat", "fsck.fat 4.2 (2021-01-31)"), "");
}
