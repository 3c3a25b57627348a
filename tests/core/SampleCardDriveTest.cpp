#include "media/ZVKMedia.h"
#include "telemetry/MemoryByteSource.h"
#include "telemetry/ZVKBlackBoxData.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/RecordingPlan.h"
#include "tools/samplecard/Telemetry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace samplecard {

namespace {

const Drive& theDrive()
{
    static const Drive drive;
    return drive;
}

void readBack(const SideDataWriter& sideData, ZVKBlackBoxData& data)
{
    AviWriter avi;
    avi.junk(sideData);
    const std::vector<std::byte> bytes = avi.bytes();
    MemoryByteSource source(bytes);
    EXPECT_TRUE(data.ExtractStreamInformation(source));
}

} // namespace

TEST(SampleDrive, MovesAsItsInstrumentsSay)
{
    const Drive& drive = theDrive();
    constexpr double kStep = 0.01;
    constexpr double kGravity = 9.80665;
    for (double t = 1; t < 90; t += 0.37) {
        SCOPED_TRACE(t);
        const Motion before = drive.motionAt(t - kStep);
        const Motion now = drive.motionAt(t);
        const Motion after = drive.motionAt(t + kStep);
        EXPECT_NEAR((after.along - before.along) / (2 * kStep), now.speed, 0.01);
        EXPECT_NEAR((after.speed - before.speed) / (2 * kStep), now.acceleration, 0.05);
        const double turn = drive.road().at(after.along).heading - drive.road().at(before.along).heading;
        const Acceleration g = drive.accelerationAt(t);
        EXPECT_NEAR(turn / (2 * kStep) * now.speed / kGravity, g.x, 0.05);
        EXPECT_NEAR(now.acceleration / kGravity, g.y, 0.05);
    }
}

TEST(SamplePlan, NamesEveryRecordingSoThatItIsListed)
{
    for (const int seconds : {1, 3, 20, 30}) {
        SCOPED_TRACE(seconds);
        const std::vector<Recording> plan = planRecordings(theDrive(), seconds);
        ASSERT_EQ(plan.size(), 8U);
        for (const Recording& recording : plan) {
            SCOPED_TRACE(recording.name);
            const auto media = ZVKMedia::mediaWithPath("/card/" + recording.folder + "/" + recording.name);
            EXPECT_EQ(media.year(), 2024);
            EXPECT_EQ(media.hour(), 18);
            EXPECT_EQ(media.second(), recording.start % 60);
            const int kind = recording.folder == "AlwaysMovie" ? 0
                : recording.folder == "MotionMovie"            ? 1
                                                               : 2;
            EXPECT_EQ(media.mediaDivision(), kind);
        }
        for (size_t n = 2; n < 6; ++n)
            EXPECT_EQ(plan[n].start, plan[n - 2].start + seconds);
    }
}

TEST(SampleTelemetry, ContinuesFromOneRecordingToTheNext)
{
    SideDataWriter first = telemetryOf(theDrive(), 20, 5);
    const SideDataWriter second = telemetryOf(theDrive(), 25, 5);
    std::vector<std::byte> joined = first.bytes();
    joined.insert(joined.end(), second.bytes().begin(), second.bytes().end());
    EXPECT_EQ(joined, telemetryOf(theDrive(), 20, 10).bytes());
}

TEST(SampleTelemetry, IsReadBackAsItWasDriven)
{
    const int start = int(theDrive().tunnelEntry()) - 4;
    ZVKBlackBoxData data;
    readBack(telemetryOf(theDrive(), start, 8), data);
    ASSERT_EQ(data.m_GSensors.size(), 80U);
    ASSERT_EQ(data.m_vGpsData.size(), 80U);
    ASSERT_EQ(data.m_NMEAs.size(), 16U);
    int dark = 0;
    for (int n = 0; n < 80; ++n) {
        SCOPED_TRACE(n);
        const Acceleration g = theDrive().accelerationAt(start + n / 10.0);
        EXPECT_NEAR(data.m_GSensors[size_t(n)].x, g.x, 1.0 / 256);
        EXPECT_NEAR(data.m_GSensors[size_t(n)].z, g.z, 1.0 / 256);
        const Fix fix = theDrive().fixAt(start + n / 10);
        const _AVI_GPS_DATA_T header = data.m_vGpsData[size_t(n)].data;
        EXPECT_EQ(header.fSpeed, fix.kilometresPerHour);
        EXPECT_EQ(header.KM, '9');
        EXPECT_EQ(header.nQualityIndicator, fix.valid ? 1 : 0);
        EXPECT_EQ(header.fLatitude == 0, !fix.valid);
        dark += fix.valid ? 0 : 1;
    }
    EXPECT_GT(dark, 0);
    EXPECT_LT(dark, 80);
    EXPECT_EQ(data.m_NMEAs.back().SatelliteUsedCount, 0);
}

} // namespace samplecard
