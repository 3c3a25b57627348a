#include "telemetry/ZVKNMEASentenceParser.h"
#include "tools/samplecard/DeviceSentence.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(NMEASentenceParser, GPGGAKeepsWhatASentenceLeavesEmpty)
{
    ZVKNMEASentenceParser parser;
    EXPECT_TRUE(parser.parse("$GPGGA,123519,4807.038,S,01131.000,W,1,08,0.9,545.4,M,46.9,M,,*47"));
    EXPECT_EQ(parser.m_Current.Latitude, double{4807.038f});
    EXPECT_EQ(parser.m_Current.NS, 'S');
    EXPECT_EQ(parser.m_Current.Longitude, 1131);
    EXPECT_EQ(parser.m_Current.EW, 'W');
    EXPECT_EQ(parser.m_Current.SatelliteUsedCount, 8u);
    EXPECT_EQ(parser.m_Current.HDOP, double{0.9f});

    ZVKGpsData wanted = parser.m_Current;
    wanted.SatelliteUsedCount = 0;
    EXPECT_TRUE(parser.parse("$GPGGA,,,,,,,,,*00"));
    EXPECT_EQ(parser.m_Current, wanted);
}

TEST(NMEASentenceParser, GPRMCSetsTheClockOnlyFromAFullTimeAndDate)
{
    const std::pair<std::string, _SYSTEMTIME> rows[] = {
        {"123519.250,A,4807.038,N,01131.000,E,022.4,084.5,230394", {2094, 3, 0, 23, 12, 35, 19, 250}},
        {"123519,A,4807.038,N,01131.000,E,022.4,084.5,230394", {}},
        {"123519.250,A,4807.038,N,01131.000,E,022.4,084.5,2303940", {}},
        {"12x519.250,A,4807.038,N,01131.000,E,022.4,084.5,230394", {2094, 3, 0, 23, 12, 0, 0, 0}},
    };
    for (const auto& [fields, now] : rows) {
        ZVKNMEASentenceParser parser;
        EXPECT_TRUE(parser.parse("$GPRMC," + fields + ",003.1,W*6A"));
        EXPECT_EQ(parser.m_Current.Now, now) << fields;
        EXPECT_EQ(parser.m_Current.SpeedOverGround, double{22.4f});
        EXPECT_EQ(parser.m_Current.CourseOverGround, 84.5);
        EXPECT_EQ(parser.m_Current.Latitude, 0);
    }
}

TEST(NMEASentenceParser, GPGSAListsTheSatellitesUsed)
{
    ZVKNMEASentenceParser parser;
    EXPECT_TRUE(parser.parse("$GPGSA,A,3,04,05,,09,300,,,24,,,,31,2.5,1.25,2.0*39"));
    const std::vector<uint8_t> wanted{4, 5, 0, 9, 300 & 0xFF, 0, 0, 24, 0, 0, 0, 31};
    for (int32_t i = 0; i < 12; ++i)
        EXPECT_EQ(parser.m_Current.SatelliteUsedAtIndex(i), wanted[static_cast<size_t>(i)]) << i;
    EXPECT_EQ(parser.m_Current.PDOP, 2.5);
    EXPECT_EQ(parser.m_Current.HDOP, 1.25);
    EXPECT_EQ(parser.m_Current.VDOP, 2);
}

TEST(NMEASentenceParser, GPGSVFillsChannelsInSeries)
{
    // Four satellites in each message: PRN 10 * message + 1 to 4, SNR 40 + the same digit.
    const auto message = [](int number) {
        std::string body = "GPGSV,4," + std::to_string(number) + ",16";
        for (int i = 1; i <= 4; ++i)
            body += "," + std::to_string(10 * number + i) + ",45,180," + std::to_string(40 + i);
        return sentenceWithChecksum(body);
    };
    ZVKNMEASentenceParser parser;
    for (const int number : {1, 2, 3, 4})
        EXPECT_TRUE(parser.parse(message(number)));
    for (int32_t channel = 0; channel < 12; ++channel) {
        const int satellite = channel % 4 + 1;
        const _PAIR wanted{
            static_cast<uint8_t>(10 * (channel / 4 + 1) + satellite), static_cast<uint8_t>(40 + satellite)};
        EXPECT_EQ(parser.m_Current.SVonChannelAtIndex(channel), wanted) << channel;
    }

    // The place in the series is the process's, not the parser's.
    ZVKNMEASentenceParser other;
    EXPECT_TRUE(other.parse(message(5)));
    EXPECT_TRUE(parser.parse(message(1)));
    parser.clear();
    EXPECT_TRUE(parser.parse(message(2)));
    EXPECT_EQ(parser.m_Current.SVonChannelAtIndex(0), _PAIR{});
    EXPECT_EQ(parser.m_Current.SVonChannelAtIndex(4).first, 21);

    EXPECT_TRUE(other.parse("$GPGSV,1,9,0*00")); // none in view: nothing else is looked at
    EXPECT_FALSE(other.parse(message(4)));
    EXPECT_EQ(other.m_Current.SatelliteCount, 16u);
    EXPECT_TRUE(parser.parse(message(3)));
}

TEST(NMEASentenceParser, RefusesWholeWhatItCannotRead)
{
    const std::string refused[] = {
        "",
        "$GAGGA,1,2,N,3,E,1,5,6*1",
        "$GPGGA,1,2,N,3,E,1,5*1",
        "$GPRMC,123519.250,A,1,N,2,E,3,4*1",
        "$GPGSA,A,3,1,2,3,4,5,6,7,8,9,10,11,12,1,2*1",
        "$GPGSV,1,1*1",
    };
    ZVKNMEASentenceParser parser;
    for (const std::string& sentence : refused) {
        EXPECT_FALSE(parser.parse(sentence)) << sentence;
        EXPECT_EQ(parser.m_Current, ZVKGpsData()) << sentence;
    }
    EXPECT_FALSE(parser.parseGPGSV({}));
}
