#include "tests/support/AppDelegateProbe.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

namespace {

/// Ten samples with the GPS record that is paired with them.
void addSecond(SideDataWriter& sideData, GpsRecordFields gps, const DeviceFix& fix)
{
    const int64_t begin = static_cast<int64_t>(sideData.bytes().size());
    for (int i = 0; i < 10; ++i)
        sideData.gsensor(begin + i, 256, 0, 0);
    gps.timestamp = begin + 1000;
    gps.text = deviceText(fix);
    sideData.gps(gps);
}

using TelemetryDisplay = AppTest;
TEST_F(TelemetryDisplay, ShowsNothingForWhatCannotBe)
{
    SideDataWriter sideData;
    addSecond(sideData, {.latitude = 3730, .longitude = 12715, .speed = 54, .km = '9'},
        {.satellitesUsed = 7, .hdop = 0.9});
    addSecond(sideData, {.latitude = 9030, .longitude = 12715, .speed = 2147483647, .km = '9'},
        {.satellitesUsed = -1, .hdop = -1});
    folder.file("alwa_20150321_142530_F.avi", AviWriter().junk(sideData).bytes());
    app.open(folder.path());
    app.start(0);
    const auto shown = [&](double position) {
        app.desk.map.scripts.clear();
        app.playInfo().setPosition(position);
        return app.texts({"latitudeField", "longitudeField", "speedField", "hdopField", "sateliteField"})
            + ' ' + app.desk.map.scripts.back();
    };
    EXPECT_EQ(shown(0.4), "37.5000|127.2500|54 Km/h|0.9|7 setLatLag('127.250000','37.500000')");
    EXPECT_EQ(shown(0.8), "|127.2500||| setLatLag('0.000000','0.000000')") << "no fix";
}

} // namespace
