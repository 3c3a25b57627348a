#include "telemetry/Readouts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(Readouts, PickTheEntryByFraction)
{
    struct Case {
        double position;
        size_t n;
        size_t expected;
    };
    for (const auto& [position, n, expected] : {Case{0, 100, 0}, {0.505, 100, 50}, {0.999, 100, 99},
             {1, 100, 99}, {-0.5, 100, 99}, {-0.001, 100, 0}, {7, 100, 99}, {0.5, 1, 0}, {1e300, 3, 2},
             {std::numeric_limits<double>::infinity(), 3, 2}, {std::nan(""), 3, 0}})
        EXPECT_EQ(proportionalIndex(position, n), expected) << position << " of " << n;
}

TEST(Readouts, SignTheGSensorValues)
{
    EXPECT_EQ(gsensorText('X', 1.2345f), "X=+1.23");
    EXPECT_EQ(gsensorText('Y', -0.5f), "Y=-0.50");
    EXPECT_EQ(gsensorText('Z', 0), "Z=0.00");
    EXPECT_EQ(gsensorText('X', 0.0001f), "X=+0.00");
}

TEST(Readouts, ConvertSpeedByMarkerAndUnit)
{
    struct Case {
        double speed;
        uint8_t KM;
        bool showMiles;
        const char* expected;
    };
    for (const auto& [speed, KM, showMiles, expected] :
        {Case{100.7, '1', false, "62 Km/h"}, {100.7, '1', true, "100 Mi/h"}, {100.7, '9', false, "100 Km/h"},
            {100.7, '9', true, "162 Mi/h"}, {100.7, '0', false, "100 Km/h"}, {100.7, 0, true, "100 Mi/h"},
            {-3.9, '0', false, "-3 Km/h"}, {std::nan(""), '0', false, "0 Km/h"},
            {1e300, '0', false, "2147483647 Km/h"}, {-1e300, '9', true, "-2147483648 Mi/h"}})
        EXPECT_EQ(speedText(speed, KM, showMiles), expected);
}

TEST(Readouts, CallTheMapWithLongitudeFirst)
{
    EXPECT_EQ(setLatLagScript(127.25, -37.5), "setLatLag('127.250000','-37.500000')");
}
