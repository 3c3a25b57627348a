#include "media/ZVKMediaList.h"
#include "tests/core/CliSupport.h"
#include "tests/support/Testing.h"

namespace {

/// The listed files by their paths below the folder, in list order.
std::vector<std::string> listed(const TempFolder& card)
{
    std::vector<std::string> names;
    for (const ZVKMedia& media : ZVKMediaList::scan(card.path()).medias)
        names.push_back(media.path().substr(card.path().size() + 1));
    return names;
}

TEST(MediaList, ListsRecordingsAtAnyDepthOldestFirst)
{
    const TempFolder card;
    for (const char* name : {"alwa_20150321_142530.avi", "MotionMovie/motion_20150321_142530.AVI",
             "EventMovie/.deep/er/event_20150321_142500.Avi", "park_20150321_142530.avi", "notes.avi",
             "alwa_20150321_142530.mp4", "alwa_20150321_142530", "motion_20150321_1425.avi",
             "event_20150321_14253.avi", ".alwa_20150321_142530.avi", "config.bin"})
        card.file(name);
    // The length of a template, hidden, with an unknown prefix: a recording of an unknown time.
    EXPECT_THAT(listed(card),
        ElementsAre(".alwa_20150321_142530.avi", "park_20150321_142530.avi",
            "EventMovie/.deep/er/event_20150321_142500.Avi", "MotionMovie/motion_20150321_142530.AVI",
            "alwa_20150321_142530.avi"));
}

TEST(MediaList, StaysBelowTheFolderAndEntersEveryFolderOnce)
{
    const TempFolder card;
    const TempFolder elsewhere;
    card.file("deep/er/alwa_20150321_142530.avi");
    const std::string outside = elsewhere.file("event_20150321_142531.avi");
    fs::create_directory_symlink("../..", card.path("deep/er/up"));
    fs::create_directory_symlink(".", card.path("self"));
    fs::create_directory_symlink("deep", card.path("again"));
    fs::create_directory_symlink(elsewhere.path(), card.path("one"));
    fs::create_directory_symlink("/", card.path("deep/root"));
    fs::create_symlink(outside, card.path("event_20150321_142532.avi"));
    const TempFolder link;
    fs::create_directory_symlink(card.path(), link.path("card"));
    for (const std::string& folder : {card.path(), link.path("card")}) {
        const MediaScan scan = ZVKMediaList::scan(folder);
        ASSERT_EQ(scan.medias.size(), 1u);
        EXPECT_EQ(scan.medias[0].path(), folder + "/deep/er/alwa_20150321_142530.avi");
        EXPECT_EQ(scan.state.failure, "");
    }
}

TEST(MediaList, StaysOnTheVolume)
{
    const std::string name = "alwa_19700101_0" + std::to_string(10000 + getpid() % 50000) + ".avi";
    struct stat dev;
    struct stat shm;
    if (stat("/dev", &dev) != 0 || stat("/dev/shm", &shm) != 0 || dev.st_dev == shm.st_dev)
        GTEST_SKIP() << "no file system in a file system to look at";
    const std::string path = "/dev/shm/" + name;
    ASSERT_TRUE(std::ofstream(path));
    const auto isListed = [&](const char* folder) {
        const MediaScan scan = ZVKMediaList::scan(folder);
        return std::ranges::any_of(scan.medias, [&](const ZVKMedia& media) { return media.path() == path; });
    };
    EXPECT_TRUE(isListed("/dev/shm"));
    EXPECT_FALSE(isListed("/dev"));
    fs::remove(path);
}

TEST(MediaList, ListsOnlyWhatIsAFile)
{
    const TempFolder card;
    card.file("alwa_20150101_000000.avi/alwa_20150101_000001.avi"); // a folder named like a recording
    fs::create_symlink(
        "alwa_20150101_000000.avi/alwa_20150101_000001.avi", card.path("alwa_20150101_000002.avi"));
    fs::create_symlink("nothing", card.path("alwa_20150101_000003.avi"));
    fs::create_symlink("alwa_20150101_000004.avi", card.path("alwa_20150101_000004.avi"));
    ASSERT_EQ(mkfifo(card.path("alwa_20150101_000005.avi").c_str(), 0600), 0);
    EXPECT_THAT(listed(card),
        ElementsAre("alwa_20150101_000000.avi/alwa_20150101_000001.avi", "alwa_20150101_000002.avi"));
    EXPECT_EQ(ZVKMediaList::scan(card.path()).state.failure, "") << "a link that leads nowhere is no fault";
}

TEST(MediaList, KeepsTheOrderOfNamesAmongEquals)
{
    const TempFolder card;
    std::vector<std::string> expected = {
        "Rear/event_20150321_142530r.avi", "a/event_20150321_142530r.avi", "z/alwa_20150321_142530.avi"};
    for (char c = 'a'; c <= 'z'; ++c) // front before rear, whatever the case and the folder
        expected.push_back(std::string(1, c % 3 ? 'c' : 'b') + "/alwa_20150321_142530_"
            + static_cast<char>(c % 2 ? c : c - 'a' + 'A') + (c % 5 ? ".avi" : ".AVI"));
    for (size_t i = 0; i < expected.size(); ++i)
        card.file(expected[(i * 11 + 5) % expected.size()]);
    EXPECT_EQ(listed(card), expected);
}

TEST(MediaList, TakesOneMorePerFolderOnceItIsFull)
{
    const TempFolder card;
    const std::string first = card.file("A/alwa_20150321_142530_.avi");
    fs::create_directory(card.path("A/more"));
    for (size_t i = 1; i < ZVKMediaList::maximumCount + 5; ++i) {
        const std::string number = std::to_string(1'000'000 + i).substr(1);
        ASSERT_EQ(link(first.c_str(), card.path("A/alwa_20150321_" + number + ".avi").c_str()), 0);
    }
    const MediaScan full = ZVKMediaList::scan(card.path());
    EXPECT_EQ(full.medias.size(), ZVKMediaList::maximumCount) << "one full folder";
    EXPECT_TRUE(full.state.isCut);
    EXPECT_THAT(zavikctl({"list", card.path()}).err, HasSubstr("only the first 15000 recordings"));

    for (const char* name : {"B/event_20150321_142530.avi", "B/event_20150321_142531.avi"})
        card.file(name);
    // What stands before the full folder counts; a folder after it still gives one.
    const bool isFirst = fs::directory_iterator(card.path())->path().filename() == "A";
    EXPECT_EQ(listed(card).size(), ZVKMediaList::maximumCount + (isFirst ? 1 : 0));
}

} // namespace
