#include "common/Log.h"
#include "drives/DriveFigures.h"
#include "media/ZVKMediaList.h"
#include "tests/core/CliSupport.h"
#include "tests/core/SideDataSupport.h"
#include "tests/support/RecordingFile.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Testing.h"

namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int64_t start = 1716023520000;

/// A minute of samples at rest, ten a second, on a sensor that is mounted askew, with what differs.
class Minute {
public:
    explicit Minute(int64_t begin = start)
        : first(begin)
    {
    }

    Minute& sample(int tenth, int x, int y, int z)
    {
        samples[tenth] = {x, y, z};
        return *this;
    }
    /// Speeds in km/h, one a second from that second on; the car goes north.
    Minute& speeds(int second, const std::vector<double>& kmh)
    {
        for (const double speed : kmh)
            fixes[second++] = speed;
        return *this;
    }

    SideDataWriter sideData() const
    {
        SideDataWriter writer;
        for (int i = 0; i < 600; ++i) {
            const auto other = samples.find(i);
            const auto [x, y, z] = other == samples.end() ? rest : other->second;
            writer.gsensor(first + i * 100, x, y, z);
            if (const auto speed = fixes.find(i / 10); i % 10 == 9 && speed != fixes.end()) {
                GpsRecordFields gps{.timestamp = first + i * 100, .longitude = 12700};
                const int second = i / 10;
                gps.latitude = 3730 + second * 0.01; // 18.5 metres a second
                gps.speed = speed->second;
                gps.km = '9';
                writer.gps(gps);
            }
        }
        return writer;
    }

    std::vector<std::string> moments() const
    {
        const auto bytes = recordingFile(60, sideData());
        const Extraction read = extract(bytes);
        std::vector<std::string> texts;
        for (const Moment& moment : momentsOf(read.data)) {
            std::ostringstream text;
            text << momentKindText(moment.kind) << ' ' << std::round(moment.g * 100) / 100 << ' '
                 << momentDirectionText(moment.direction) << ' '
                 << moment.seconds(60, read.data.m_GSensors.size());
            texts.push_back(text.str());
        }
        return texts;
    }

private:
    using Axes = std::array<int, 3>;
    static constexpr Axes rest = {64, -32, 250};
    int64_t first;
    std::map<int, Axes> samples;
    std::map<int, double> fixes;
};

TEST(Moments, AnImpactIsFurtherThanTheTyresGo)
{
    EXPECT_THAT(Minute().sample(100, 64, -32 + 256, 250).moments(), IsEmpty());
    EXPECT_THAT(Minute().sample(100, 64, -32 + 257, 250).moments(), ElementsAre("impact 1 rear 10"));
    EXPECT_THAT(
        Minute().sample(100, 64 + 200, -32 - 300, 250).moments(), ElementsAre("impact 1.41 front 10"));
    EXPECT_THAT(Minute().sample(599, 64 + 512, -32, 250).moments(), ElementsAre("impact 2 left 59.9"));
    EXPECT_THAT(Minute().sample(0, 64 - 512, -32, 250).moments(), ElementsAre("impact 2 right 0"));
    EXPECT_THAT(Minute().sample(1, 64, -32, 250 - 512).moments(), ElementsAre("impact 2 above 0.1"));
    EXPECT_THAT(Minute().sample(1, 64, -32, 250 + 512).moments(), ElementsAre("impact 2 below 0.1"));
}

TEST(Moments, WhatFollowsWithinTwoSecondsIsOne)
{
    EXPECT_THAT(Minute()
                    .sample(100, 64, -32 + 400, 250)
                    .sample(120, 64, -32 - 512, 250)
                    .sample(140, 64, -32 + 500, 250)
                    .sample(161, 64, -32 + 300, 250)
                    .moments(),
        ElementsAre("impact 2 front 12", "impact 1.17 rear 16.1"));
}

TEST(Moments, DamagedSamplesAndSpeedsAreNone)
{
    EXPECT_THAT(Minute().sample(7, 2000000000, 0, 0).moments(), IsEmpty());
    EXPECT_THAT(Minute().speeds(10, {100, 100, 10, 100}).moments(), IsEmpty());
    EXPECT_THAT(Minute().speeds(10, {1e300, 50, -1e300, NAN, 0}).moments(), IsEmpty());
}

TEST(Moments, ABrakingIsWhereTheSpeedFallsFast)
{
    EXPECT_THAT(Minute().speeds(10, {60, 46, 32}).moments(), IsEmpty());
    EXPECT_THAT(Minute().speeds(10, {60, 45, 25, 10, 0}).moments(), ElementsAre("braking 0.57 front 13"));
}

TEST(Moments, ABrakingAtTheEndIsWithinTheRecording)
{
    SideDataWriter writer;
    writer.gsensor(start, 0, 0, 256);
    for (const auto& [stamp, speed] : {std::pair{0, 60.0}, {100, 50.0}, {1100, 30.0}})
        writer.gps({start + stamp, 1, 3730, 12700, speed, '9', ""});
    const auto bytes = recordingFile(60, writer);
    const auto moments = momentsOf(extract(bytes).data);
    ASSERT_EQ(moments.size(), 1u) << "speeds a tenth of a second apart tell no braking";
    EXPECT_EQ(moments[0].stamp, start + 1100);
    EXPECT_EQ(moments[0].sample, 0u) << "there is one sample";
}

/// A card with recordings that tell something, and what the drives there add up to.
class DriveFiguresOf : public testing::Test {
protected:
    std::vector<DriveFigures> figures() const
    {
        const CollectedLog log;
        std::vector<DriveFigures> all;
        const auto scan = ZVKMediaList::scan(card.path());
        for (const Drive& drive :
            drivesOf(scan.medias, [](const ZVKMedia&) { return std::optional(std::chrono::seconds(60)); }))
            all.push_back(figuresOf(drive));
        return all;
    }
    void add(std::string_view name, const Minute& minute) const
    {
        card.file(name, recordingFile(60, minute.sideData()));
    }

    TempFolder card;
};

TEST_F(DriveFiguresOf, ADriveAddUpAndCountNothingTwice)
{
    const std::vector<double> cruise(60, 66);
    const Minute hit = Minute().sample(300, 64, -32 - 512, 250).speeds(0, cruise);
    add("alwa_20240518_181200_F.avi", hit);
    add("alwa_20240518_181200_R.avi", hit);
    // An event beside it, with the same times, and a rear recording alone.
    add("event_20240518_181215.avi", hit);
    add("alwa_20240518_181300_R.avi", Minute(start + 60000).speeds(0, {70, 70, 71}));
    const auto all = figures();
    ASSERT_EQ(all.size(), 1u);
    // 59 gaps of 0.01 minutes of latitude; the second file begins further south.
    EXPECT_THAT(all[0].distanceKm.value_or(-1), DoubleNear(59 * 0.01853 + 2 * 0.01853, 0.01));
    EXPECT_EQ(all[0].topSpeedKmh, 71);
    EXPECT_THAT(all[0].strongestG.value_or(-1), DoubleNear(2, 0.01));
    ASSERT_EQ(all[0].moments.size(), 1u);
    EXPECT_EQ(all[0].moments[0].file, card.path("alwa_20240518_181200_F.avi"));
    EXPECT_DOUBLE_EQ(all[0].moments[0].seconds, 30);
}

TEST_F(DriveFiguresOf, ARearRecordingTellsWhatTheFrontDoesNot)
{
    add("alwa_20240518_181200_R.avi", Minute().speeds(0, {10, 20}));
    card.file("alwa_20240518_181200_F.avi", recordingFile(60));
    card.file("alwa_20240518_181300_F.avi", std::string_view("no recording"));
    const auto all = figures();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].topSpeedKmh, 20);
    EXPECT_THAT(all[0].unread, testing::ElementsAre(card.path("alwa_20240518_181300_F.avi")));
}

TEST_F(DriveFiguresOf, ARearRecordingsMomentIsWhereItsOwnLengthPutsIt)
{
    card.file("alwa_20240518_181200_F.avi", recordingFile(60));
    card.file(
        "alwa_20240518_181200_R.avi", recordingFile(30, Minute().sample(300, 64, -32 - 512, 250).sideData()));
    const auto all = figures();
    ASSERT_EQ(all.size(), 1u);
    ASSERT_EQ(all[0].moments.size(), 1u);
    EXPECT_DOUBLE_EQ(all[0].moments[0].seconds, 15);
}

TEST_F(DriveFiguresOf, AClockThatIsSetBackLosesNoMoment)
{
    add("alwa_20240518_181200.avi", Minute().sample(300, 64, -32 - 512, 250));
    add("alwa_20240518_181230.avi", Minute(start + 30'000).sample(100, 64, -32 - 512, 250));
    add("alwa_20240518_181240.avi", Minute().sample(300, 64, -32 - 512, 250));
    const auto all = figures();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].moments.size(), 2u) << "at 30 and 40 seconds; the third is the first, told again";
}

TEST_F(DriveFiguresOf, DamagedTimesHideNothing)
{
    add("alwa_20240518_181200.avi", Minute(std::numeric_limits<int64_t>::min() / 2).speeds(0, {50}));
    SideDataWriter damaged;
    damaged.gsensor(0, 0, 0, 256).gsensor(std::numeric_limits<int64_t>::max(), 0, 0, 256);
    card.file("alwa_20240518_181300.avi", recordingFile(60, damaged));
    add("alwa_20240518_181400.avi", Minute().speeds(0, {80}));
    const auto all = figures();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].topSpeedKmh, 80);
}

TEST_F(DriveFiguresOf, NothingAreNoFigures)
{
    card.file("alwa_20240518_181200_F.avi", recordingFile(60));
    EXPECT_EQ(zavikctl({"drives", "--json", card.path()}).out,
        R"([{"start":"2024-05-18T18:12:00","end":"2024-05-18T18:13:00","recordings":[")"
            + card.path("alwa_20240518_181200_F.avi")
            + R"("],"distance_km":null,"top_speed_kmh":null,"strongest_g":null,"moments":[]}])"
              "\n");
}

TEST_F(DriveFiguresOf, TheCommandsTellThem)
{
    add("alwa_20240518_181200_F.avi", Minute().sample(300, 64, -32 - 512, 250).speeds(0, {60, 40}));
    const std::string file = card.path("alwa_20240518_181200_F.avi");
    const auto moment = [&](const char* rest) {
        return formatted("{\"file\":\"%s\",%s", file.c_str(), rest);
    };
    for (const std::string& named : {file, card.path()})
        EXPECT_EQ(zavikctl({"moments", "--json", named}).out,
            "[" + moment(R"("seconds":2,"kind":"braking","g":0.57,"direction":"front"},)") + "\n"
                + moment(R"("seconds":30,"kind":"impact","g":2,"direction":"front"}])") + "\n");
    EXPECT_THAT(zavikctl({"drives", card.path()}).out, testing::HasSubstr("2 moments"));
    card.file("alwa_20240518_181300_F.avi", std::string_view("no recording"));
    EXPECT_EQ(zavikctl({"moments", card.path()}).code, 1);
    const Outcome noRecording = zavikctl({"moments", card.path("alwa_20240518_181300_F.avi")});
    EXPECT_EQ(noRecording.code, 1);
    EXPECT_THAT(noRecording.err, testing::EndsWith("is no AVI recording\n"));
    EXPECT_THAT(
        zavikctl({"moments", "/nowhere.avi"}).err, testing::EndsWith("/nowhere.avi: cannot be opened\n"));
    for (const char* command : {"drives", "moments"}) {
        const Outcome unread = zavikctl({command, "--json", card.path()});
        EXPECT_EQ(unread.code, 1);
        EXPECT_THAT(unread.err, testing::EndsWith("alwa_20240518_181300_F.avi: could not be read\n"));
    }
}

} // namespace
