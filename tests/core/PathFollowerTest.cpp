#include "cardtools/volumes/PathFollower.h"
#include "tests/support/TestDiskArbitration.h"
#include "tests/support/Testing.h"
#include "tests/support/VirtualDispatcher.h"

namespace {

using platform::VolumeDescription;

/// A card with a folder "Movie", and a follower of what is told to it.
class PathFollowerTest : public testing::Test {
protected:
    PathFollowerTest() { disks.volumes = {volume("a")}; }

    VolumeDescription volume(
        const std::string& name, const std::string& medium = "usb-1", const std::string& uuid = "5A41-5649")
    {
        fs::create_directories(root.path(name) + "/Movie");
        VolumeDescription made = TestDiskArbitration::card(root.path(name));
        made.uuid = uuid;
        made.mediaPath = medium;
        return made;
    }
    void follow(const std::string& path)
    {
        follower.follow(path);
        dispatcher.runAll();
    }
    /// The volumes are these now; where the path leads then.
    std::string after(std::vector<VolumeDescription> volumes)
    {
        disks.volumes = std::move(volumes);
        disks.tellOfMounts();
        dispatcher.runAll();
        return end;
    }

    TempFolder root;
    VirtualDispatcher dispatcher;
    TestDiskArbitration disks;
    std::string end = "unmoved";
    PathFollower follower{dispatcher, disks, [this](const std::string&, const std::string& to) { end = to; }};
};

TEST_F(PathFollowerTest, KnowsTheVolumeByItsFileSystemAndMedium)
{
    follow(root.path("a/Movie"));
    EXPECT_TRUE(follower.mayLieOn(root.path("a")));
    EXPECT_FALSE(follower.mayLieOn(root.path("b")));
    EXPECT_EQ(after({}), "unmoved");
    EXPECT_EQ(after({volume("b", "usb-2", "other")}), "unmoved");
    EXPECT_EQ(after({volume("a", "usb-2", "other"), volume("c")}), root.path("c/Movie"))
        << "another card has its place";
    EXPECT_EQ(after({volume("d", "usb-3")}), root.path("d/Movie")) << "plugged in again";
    EXPECT_EQ(after({volume("e", "usb-4"), volume("f", "usb-5")}), root.path("d/Movie"))
        << "two that look the same";
    EXPECT_EQ(after({volume("e", "usb-4"), volume("f", "usb-3")}), root.path("f/Movie"));
    VolumeDescription emptied = volume("g", "usb-3");
    fs::remove(root.path("g/Movie"));
    EXPECT_EQ(after({emptied}), root.path("f/Movie")) << "the folder is not there";
    EXPECT_TRUE(follower.mayLieOn(root.path("f")));
    follow({});
    EXPECT_FALSE(follower.mayLieOn(root.path("f")));
}

TEST_F(PathFollowerTest, ManyChangesAtOnceEndAtTheLastPlace)
{
    follow(root.path("a"));
    disks.tellOfMounts();
    dispatcher.runOneBackground();
    for (const char* name : {"b", "c"}) {
        disks.volumes = {volume(name)};
        disks.tellOfMounts();
    }
    dispatcher.runAll();
    EXPECT_EQ(end, root.path("c"));
}

TEST_F(PathFollowerTest, APathMayBeGivenThroughALinkOrWhileItsVolumeIsAway)
{
    fs::create_symlink(root.path("a/Movie"), root.path("link"));
    follow(root.path("link"));
    EXPECT_EQ(after({volume("b")}), root.path("b/Movie"));
    after({});
    fs::remove_all(root.path("b"));
    follow(root.path("b/Movie"));
    EXPECT_EQ(after({volume("c")}), root.path("c/Movie"));
}

TEST_F(PathFollowerTest, ALookThatHangsKeepsNobodyWaiting)
{
    follower.follow(root.path("a"));
    EXPECT_TRUE(follower.mayLieOn(root.path("elsewhere"))) << "not known yet";
    disks.volumes.push_back(volume("b", "usb-2", "other"));
    follow(root.path("b/Movie"));
    EXPECT_TRUE(follower.mayLieOn(root.path("b")));
    EXPECT_EQ(after({volume("c", "usb-2", "other")}), root.path("c/Movie"));
}

} // namespace
