#include "telemetry/Readouts.h"
#include "tests/support/Testing.h"

TEST(Readouts, PickTheEntryByFraction)
{
    using Case = std::tuple<double, size_t, size_t>;
    for (const auto& [position, n, expected] : {Case{0, 100, 0}, {0.505, 100, 50}, {0.999, 100, 99},
             {1, 100, 99}, {-0.5, 100, 99}, {-0.001, 100, 0}, {7, 100, 99}, {0.5, 1, 0}, {1e300, 3, 2},
             {std::numeric_limits<double>::infinity(), 3, 2}, {std::nan(""), 3, 0}})
        EXPECT_EQ(proportionalIndex(position, n), expected) << position << " of " << n;
}

TEST(Readouts, ConvertSpeedByMarkerAndUnit)
{
    using Case = std::tuple<double, uint8_t, bool, const char*>;
    for (const auto& [speed, KM, showMiles, expected] :
        {Case{100.7, '1', false, "62 Km/h"}, {100.7, '1', true, "100 Mi/h"}, {100.7, '9', false, "100 Km/h"},
            {100.7, '9', true, "162 Mi/h"}, {100.7, '0', false, "100 Km/h"}, {100.7, 0, true, "100 Mi/h"},
            {0, '0', false, "0 Km/h"}, {1000, '9', true, "1609 Mi/h"}, {1600, '1', false, "994 Km/h"},
            // What cannot be, in either unit.
            {-3.9, '0', false, ""}, {std::nan(""), '0', false, ""}, {1001, '0', true, ""},
            {1e300, '0', false, ""}, {1610, '1', true, ""}, {-1e300, '9', true, ""}})
        EXPECT_EQ(speedText(speed, KM, showMiles), expected) << speed;
}

TEST(Readouts, ShowNothingForWhatCannotBe)
{
    const double nan = std::nan("");
    EXPECT_EQ(degreesText(-90, 90), "-90.0000");
    EXPECT_EQ(degreesText(180, 180), "180.0000");
    for (const double degrees : {90.0001, -90.0001, 1e300, nan})
        EXPECT_EQ(degreesText(degrees, 90), "") << degrees;
    EXPECT_EQ(hdopText(0.94), "0.9");
    EXPECT_EQ(gsensorText('X', 1.2345f), "X=+1.23");
    EXPECT_EQ(gsensorText('Y', -0.5f), "Y=-0.50");
    EXPECT_EQ(gsensorText('Z', 0), "Z=0.00");
    for (const double hdop : {-0.1, 1000.0, std::numeric_limits<double>::infinity(), nan})
        EXPECT_EQ(hdopText(hdop), "") << hdop;
    EXPECT_EQ(satelliteText(99), "99");
    EXPECT_EQ(satelliteText(static_cast<uint32_t>(-1)), "");
    EXPECT_EQ(gsensorText('X', -200.5f), "X=");
    EXPECT_EQ(gsensorText('X', std::numeric_limits<float>::quiet_NaN()), "X=");
}

TEST(Readouts, CallTheMapWithLongitudeFirst)
{
    EXPECT_EQ(setLatLagScript(127.25, -37.5), "setLatLag('127.250000','-37.500000')");
    for (const auto& [longitude, latitude] : {std::pair(180.5, 37.0), {127.0, -90.5}, {std::nan(""), 1.0}})
        EXPECT_EQ(setLatLagScript(longitude, latitude), "setLatLag('0.000000','0.000000')") << "no fix";
}
