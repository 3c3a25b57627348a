#include "media/Drives.h"
#include "media/RecordingLength.h"
#include "media/ZVKMediaList.h"
#include "tests/support/RecordingFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Testing.h"

#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;
using ::testing::ElementsAre;

/// Names of recordings; a length in seconds may follow: "alwa_20240518_181200_F 60".
std::vector<std::string> drivesOfNames(std::vector<std::string> names)
{
    std::vector<ZVKMedia> medias;
    std::map<std::string, microseconds> lengths;
    for (const std::string& name : names) {
        const auto space = name.find(' ');
        medias.push_back(ZVKMedia::mediaWithPath("/card/" + name.substr(0, space) + ".avi"));
        if (space != std::string::npos)
            lengths[medias.back().path()] = std::chrono::seconds(std::stoi(name.substr(space)));
    }
    std::ranges::sort(medias, [](const ZVKMedia& a, const ZVKMedia& b) {
        return a.compareDate(b) != 0 ? a.compareDate(b) < 0 : a.standsBefore(b);
    });
    std::vector<std::string> texts;
    for (const Drive& drive : drivesOf(medias, [&](const ZVKMedia& media) -> std::optional<microseconds> {
             const auto known = lengths.find(media.path());
             return known == lengths.end() ? std::nullopt : std::optional(known->second);
         })) {
        std::string text = cameraTimeText(drive.start()) + " " + cameraTimeText(drive.end).substr(11) + ":";
        for (const Take& take : drive.takes)
            text += " " + std::string(take.first.mediaName()) + (take.rear ? "+R" : "");
        texts.push_back(text);
    }
    return texts;
}

TEST(Drives, EndWhereAGapIsLongerThanAMinute)
{
    EXPECT_THAT(
        drivesOfNames({"alwa_20240518_181200 60", "alwa_20240518_181400 60", "alwa_20240518_181601 60",
            "event_20240518_181630 120", "alwa_20240518_181900 30", "alwa_20240518_182100"}),
        ElementsAre("2024-05-18T18:12:00 18:15:00: alwa_20240518_181200 alwa_20240518_181400",
            "2024-05-18T18:16:01 18:19:30: alwa_20240518_181601 event_20240518_181630 alwa_20240518_181900",
            "2024-05-18T18:21:00 18:21:00: alwa_20240518_182100"));
}

TEST(Drives, GoOnOverMidnightAndOverWhatIsNoDate)
{
    EXPECT_THAT(drivesOfNames({"alwa_20231231_235930 60", "alwa_20240101_000030 60"}),
        ElementsAre("2023-12-31T23:59:30 00:01:30: alwa_20231231_235930 alwa_20240101_000030"));
    // Both are the same moment: 24 o'clock, and the day after the last of the month.
    EXPECT_THAT(drivesOfNames({"alwa_20240430_240000 60", "alwa_20240431_000100 60", "notes_of_another"}),
        ElementsAre("2024-05-01T00:00:00 00:02:00: alwa_20240430_240000 alwa_20240431_000100"));
}

TEST(Drives, PairTheCamerasOfOneStart)
{
    // The rear one may begin a second before or after; each front takes one, of its own kind, the nearest.
    EXPECT_THAT(
        drivesOfNames({"alwa_20240518_181200_F 60", "alwa_20240518_181201_R 60", "alwa_20240518_181301_F 60",
            "alwa_20240518_181300_R 60", "alwa_20240518_181402_F 60", "alwa_20240518_181400_R 60"}),
        ElementsAre("2024-05-18T18:12:00 18:15:02: alwa_20240518_181200_F+R alwa_20240518_181301_F+R "
                    "alwa_20240518_181400_R alwa_20240518_181402_F"));
    EXPECT_THAT(drivesOfNames({"alwa_20240518_181200_F 60", "alwa_20240518_181201_F 60",
                    "alwa_20240518_181201_R 60", "alwa_20240518_181202_R 60"}),
        ElementsAre("2024-05-18T18:12:00 18:13:02: alwa_20240518_181200_F alwa_20240518_181201_F+R "
                    "alwa_20240518_181202_R"));
    EXPECT_THAT(drivesOfNames({"alwa_20240518_181200_R 60"}),
        ElementsAre("2024-05-18T18:12:00 18:13:00: alwa_20240518_181200_R"));
}

TEST(Drives, FindTheOtherCameraAmongTheNeighbours)
{
    std::vector<ZVKMedia> list;
    for (const char* name : {"notes_of_another", "alwa_20240518_181200_F", "alwa_20240518_181200_R",
             "alwa_20240518_181300_R", "alwa_20240518_181301_F", "event_20240518_181301_R",
             "alwa_20240518_181302_R", "alwa_20240518_181400_F", "alwa_20240518_181402_R"})
        list.push_back(ZVKMedia::mediaWithPath(std::string("/card/") + name + ".avi"));
    const auto otherOf = [&](size_t index) {
        const auto other = otherCameraOf(list, index);
        return other ? std::string(other->mediaName()).substr(14) : "";
    };
    std::vector<std::string> others;
    for (size_t i = 0; i <= list.size(); ++i)
        others.push_back(otherOf(i));
    EXPECT_THAT(others, ElementsAre("", "181200_R", "181200_F", "181301_F", "181300_R", "", "", "", "", ""));
    // All of one second, as no camera writes them: still at once, and never one camera with itself.
    list.assign(15000, ZVKMedia::mediaWithPath("/card/alwa_20240518_181200_R.avi"));
    EXPECT_EQ(otherOf(7000), "");
}

std::optional<microseconds> lengthOf(
    const RecordingHeader& header, size_t cut = recordingHeaderSize, const std::string& before = {})
{
    const std::string chunk = header.bytes().insert(4, before);
    auto bytes = AviWriter().chunk("LIST", std::as_bytes(std::span(chunk))).filler(2000).bytes();
    return recordingLength(std::span(bytes).first(std::min(bytes.size(), cut)));
}

TEST(RecordingLength, IsThatOfTheFirstVideoStreamElseOfTheMainHeader)
{
    EXPECT_EQ(lengthOf({.scale = 1001, .rate = 30000, .count = 1800}), 60060000us);
    EXPECT_EQ(lengthOf({.mainCount = 50, .count = 100}), 4s);
    EXPECT_EQ(lengthOf({.mainCount = 50, .count = 100, .stream = "auds"}), 2s);
    EXPECT_EQ(lengthOf({.mainCount = 50, .scale = 0, .count = 100}), 2s);
    EXPECT_EQ(lengthOf({.mainCount = 50, .count = 100}, 100), 2s);
    EXPECT_EQ(lengthOf({.count = 100}, 1000, "odd " + RecordingHeader::word(1) + "12"), 4s);
}

TEST(RecordingLength, IsUnknownWhereTheHeaderTellsNone)
{
    EXPECT_EQ(lengthOf({}), std::nullopt);
    EXPECT_EQ(lengthOf({.period = 4000000000, .mainCount = 4000000000}), std::nullopt);
    EXPECT_EQ(lengthOf({.rate = 0, .count = 100}), std::nullopt);
    for (size_t cut = 0; cut < 52; ++cut)
        EXPECT_EQ(lengthOf({.mainCount = 50, .count = 100}, cut), std::nullopt) << cut;
    std::string endless = RecordingHeader{}.bytes();
    endless.replace(8, 4, RecordingHeader::word(0xFFFFFFFF));
    EXPECT_EQ(
        recordingLength(AviWriter().chunk("LIST", std::as_bytes(std::span(endless))).bytes()), std::nullopt);
}

TEST(RecordingLength, OfAFileWaitsForNoPipe)
{
    const TempFolder card;
    EXPECT_EQ(recordingLengthOfFile(card.file("a.avi", recordingFile(61))), 61s);
    EXPECT_EQ(recordingLengthOfFile(card.path("none.avi")), std::nullopt);
    EXPECT_EQ(recordingLengthOfFile(card.path()), std::nullopt);
    ASSERT_EQ(::mkfifo(card.path("pipe.avi").c_str(), 0600), 0);
    EXPECT_EQ(recordingLengthOfFile(card.path("pipe.avi")), std::nullopt);
}

} // namespace
