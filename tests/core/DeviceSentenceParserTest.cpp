#include "telemetry/ZVKZAVIKNMEASentenceParser.h"
#include "tools/samplecard/DeviceSentence.h"

#include <gtest/gtest.h>

namespace {

const DeviceFix fix{
    .year = 2015,
    .month = 7,
    .day = 31,
    .hour = 23,
    .minute = 59,
    .second = 58,
    .latitude = 3723.4567,
    .longitude = 12701.25,
    .ns = 'S',
    .ew = 'W',
    .speed = 61.5,
    .course = 270.5,
    .satellitesUsed = 9,
    .hdop = 1.5,
};

}

TEST(DeviceSentenceParser, TheDateComesFromWhicheverSentenceWasLast)
{
    ZVKZAVIKNMEASentenceParser parser;
    EXPECT_TRUE(parser.parse(gaSentence(fix)));
    EXPECT_EQ(parser.m_Current.Now, (_SYSTEMTIME{0, 0, 0, 0, 23, 59, 58, 0}));
    EXPECT_TRUE(parser.parse(gcSentence(fix)));
    EXPECT_EQ(parser.m_Current.Now, (_SYSTEMTIME{2015, 7, 0, 31, 23, 59, 58, 0}));

    ZVKGpsData wanted;
    wanted.Now = parser.m_Current.Now;
    wanted.Latitude = 3723.4567f;
    wanted.Longitude = 12701.25;
    wanted.NS = 'S';
    wanted.EW = 'W';
    wanted.SpeedOverGround = 61.5;
    wanted.CourseOverGround = 270.5;
    wanted.SatelliteUsedCount = 9;
    wanted.HDOP = 1.5;
    EXPECT_EQ(parser.m_Current, wanted);

    EXPECT_TRUE(parser.parse(gaSentence(fix)));
    EXPECT_EQ(parser.m_Current.Now.wYear, 0);
}

TEST(DeviceSentenceParser, GALeavesWhatItDoesNotCarry)
{
    struct Row {
        std::string sentence;
        double latitude;
        char ns;
        char ew;
        _SYSTEMTIME now;
    };
    const Row rows[] = {
        {"$GA,,,,,,,*00", 3723.5, 'S', 'W', {}},
        {"$GA,010203,V,1.5,,,N,E*00", 1.5, 'N', 'W', {0, 0, 0, 0, 1, 2, 3, 0}}, // no valid fix: EW stays
        {"$GA,0102,,x,,,N,E*00", 0, 'N', 'E', {0, 0, 0, 0, 1, 2, 0, 0}},
        {"$GA,-1 203,v,,,,North,East,more,fields*00", 3723.5, 'N', 'E', {0, 0, 0, 0, 65535, 20, 3, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sentence);
        ZVKZAVIKNMEASentenceParser parser;
        ASSERT_TRUE(parser.parse("$GA,235958,A,3723.5,12701.25,61.5,S,W*00"));
        EXPECT_TRUE(parser.parse(row.sentence));
        EXPECT_EQ(parser.m_Current.Latitude, row.latitude);
        EXPECT_EQ(parser.m_Current.Longitude, 12701.25);
        EXPECT_EQ(parser.m_Current.SpeedOverGround, 61.5);
        EXPECT_EQ(parser.m_Current.NS, row.ns);
        EXPECT_EQ(parser.m_Current.EW, row.ew);
        EXPECT_EQ(parser.m_Current.Now, row.now);
    }
}

TEST(DeviceSentenceParser, GCCountsEmptyFieldsAsZero)
{
    ZVKZAVIKNMEASentenceParser parser;
    ASSERT_TRUE(parser.parse(gcSentence(fix)));
    EXPECT_TRUE(parser.parse("$GC,,010115,1,2,,,,*00"));
    ZVKGpsData wanted;
    wanted.Now = {2015, 1, 0, 1, 0, 0, 0, 0};
    EXPECT_EQ(parser.m_Current, wanted);
}

TEST(DeviceSentenceParser, RefusesWholeWhatItCannotRead)
{
    ZVKZAVIKNMEASentenceParser parser;
    for (const char* sentence : {"", "$GA", "$GA,235958,A,1,2,3,S,W", "$GA,235958,A,1,2,3,S*00",
             "$GA,235958,A,1,2,3,S,W*00*", "$GC,235958,310715,,,9,1,6*00", "$GB,235958,A,1,2,3,S,W*00",
             "$GPGGA,1,2,N,3,E,1,5,6*00", "$GA,235958,A,1,2,3,\xFF,W*00", "$ga,235958,A,1,2,3,S,W*00"}) {
        EXPECT_FALSE(parser.parse(sentence)) << sentence;
        EXPECT_EQ(parser.m_Current, ZVKGpsData()) << sentence;
    }
}
