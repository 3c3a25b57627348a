#include "telemetry/GpsTrack.h"
#include "tests/core/CliSupport.h"
#include "tests/support/Testing.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

namespace {

using ::testing::AllOf;

constexpr int64_t start = 1426947930000; // 2015-03-21 14:25:30 UTC
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Two samples, a GPS record in the south-west that is paired with them, a sample, and a record without a
/// position and with an impossible speed that is paired with it; one sample more.
SideDataWriter drive()
{
    // 33.5 S, 70.75 W, 36 km/h to the east, 7 satellites, HDOP 1.5
    const DeviceFix fix{2015, 3, 21, 14, 25, 30, true, 3330, 7045, 'S', 'W', 36, 90, 7, 1.5};
    GpsRecordFields gps{.timestamp = start + 100, .latitude = 3330, .longitude = 7045};
    gps.speed = 36;
    gps.km = '9';
    gps.text = deviceText(fix);
    SideDataWriter writer;
    writer.gsensor(start, 256, 0, -384, 25).gsensor(start + 100, 1, 0, 0, -3).gps(gps);
    gps = {.timestamp = start + 200, .quality = -1, .speed = infinity};
    gps.km = '\xFF';
    gps.text.clear();
    writer.gsensor(start + 200, 0, 0, 256).gps(gps).gsensor(start + 300, 0, 0, 256);
    return writer;
}

TEST(CliTelemetry, WritesTheListsAsJson)
{
    const TempFolder card;
    const std::string file = card.file("alwa_20150321_142530.avi", AviWriter().junk(drive()).bytes());
    const Outcome outcome = zavikctl({"telemetry", file, "--json"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out,
        R"({"result":true,"gsensor":[{"nTimestamp":1426947930000,"x":1,"y":0,"z":-1.5,"nTemperature":25},)"
        "\n"
        R"({"nTimestamp":1426947930100,"x":0.00390625,"y":0,"z":0,"nTemperature":-3},)"
        "\n"
        R"({"nTimestamp":1426947930200,"x":0,"y":0,"z":1,"nTemperature":0},)"
        "\n"
        R"({"nTimestamp":1426947930300,"x":0,"y":0,"z":1,"nTemperature":0}],)"
        R"("gps":[{"nTimestamp":1426947930100,"nQualityIndicator":1,"fLatitude":3330,"fLongitude":7045,"fSpeed":36,"KM":57},)"
        "\n"
        R"({"nTimestamp":1426947930100,"nQualityIndicator":1,"fLatitude":3330,"fLongitude":7045,"fSpeed":36,"KM":57},)"
        "\n"
        R"({"nTimestamp":1426947930200,"nQualityIndicator":-1,"fLatitude":0,"fLongitude":0,"fSpeed":null,"KM":255}],)"
        R"("fixes":[{"Latitude":3330,"NS":"S","Longitude":7045,"EW":"W","SpeedOverGround":36,"CourseOverGround":0,"HDOP":0,"SatelliteUsedCount":0,"Now":[0,0,0,0,14,25,30,0]},)"
        "\n"
        R"({"Latitude":3330,"NS":"S","Longitude":7045,"EW":"W","SpeedOverGround":36,"CourseOverGround":90,"HDOP":1.5,"SatelliteUsedCount":7,"Now":[2015,3,0,21,14,25,30,0]}]})"
        "\n");
}

TEST(CliTelemetry, WritesASampleWithItsGpsHeaderAsACsvRow)
{
    const TempFolder card;
    const std::string file = card.file("a.avi", AviWriter().junk(drive()).bytes());
    EXPECT_EQ(zavikctl({"telemetry", "--csv", file}).out,
        "nTimestamp,x,y,z,nTemperature,gps_nTimestamp,nQualityIndicator,fLatitude,fLongitude,fSpeed,KM\r\n"
        "1426947930000,1,0,-1.5,25,1426947930100,1,3330,7045,36,57\r\n"
        "1426947930100,0.00390625,0,0,-3,1426947930100,1,3330,7045,36,57\r\n"
        "1426947930200,0,0,1,0,1426947930200,-1,0,0,,255\r\n"
        "1426947930300,0,0,1,0,,,,,,\r\n");
}

TEST(CliTelemetry, WritesTheWayAsGpx)
{
    const TempFolder card;
    const std::string file = card.file("a<b>&\n\"\x1F\xFF.avi", AviWriter().junk(drive()).bytes());
    EXPECT_EQ(zavikctl({"telemetry", file, "--gpx"}).out,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<gpx version=\"1.1\" creator=\"zavikctl\" xmlns=\"http://www.topografix.com/GPX/1/1\"\n"
        "     xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v2\">\n"
        "  <trk>\n"
        "    <name>a&#60;b&#62;&#38;&#10;&#34;\uFFFD\uFFFD.avi</name>\n"
        "    <trkseg>\n"
        "      <trkpt lat=\"-33.50000000\" "
        "lon=\"-70.75000000\"><time>2015-03-21T14:25:30.100Z</time><extensions>"
        "<gpxtpx:TrackPointExtension><gpxtpx:speed>10</gpxtpx:speed></gpxtpx:TrackPointExtension>"
        "</extensions></trkpt>\n"
        "    </trkseg>\n"
        "  </trk>\n"
        "</gpx>\n");
}

TEST(CliTelemetry, SummarisesForPeople)
{
    const TempFolder card;
    const std::string file = card.file("a.avi", AviWriter().junk(drive()).bytes());
    EXPECT_THAT(zavikctl({"telemetry", file}).out,
        AllOf(HasSubstr("4 samples"), HasSubstr("2015-03-21T14:25:30Z to 2015-03-21T14:25:30.300Z"),
            HasSubstr("1.80 g (x +1.00, y +0.00, z -1.50)"), HasSubstr("2 records, 1 with a position"),
            HasSubstr("33.500000 S, 70.750000 W, 36 km/h")));
}

TEST(CliTelemetry, AcceptsRecordingsWithoutWholeSideData)
{
    const TempFolder card;
    std::vector<std::byte> cut =
        AviWriter().junk(SideDataWriter().gsensor(start, 0, 0, 256).gsensor(0, 0, 0, 0)).bytes();
    cut.pop_back();
    const std::string sample = R"({"nTimestamp":1426947930000,"x":0,"y":0,"z":1,"nTemperature":0})";
    for (const auto& [file, samples] :
        {std::pair(card.file("no.avi", AviWriter().filler(100).bytes()), std::string()),
            {card.file("cut.avi", cut), sample}}) {
        const Outcome json = zavikctl({"telemetry", file, "--json"});
        EXPECT_EQ(json.code, 0);
        EXPECT_EQ(json.out, R"({"result":false,"gsensor":[)" + samples + "],\"gps\":[],\"fixes\":[]}\n");
    }
}

ZVKGpsRecord record(int64_t milliseconds, double latitude, double longitude)
{
    ZVKGpsRecord made;
    made.header.nTimestamp = milliseconds;
    made.header.fLatitude = latitude;
    made.header.fLongitude = longitude;
    return made;
}

TEST(CliTelemetry, BeginsATrackSegmentAtEveryGap)
{
    constexpr auto earliest = std::numeric_limits<int64_t>::min();
    constexpr auto latest = std::numeric_limits<int64_t>::max();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const auto at = [](int64_t milliseconds) { return record(milliseconds, 3730, 12700); };
    const std::tuple<const char*, std::vector<ZVKGpsRecord>, std::vector<size_t>> cases[] = {
        {"more than ten seconds", {at(0), at(10001), at(11000)}, {1, 2}},
        {"back in time", {at(1000), at(999), at(2000)}, {1, 2}},
        {"absurd times", {at(earliest), at(latest), at(earliest)}, {1, 1, 1}},
        {"no position", {at(0), record(1000, 0, 0), at(2000)}, {1, 1}},
        {"poles and date line", {record(0, 9000, 18000), record(1000, -9000, -18000)}, {2}},
        {"beyond", {record(0, 9000.01, 0), at(1), record(2, 0, 18000.01), at(3), record(4, nan, 1)}, {1, 1}},
        {"infinite", {record(0, infinity, 1), record(1, 1, -infinity), at(2)}, {1}}};
    for (const auto& [what, records, expected] : cases) {
        std::vector<size_t> lengths;
        for (const auto& segment : trackSegments(records))
            lengths.push_back(segment.size());
        EXPECT_EQ(lengths, expected) << what;
    }
}

TEST(CliTelemetry, GivesSpeedsInKmh)
{
    ZVKGpsRecord miles = record(0, 1, 1);
    miles.header.fSpeed = 100;
    miles.header.KM = '1';
    EXPECT_DOUBLE_EQ(trackPoint(miles)->speed, 62.1371192);
}

} // namespace
