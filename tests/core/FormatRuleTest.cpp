#include "cardtools/FormatRule.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

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

struct Refusal {
    FormatStatus status;
    std::function<void(FormatFacts&)> change;
};

const Refusal refusals[] = {
    {FormatStatus::notADevice, [](FormatFacts& f) { f.device = false; }},
    {FormatStatus::systemDisk, [](FormatFacts& f) { f.systemDisk = true; }},
    {FormatStatus::swapSpace, [](FormatFacts& f) { f.swapSpace = true; }},
    {FormatStatus::heldByOthers, [](FormatFacts& f) { f.held = true; }},
    {FormatStatus::notACard, [](FormatFacts& f) { f.card = false; }},
    {FormatStatus::otherSize, [](FormatFacts& f) { f.size += 512; }},
    {FormatStatus::otherSize, [](FormatFacts& f) { f.size = f.sizeSeen = 0; }},
    {FormatStatus::otherMedium, [](FormatFacts& f) { f.medium = "18"; }},
    {FormatStatus::otherMedium, [](FormatFacts& f) { f.medium = f.mediumSeen = ""; }},
    {FormatStatus::stillMounted, [](FormatFacts& f) { f.mounted = true; }},
    {FormatStatus::tooLarge, [](FormatFacts& f) { f.size = f.sizeSeen = 2048 * gib; }},
    {FormatStatus::wrongCluster, [](FormatFacts& f) { f.cluster = 128; }},
    {FormatStatus::writeProtected, [](FormatFacts& f) { f.writable = false; }},
};

} // namespace

TEST(FormatRule, RefusesWhateverIsNotTheCardThatTheUserChose)
{
    for (const Refusal& refusal : refusals) {
        SCOPED_TRACE(static_cast<int>(refusal.status));
        FormatFacts facts = cardThatMayBeFormatted();
        refusal.change(facts);
        EXPECT_EQ(mayFormat(facts), refusal.status);
        EXPECT_NE(formatStatusKey(static_cast<int>(refusal.status)), "");
    }
    EXPECT_EQ(mayFormat(FormatFacts()), FormatStatus::notADevice);
    EXPECT_EQ(mayFormat(cardThatMayBeFormatted()), FormatStatus::ok);
}

TEST(FormatRule, NoReasonHidesThatItIsTheSystemsDisk)
{
    FormatFacts facts = cardThatMayBeFormatted();
    for (const Refusal& refusal : refusals) {
        if (refusal.status != FormatStatus::notADevice)
            refusal.change(facts);
    }
    EXPECT_EQ(mayFormat(facts), FormatStatus::systemDisk);
}

TEST(FormatRule, ClusterFollowsWholeGibibytes)
{
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(0), 32);
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(7 * gib - 1), 32);
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(7 * gib), 128);
    EXPECT_EQ(clusterSizeByVolumeSizeInKB(16 * gib), 128);
}

TEST(FormatRule, OnlyPlacesForCardsAreNotTheSystems)
{
    for (const char* place :
        {"/media/user/ZAVIK", "/run/media/user/ZAVIK", "/mnt", "/mnt/card", "/tmp/x/card"})
        EXPECT_FALSE(isSystemPlace(place)) << place;
    for (const char* place : {"/", "/boot", "/boot/efi", "/home", "/home/user", "/usr", "/var/lib", "/opt",
             "", "/mediaX", "/mntX", "/media/../home", "media/card"})
        EXPECT_TRUE(isSystemPlace(place)) << place;
}
