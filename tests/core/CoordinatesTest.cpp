#include "common/Coordinates.h"

#include <gtest/gtest.h>

TEST(Coordinates, ConvertsDegreesAndMinutesToDegrees)
{
    double latitude = 0;
    double longitude = 0;
    nmeaCoordinateToDegrees(&latitude, &longitude, 3730, -12745);
    EXPECT_DOUBLE_EQ(latitude, 37.5);
    EXPECT_DOUBLE_EQ(longitude, -127.75);
    nmeaCoordinateToDegrees(nullptr, &longitude, 1, 4807.038);
    EXPECT_NEAR(longitude, 48 + 7.038 / 60, 1e-12);
    nmeaCoordinateToDegrees(&latitude, nullptr, 59.4, 1);
    EXPECT_NEAR(latitude, 0.99, 1e-12);
    nmeaCoordinateToDegrees(nullptr, nullptr, 1, 1);
}
