#include "tests/support/AppDelegateProbe.h"
#include "tests/support/TempFolder.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

#include <QLabel>
#include <gtest/gtest.h>

namespace {

/// Ten samples with the GPS record that is paired with them.
void addSecond(
    SideDataWriter& sideData, double latitude, double longitude, double speed, double hdop, int satellites)
{
    const int64_t begin = static_cast<int64_t>(sideData.bytes().size());
    for (int i = 0; i < 10; ++i)
        sideData.gsensor(begin + i, 256, 0, 0);
    DeviceFix fix;
    fix.hdop = hdop;
    fix.satellitesUsed = satellites;
    sideData.gps({.timestamp = begin + 1000,
        .latitude = latitude,
        .longitude = longitude,
        .speed = speed,
        .km = '9',
        .text = deviceText(fix)});
}

TEST(TelemetryDisplay, ShowsNothingForWhatCannotBe)
{
    SideDataWriter sideData;
    addSecond(sideData, 3730, 12715, 54, 0.9, 7);
    addSecond(sideData, 9030, 12715, 2147483647, -1, -1);
    const TempFolder folder;
    folder.file("alwa_20150321_142530_F.avi", AviWriter().junk(sideData).bytes());
    AppDelegateProbe app;
    app.open(folder.path());
    app.start(0);
    const auto shown = [&](double position) {
        app.desk.map.scripts.clear();
        app.playInfo().setPosition(position);
        QStringList texts;
        for (const char* field :
            {"latitudeField", "longitudeField", "speedField", "hdopField", "sateliteField"})
            texts += app.find<QLabel>(field).text();
        return texts.join('|').toStdString() + ' ' + app.desk.map.scripts.back();
    };
    EXPECT_EQ(shown(0.4), "37.5000|127.2500|54 Km/h|0.9|7 setLatLag('127.250000','37.500000')");
    EXPECT_EQ(shown(0.8), "|127.2500||| setLatLag('0.000000','0.000000')") << "no fix";
}

} // namespace
