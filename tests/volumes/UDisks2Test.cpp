#include "platform/udisks/UDisks2DiskArbitration.h"
#include "tests/support/MockUDisks2.h"
#include "tests/support/Testing.h"
#include "tests/support/WaitFor.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <thread>

namespace {

using namespace platform;

class UDisks2Test : public testing::Test {
protected:
    UDisks2Test() { fs::create_directories(folder.path("proc/self")); }

    std::unique_ptr<UDisks2DiskArbitration> volumes(std::chrono::milliseconds limit = 5s)
    {
        return std::make_unique<UDisks2DiskArbitration>(UDisks2DiskArbitration::Surroundings{
            service.busAddress(), folder.path("proc"), folder.path("sys"), limit, limit, 60s});
    }
    std::optional<bool> isRemovable(const std::string& device)
    {
        const auto all = volumes()->mountedVolumes();
        const auto found = std::ranges::find(all, device, &VolumeDescription::deviceName);
        return found == all.end() ? std::nullopt : found->removable;
    }

    TempFolder folder;
    MockUDisks2 service;
    CollectedLog collected;
    std::vector<std::string>& log = collected.lines;
};

TEST_F(UDisks2Test, DescribesWhatIsMounted)
{
    service.add({});
    service.add({"sdc", "블랙박스 카드", "/media/김 기사/블랙박스 카드", 1'977'614'336, "ACME", ""});
    service.add({.device = "sdd1", .mountPath = ""});
    service.set("sdc", "Drive", "TimeMediaDetected", qulonglong(77));

    const auto found = volumes()->mountedVolumes();
    ASSERT_EQ(found.size(), 2u) << "what is not mounted is no volume";
    const auto shown = [](const VolumeDescription& one) {
        return one.deviceName + '|' + one.label + '|' + one.mountPath + '|' + one.deviceModel.value_or("-")
            + '|' + one.protocol + '|' + std::to_string(one.size)
            + (one.removable.value_or(false) ? " removable" : "") + (one.whole ? " whole" : "");
    };
    EXPECT_EQ(
        shown(found[0]), "sdb1|ZAVIK|/run/media/driver/ZAVIK|Generic Card Reader|USB|1977614336 removable");
    EXPECT_EQ(shown(found[1]),
        "sdc|블랙박스 카드|/media/김 기사/블랙박스 카드|ACME|USB|1977614336 removable whole");
    EXPECT_NE(found[0].mediaPath, found[1].mediaPath);
    EXPECT_EQ(found[1].mediaPath, volumes()->mountedVolumes()[1].mediaPath);
    service.set("sdc", "Drive", "TimeMediaDetected", qulonglong(78));
    EXPECT_NE(found[1].mediaPath, volumes()->mountedVolumes()[1].mediaPath)
        << "another card, the same reader";
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(UDisks2Test, SeesWriteProtectionWhereverItIs)
{
    const auto isWritable = [&] { return volumes()->mountedVolumes().at(0).writable; };
    service.add({.mountPath = "/media/my card"});
    EXPECT_TRUE(isWritable());
    for (const char* protectedPart : {"sdb", "sdb1"}) { // the switch of the card, the partition
        service.set(protectedPart, "Block", "ReadOnly", true);
        EXPECT_FALSE(isWritable()) << protectedPart;
        service.set(protectedPart, "Block", "ReadOnly", false);
    }
    folder.file(
        "proc/self/mountinfo", "36 25 8:17 / /media/my\\040card ro,nosuid shared:1 - vfat /dev/sdb1 rw\n");
    EXPECT_FALSE(isWritable()) << "mounted read-only";
}

TEST_F(UDisks2Test, ListsWhatMayBeFormattedWhateverItsMount)
{
    const auto found = [&] {
        std::string text;
        for (const VolumeDescription& volume : volumes()->formattableVolumes())
            text += volume.deviceName + (volume.writable ? " rw " : " ro ") + volume.mountPath
                + volume.fileSystem + volume.serial + "\n";
        return text;
    };
    service.add({.mountPath = ""});
    service.set("sdb1", "Drive", "Serial", "0815");
    service.add({.device = "sdc", .mountPath = "/media/damaged"});
    folder.file("proc/self/mountinfo", "36 25 8:32 / /media/damaged ro shared:1 - vfat /dev/sdc rw\n");
    service.add({.device = "sdd1", .mountPath = "/"});
    service.add({.device = "sde", .mountPath = "", .size = 0});
    service.addBlock("dm-0");
    EXPECT_EQ(found(), "sdb1 rw vfat0815\nsdc rw /media/damagedvfat\n") << "no system, no empty slot";
    service.set("sdb", "Block", "ReadOnly", true);
    service.set("sdc", "Block", "IdType", "");
    EXPECT_EQ(found(), "sdb1 ro vfat0815\nsdc rw /media/damaged\n") << "the switch of the card";
    service.set("sdb1", "Partition", "IsContainer", true);
    EXPECT_EQ(found(), "sdc rw /media/damaged\n");
}

TEST_F(UDisks2Test, ACardBelowAMappedVolumeThatHoldsAHomeIsTheSystems)
{
    service.add({});
    service.addBlock("dm-0");
    service.setMountPoints("dm-0", {"/home/kim"});
    EXPECT_EQ(isRemovable("sdb1"), true);
    fs::create_directories(folder.path("sys/class/block/dm-0/slaves/sdb1"));
    EXPECT_EQ(isRemovable("sdb1"), false) << "a logical volume, as the kernel tells";
    fs::remove_all(folder.path("sys"));
    service.set("dm-0", "Block", "CryptoBackingDevice", QVariant::fromValue(MockUDisks2::objectOf("sdb1")));
    EXPECT_EQ(isRemovable("sdb1"), false) << "a container";
    service.setMountPoints("dm-0", {"/media/kim/vault"});
    EXPECT_EQ(isRemovable("sdb1"), true);
}

TEST_F(UDisks2Test, ACardThatIsNamedMovesAndThatIsTold)
{
    service.add({.label = "MUSIC", .mountPath = "/run/media/driver/MUSIC"});
    service.add({.device = "sdc1", .uuid = "other"});
    const VolumeDescription old = volumes()->mountedVolumes().at(0);
    int told = 0;
    auto disks = volumes();
    auto watch = disks->watchMounts([&] { ++told; });
    EXPECT_TRUE(waitFor([&] { return told >= 1; })) << "what changed before it listened";
    EXPECT_EQ(disks->setVolumeName("/run/media/driver/MUSIC", "ZAVIK"), "");
    EXPECT_TRUE(waitFor([&] { return told >= 3; })) << "unmounted and mounted";
    EXPECT_THAT(service.calls(), ElementsAre("Unmount sdb1", "SetLabel sdb1 ZAVIK", "Mount sdb1"));
    const VolumeDescription after = disks->mountedVolumes().at(0);
    EXPECT_EQ(after.label, "ZAVIK");
    EXPECT_EQ(after.mountPath, "/run/media/driver/ZAVIK1") << "the other card has the name";
    EXPECT_EQ(after.mediaPath, old.mediaPath);
    EXPECT_EQ(after.uuid, "5A41-5649");
    watch.reset();
    service.setMountPoints("sdb1", {});
    disks->mountedVolumes(); // the answer comes after the signal
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 3);
}

TEST_F(UDisks2Test, TellsWhyACardKeepsItsName)
{
    const std::string path = "/run/media/driver/ZAVIK";
    service.add({.label = "MUSIC"});
    service.answer("SetLabel", MockUDisks2::Answer::failure);
    EXPECT_THAT(volumes()->setVolumeName(path, "ZAVIK"), HasSubstr("SetLabel went wrong"));
    EXPECT_EQ(service.calls().back(), "Mount sdb1");
    ASSERT_EQ(volumes()->mountedVolumes().size(), 1u) << "it is mounted again";
    const std::string again = volumes()->mountedVolumes().front().mountPath;
    EXPECT_EQ(again, "/run/media/driver/MUSIC");

    service.answer("Unmount", MockUDisks2::Answer::failure);
    const qsizetype asked = service.calls().size();
    EXPECT_THAT(volumes()->setVolumeName(again, "ZAVIK"), HasSubstr("Unmount went wrong"));
    EXPECT_EQ(service.calls().size(), asked) << "nothing is written to a card in use";

    service.answer("Unmount", MockUDisks2::Answer::none);
    EXPECT_NE(volumes(200ms)->setVolumeName(again, "ZAVIK"), "");
    EXPECT_NE(volumes()->setVolumeName("/nowhere", "ZAVIK"), "");
    service.set("sdb1", "Block", "HintSystem", true);
    EXPECT_THAT(volumes()->setVolumeName(again, "ZAVIK"), HasSubstr("not removable"));
}

TEST_F(UDisks2Test, AServiceThatHangsIsWaitedForOnce)
{
    service.add({});
    service.answer("GetManagedObjects", MockUDisks2::Answer::none);
    const auto impatient = volumes(300ms);
    EXPECT_THAT(impatient->mountedVolumes(), IsEmpty());
    service.answer("GetManagedObjects", MockUDisks2::Answer::right);
    EXPECT_THAT(impatient->mountedVolumes(), IsEmpty()) << "it is not asked again so soon";
    EXPECT_THAT(log, ElementsAre(HasSubstr("volumes: UDisks2 cannot be asked: ")));
}

TEST_F(UDisks2Test, WithoutServiceOrBusTheListIsEmptyAndTheLogTellsWhyOnce)
{
    service.answer("GetManagedObjects", MockUDisks2::Answer::failure);
    const auto refused = volumes();
    EXPECT_THAT(refused->mountedVolumes(), IsEmpty());
    EXPECT_THAT(refused->mountedVolumes(), IsEmpty());
    EXPECT_THAT(
        log, ElementsAre("cannot list the volumes: UDisks2 cannot be asked: GetManagedObjects went wrong"));
    EXPECT_EQ(refused->trouble(), "UDisks2 cannot be asked: GetManagedObjects went wrong");

    const PrivateBus empty;
    UDisks2DiskArbitration missing({.busAddress = empty.address().toStdString()});
    EXPECT_THAT(missing.mountedVolumes(), IsEmpty());
    EXPECT_THAT(log.back(), HasSubstr("volumes: UDisks2 cannot be asked: "));

    UDisks2DiskArbitration noBus({.busAddress = "unix:path=" + folder.path("none")});
    EXPECT_THAT(noBus.mountedVolumes(), IsEmpty());
    EXPECT_NE(noBus.setVolumeName("/media", "ZAVIK"), "");
    EXPECT_THAT(log.back(), HasSubstr("volumes: no system bus"));
    EXPECT_EQ(log.size(), 3u);
}

TEST_F(UDisks2Test, ABusThatAcceptsAndSaysNothingIsNotWaitedFor)
{
    const std::string path = folder.path("mute");
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int mute = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(mute, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(mute, 1), 0);
    UDisks2DiskArbitration disks({.busAddress = "unix:path=" + path, .limit = 300ms, .pause = 60s});
    EXPECT_THAT(disks.mountedVolumes(), IsEmpty());
    EXPECT_THAT(disks.mountedVolumes(), IsEmpty());
    EXPECT_THAT(log, ElementsAre("cannot list the volumes: the system bus does not answer"));
    ::close(mute);
}

TEST_F(UDisks2Test, AnyThreadMayAsk)
{
    service.add({});
    const auto shared = volumes();
    std::array<size_t, 4> counts{};
    {
        std::vector<std::jthread> threads;
        for (size_t& count : counts)
            threads.emplace_back([&] { count = shared->mountedVolumes().size(); });
    }
    EXPECT_THAT(counts, ElementsAre(1, 1, 1, 1));
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
