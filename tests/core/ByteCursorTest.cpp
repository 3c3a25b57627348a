#include "common/ByteCursor.h"
#include "tests/core/SideDataSupport.h"
#include "tests/support/Testing.h"

namespace {

std::vector<std::byte> numberedBytes(size_t count)
{
    std::vector<std::byte> bytes(count);
    for (size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::byte>(i * 31 + (i >> 8) * 7 + (i >> 16));
    return bytes;
}

} // namespace

TEST(ByteCursor, BehavesLikeAnIndexIntoTheBytes)
{
    const auto bytes = numberedBytes(2'000'000);
    std::mt19937 random(1);
    for (const size_t portion : {size_t{1'000}, bytes.size()}) {
        UnreliableSource source(bytes);
        source.portion = portion;
        ByteCursor cursor(source);
        uint64_t place = 0;
        std::vector<std::byte> into(5000);
        while (place < bytes.size()) {
            const size_t count = random() % (random() % 8 == 0 ? into.size() : 60);
            switch (random() % 4) {
            case 0:
                cursor.skip(count);
                place += count;
                break;
            case 1:
                cursor.stepBack();
                place -= place > 0 ? 1 : 0;
                break;
            default:
                const size_t wanted = std::min<size_t>(count, bytes.size() - place);
                ASSERT_EQ(cursor.read(std::span(into).first(count)), wanted);
                ASSERT_TRUE(std::equal(into.begin(), into.begin() + wanted, bytes.begin() + place));
                ASSERT_EQ(cursor.shortfall() == ByteCursor::Shortfall::none, wanted == count);
                place += wanted;
            }
            ASSERT_EQ(cursor.position(), place);
        }
    }
}

TEST(ByteCursor, StepsBackAtTheEndOfTheData)
{
    const auto bytes = numberedBytes(3);
    MemoryByteSource source(bytes);
    ByteCursor cursor(source);
    EXPECT_FALSE(cursor.readWord());
    EXPECT_EQ(cursor.shortfall(), ByteCursor::Shortfall::endOfData);
    cursor.stepBack();
    std::byte last{};
    EXPECT_TRUE(cursor.readWhole(std::span(&last, 1)));
    EXPECT_EQ(last, bytes[2]);
}

TEST(ByteCursor, FindsEitherWord)
{
    const std::string text = std::string(40'000, '.') + "1234" + std::string(4, '.') + "5678567";
    MemoryByteSource source(asBytes(text));
    ByteCursor cursor(source);
    for (const uint64_t place : {40'004, 40'012}) {
        EXPECT_TRUE(cursor.readWordsUntil(0x34333231, 0x38373635));
        EXPECT_EQ(cursor.position(), place);
    }
    EXPECT_FALSE(cursor.readWordsUntil(0x34333231, 0x38373635));
    EXPECT_EQ(cursor.position(), text.size());
}
