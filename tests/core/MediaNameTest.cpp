#include "media/MediaDirection.h"
#include "media/ZVKMedia.h"
#include "tests/support/Testing.h"

TEST(Media, ReadsKindAndStartFromTheName)
{
    constexpr auto unknown = "00000000000000";
    const std::tuple<std::string, int32_t, std::string> cases[] = {
        {"alwa_20151231_235959", 0, "20151231235959"},
        // The length of any template will do, whatever the prefix.
        {"alwa_20150321_142530_F", 0, "20150321142530"}, {"event_20150321_142530_F", 0, unknown},
        // A prefix of the right length without the room for a date: the kind stays.
        {"motion_20150321_1425", 1, unknown}, {"park_20150321_142530", 0, unknown},
        // The ends of the ranges.
        {"alwa_27001231_246060", 0, "27001231246060"}, {"event_19691231_120000", 2, unknown},
        {"event_27010101_120000", 2, unknown}, {"event_20151301_120000", 2, unknown},
        // Lenient numbers.
        {"alwa_2015ab01_120000", 0, unknown}, {"alwa_2015 3+4x-0 72x", 0, "20150304000702"},
        // Lengths are UTF-16 units: one for a syllable, two beyond the basic plane, one for a foreign byte.
        {"alwa_20150321_142530앞뒤", 0, "20150321142530"},
        {"alwa_20150321_142530\U0001F697", 0, "20150321142530"},
        {"alwa_20150321_142530\xFF\xFE", 0, "20150321142530"}, {"", 0, unknown}};
    for (const auto& [name, kind, start] : cases) {
        SCOPED_TRACE(name);
        const ZVKMedia media = ZVKMedia::mediaWithPath("/card/" + name + ".avi");
        EXPECT_EQ(media.mediaName(), name);
        EXPECT_EQ(media.fileName(), name + ".avi");
        EXPECT_EQ(media.mediaDivision(), kind);
        EXPECT_EQ(media.yyyymmddhhmiss(), start);
    }
}

TEST(Media, TakesPathsApart)
{
    const std::string here = fs::current_path().native();
    // As given, then the path, its folder, the name and the extension.
    const std::array<std::string, 5> cases[] = {{"a.avi", here + "/a.avi", here, "a", "avi"},
        {"/card//./x/../a.avi", "/card/a.avi", "/card", "a", "avi"}, {"/../..", "/", "/", "", ""},
        {"/카드/\xFF/\xB0\xA1.avi", "/카드/\xFF/\xB0\xA1.avi", "/카드/\xFF", "\xB0\xA1", "avi"},
        {"", "", "", "", ""}};
    for (const auto& each : cases) {
        const ZVKMedia media = ZVKMedia::mediaWithPath(each[0]);
        EXPECT_EQ(each,
            (std::array<std::string, 5>{each[0], std::string(media.path()), std::string(media.dir()),
                std::string(media.mediaName()), std::string(media.extension())}));
    }
}

TEST(Media, TellsTheCameraByTheLastSixCharacters)
{
    const std::pair<std::optional<std::string_view>, int32_t> cases[] = {
        {"/card/alwa_20150321_142530_F.avi", 0}, {"/card/alwa_20150321_142530_r.AVI", 1}, {"_R.avi", 1},
        {"", 2}, {std::nullopt, 2}};
    for (const auto& [path, direction] : cases)
        EXPECT_EQ(mediaDirection(path), direction) << path.value_or("no location");
}
