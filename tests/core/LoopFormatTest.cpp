#include "tests/support/LoopDevice.h"
#include "tools/formathelper/BootSector.h"
#include "tools/formathelper/FormatCard.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <fstream>

namespace {

constexpr uint64_t gib = uint64_t(1) << 30;

FormatPolicy loopPolicy()
{
    FormatPolicy policy;
    policy.acceptsLoopDevices = true;
    return policy;
}

FormatRequest request(const LoopDevice& card, uint64_t size)
{
    return {card.name, clusterSizeByVolumeSizeInKB(size), size, card.sequence()};
}

std::vector<std::byte> start(const std::string& path)
{
    std::vector<std::byte> bytes(checkedBytes);
    std::ifstream(path, std::ios::binary)
        .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

class LoopFormat : public testing::Test {
protected:
    void SetUp() override
    {
        if (!LoopDevice::isAvailable())
            GTEST_SKIP() << "loop devices need root: formatting for real was not tested";
    }
};

} // namespace

TEST_F(LoopFormat, EverySizeOfCardIsAsTheCameraNeedsIt)
{
    for (const uint64_t size : {gib / 2, 4 * gib, 7 * gib - 512, 7 * gib, 32 * gib, 128 * gib}) {
        SCOPED_TRACE(size);
        const LoopDevice card(size);
        ASSERT_NE(card.name, "");
        const FormatResult result = formatCard(request(card, size), loopPolicy());
        EXPECT_EQ(result.status, FormatStatus::ok) << result.detail;
        const auto bytes = start(card.image());
        EXPECT_EQ(fileSystemFault(bytes, {size, size < 7 * gib ? 32 : 128}), "");
        // Each field counts: with one bit of it changed the card is not as asked.
        for (const size_t offset : {11, 13, 14, 16, 17, 19, 21, 22, 32, 37, 40, 42, 44, 48, 50, 65, 66, 71,
                 82, 511, 512, 996, 3072, 3584 + 484}) {
            auto changed = bytes;
            changed[offset] ^= std::byte(4);
            EXPECT_NE(fileSystemFault(changed, {size, size < 7 * gib ? 32 : 128}), "") << offset;
        }
        EXPECT_TRUE(
            platform::runTool({{"fsck.fat", "-n", card.path()}, std::chrono::minutes(1)}).succeeded());
    }
}

TEST_F(LoopFormat, ToolsThatAreMissingFailHangOrLieAreTold)
{
    const uint64_t size = gib / 2;
    const LoopDevice card(size);
    const TempFolder folder;
    const auto with = [&](const std::string& text) {
        FormatPolicy policy = loopPolicy();
        policy.mkfs = text.empty() ? folder.path("nothing") : folder.program("tool", text);
        policy.mkfsLimit = std::chrono::milliseconds(text.find("sleep") == std::string::npos ? 60'000 : 100);
        return formatCard(request(card, size), policy).status;
    };
    EXPECT_EQ(with(""), FormatStatus::toolMissing);
    EXPECT_EQ(with("sleep 600\n"), FormatStatus::tookTooLong);
    EXPECT_EQ(with("echo no >&2; exit 1\n"), FormatStatus::toolFailed);
    EXPECT_EQ(with("exit 0\n"), FormatStatus::notAsAsked);
    // Pulled while the tool runs.
    EXPECT_EQ(with("truncate -s 0 " + card.image() + "; exit 1\n"), FormatStatus::cardGone);
    // The check of the file system.
    FormatPolicy policy = loopPolicy();
    policy.fsck = folder.program("tool", "echo bad; exit 1\n");
    const LoopDevice second(size);
    const FormatResult unclean = formatCard(request(second, size), policy);
    EXPECT_EQ(unclean.status, FormatStatus::notClean);
    EXPECT_EQ(unclean.detail, "bad");
}

TEST_F(LoopFormat, CardThatSomethingElseHoldsIsNotTouched)
{
    const uint64_t size = gib / 2;
    const LoopDevice card(size);
    const int holder = open(card.path().c_str(), O_RDWR | O_EXCL | O_CLOEXEC);
    ASSERT_GE(holder, 0);
    EXPECT_EQ(formatCard(request(card, size), loopPolicy()).status, FormatStatus::stillMounted);
    close(holder);
    // The program that is installed takes no file for a card.
    EXPECT_EQ(formatCard(request(card, size), FormatPolicy()).status, FormatStatus::notACard);
    const LoopDevice locked(size, true);
    EXPECT_EQ(formatCard(request(locked, size), loopPolicy()).status, FormatStatus::writeProtected);
    EXPECT_EQ(start(card.image()), std::vector<std::byte>(checkedBytes));
}
