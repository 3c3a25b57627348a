#include "cardtools/FormatRule.h"

#include <gtest/gtest.h>

namespace {

constexpr uint64_t gib = uint64_t(1) << 30;

FormatFacts cardThatMayBeFormatted()
{
    FormatFacts facts;
    facts.device = true;
    facts.card = true;
    facts.writable = true;
    facts.size = facts.sizeSeen = 4 * gib;
    facts.medium = facts.mediumSeen = "17";
    facts.cluster = 32;
    return facts;
}

} // namespace

TEST(FormatRule, RefusesACardOfAnotherSizeOrMediumThanTheUserChose)
{
    const std::pair<FormatStatus, std::function<void(FormatFacts&)>> refusals[] = {
        {FormatStatus::otherSize, [](FormatFacts& f) { f.size += 512; }},
        {FormatStatus::otherSize, [](FormatFacts& f) { f.size = f.sizeSeen = 0; }},
        {FormatStatus::otherMedium, [](FormatFacts& f) { f.medium = f.mediumSeen = ""; }},
        {FormatStatus::tooLarge, [](FormatFacts& f) { f.size = f.sizeSeen = 2048 * gib; }},
        {FormatStatus::wrongCluster, [](FormatFacts& f) { f.cluster = 128; }},
        // No other reason hides that it is the system's disk.
        {FormatStatus::systemDisk, [](FormatFacts& f) {
             f.systemDisk = f.swapSpace = f.held = f.mounted = true;
             f.card = f.writable = false;
             f.medium = "18";
         }}};
    for (const auto& [status, change] : refusals) {
        SCOPED_TRACE(static_cast<int>(status));
        FormatFacts facts = cardThatMayBeFormatted();
        change(facts);
        EXPECT_EQ(mayFormat(facts), status);
    }
    for (int status = 1; status <= static_cast<int>(FormatStatus::stillWorking); ++status)
        EXPECT_EQ(formatStatusKey(status).empty(), status > 8 && status < 20) << status;
    EXPECT_EQ(mayFormat(FormatFacts()), FormatStatus::notADevice);
    EXPECT_EQ(mayFormat(cardThatMayBeFormatted()), FormatStatus::ok);
}

TEST(FormatRule, ClusterFollowsWholeGibibytes)
{
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(0), 32);
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(7 * gib - 1), 32);
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(7 * gib), 128);
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(16 * gib), 128);
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
