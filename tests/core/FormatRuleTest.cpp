#include "cardtools/format/FormatRule.h"

#include <gtest/gtest.h>

TEST(FormatRule, AMediumThatCannotBeToldIsNoCards)
{
    FormatFacts facts;
    facts.device = facts.card = facts.writable = true;
    facts.size = facts.sizeSeen = uint64_t(4) << 30;
    facts.cluster = 32;
    EXPECT_EQ(mayFormat(facts), FormatStatus::otherMedium);
    facts.medium = facts.mediumSeen = "17";
    EXPECT_EQ(mayFormat(facts), FormatStatus::ok);
}

TEST(FormatRule, NoPlaceOfTheSystemOrOfAHomeIsACards)
{
    for (const char* place : {"/media/user/ZAVIK", "/run/media/user/ZAVIK", "/mnt", "/mnt/card",
             "/tmp/x/card", "/home/user/card", "/root/card", "/data/card", "/card", "/mediaX", ""})
        EXPECT_FALSE(isSystemPlace(place)) << place;
    for (const char* place : {"/", "/boot", "/boot/efi", "/home", "/home/user", "/home/user/.local/share",
             "/root", "/usr", "/var/lib", "/opt/x", "/srv", "/etc", "/run/live/medium", "/cdrom",
             "/media/../home", "media/card"})
        EXPECT_TRUE(isSystemPlace(place)) << place;
}
