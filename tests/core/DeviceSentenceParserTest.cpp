#include "telemetry/ZVKZAVIKNMEASentenceParser.h"
#include "tools/samplecard/DeviceSentence.h"

#include <gtest/gtest.h>

namespace {

// 2015-07-31 23:59:58, 61.5 to 270.5 degrees, 9 satellites, HDOP 1.5
const DeviceFix fix{2015, 7, 31, 23, 59, 58, true, 3723.4567, 12701.25, 'S', 'W', 61.5, 270.5, 9, 1.5};

} // namespace

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
    const std::tuple<std::string, double, char, char, _SYSTEMTIME> rows[] = {
        {"$GA,,,,,,,*00", 3723.5, 'S', 'W', {}},
        {"$GA,010203,V,1.5,,,N,E*00", 1.5, 'N', 'W', {0, 0, 0, 0, 1, 2, 3, 0}}, // no valid fix: EW stays
        {"$GA,0102,,x,,,N,E*00", 0, 'N', 'E', {0, 0, 0, 0, 1, 2, 0, 0}},
        {"$GA,-1 203,v,,,,North,East,more,fields*00", 3723.5, 'N', 'E', {0, 0, 0, 0, 65535, 20, 3, 0}}};
    for (const auto& [sentence, latitude, ns, ew, now] : rows) {
        SCOPED_TRACE(sentence);
        ZVKZAVIKNMEASentenceParser parser;
        ASSERT_TRUE(parser.parse("$GA,235958,A,3723.5,12701.25,61.5,S,W*00"));
        EXPECT_TRUE(parser.parse(sentence));
        EXPECT_EQ(parser.m_Current.Latitude, latitude);
        EXPECT_EQ(parser.m_Current.Longitude, 12701.25);
        EXPECT_EQ(parser.m_Current.SpeedOverGround, 61.5);
        EXPECT_EQ(parser.m_Current.NS, ns);
        EXPECT_EQ(parser.m_Current.EW, ew);
        EXPECT_EQ(parser.m_Current.Now, now);
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
