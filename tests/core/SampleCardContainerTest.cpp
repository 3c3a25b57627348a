#include "tools/samplecard/AviContainer.h"
#include "tools/samplecard/LittleEndian.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace samplecard {

namespace {

using Bytes = std::vector<std::byte>;

Bytes chunk(std::string_view id, const Bytes& body)
{
    Bytes bytes;
    putText(bytes, id);
    putNumber(bytes, body.size(), 4);
    bytes.insert(bytes.end(), body.begin(), body.end());
    if (body.size() % 2)
        bytes.push_back(std::byte(0));
    return bytes;
}

Bytes list(std::string_view type, const std::vector<Bytes>& parts)
{
    Bytes body;
    putText(body, type);
    for (const Bytes& part : parts)
        body.insert(body.end(), part.begin(), part.end());
    return chunk("LIST", body);
}

// An index of two pictures of 5 and 8 bytes, counted from a base.
Bytes index(uint32_t base)
{
    Bytes body;
    for (const auto& [offset, size] : {std::pair{4U, 5U}, std::pair{18U, 8U}}) {
        putText(body, "00dc");
        putNumber(body, 16, 4);
        putNumber(body, base + offset, 4);
        putNumber(body, size, 4);
    }
    return chunk("idx1", body);
}

Bytes tinyAvi(uint32_t indexBase = 0)
{
    Bytes body;
    putText(body, "AVI ");
    const Bytes inner = chunk("JUNK", Bytes(6, std::byte(1)));
    for (const Bytes& part : {list("hdrl", {chunk("avih", Bytes(56)), inner}), chunk("JUNK", Bytes(1017)),
             list("movi", {chunk("00dc", Bytes(5, std::byte(2))), chunk("00dc", Bytes(8, std::byte(3)))}),
             index(indexBase)})
        body.insert(body.end(), part.begin(), part.end());
    return chunk("RIFF", body);
}

uint32_t numberAt(const Bytes& bytes, size_t offset)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= uint32_t(bytes.at(offset + i)) << (8 * i);
    return value;
}

std::string idAt(const Bytes& bytes, size_t offset)
{
    return {reinterpret_cast<const char*>(&bytes.at(offset)),
        reinterpret_cast<const char*>(&bytes.at(offset)) + 4};
}

} // namespace

TEST(SampleContainer, EndsWithTheSideDataAndKeepsTheIndexRight)
{
    for (const std::string odd : {"", "x"}) {
        SideDataWriter sideData;
        sideData.gsensor(1, 2, 3, 4).foreign(odd);
        Bytes avi = tinyAvi();
        const size_t before = avi.size();
        ASSERT_EQ(embedSideData(avi, sideData), std::nullopt);
        EXPECT_EQ(avi.size() % 2, 0U);
        EXPECT_EQ(numberAt(avi, 4), avi.size() - 8);
        std::string order;
        size_t movi = 0;
        size_t last = 0;
        for (size_t at = 12; at < avi.size(); at += 8 + (numberAt(avi, at + 4) + 1) / 2 * 2) {
            order += idAt(avi, at) + " ";
            last = at;
            if (idAt(avi, at + 8) == "movi")
                movi = at + 8;
        }
        EXPECT_EQ(order, "LIST LIST idx1 JUNK ");
        EXPECT_EQ(before - 1026 + 8 + sideData.bytes().size() + odd.size(), avi.size());
        const Bytes area(avi.begin() + ptrdiff_t(last) + 8, avi.begin() + ptrdiff_t(last) + 8 + 28);
        EXPECT_EQ(area, Bytes(sideData.bytes().begin(), sideData.bytes().begin() + 28));
        ASSERT_NE(movi, 0U);
        EXPECT_EQ(numberAt(avi, movi + 4 + 4), 5U);
        EXPECT_EQ(idAt(avi, movi + 18), "00dc");
        EXPECT_EQ(numberAt(avi, movi + 18 + 4), 8U);
        EXPECT_EQ(idAt(avi, 12 + 12 + 64), "JUNK"); // the one in the header's list
    }
}

TEST(SampleContainer, LeavesAloneWhatItWouldBreak)
{
    const Bytes whole = tinyAvi();
    const std::function<Bytes()> rows[] = {
        [] { return Bytes(); }, [&] { return Bytes(whole.begin(), whole.begin() + 11); },
        [&] { return Bytes(whole.begin(), whole.end() - 20); },
        [&] {
            Bytes b = whole;
            b[8] = std::byte('W');
            return b;
        },
        [&] {
            Bytes b = whole;
            b[16 + 1] = std::byte(0x7F);
            return b;
        }, // a list beyond the file
        [] { return tinyAvi(1150); }, // offsets from the file's beginning
    };
    for (const auto& make : rows) {
        SCOPED_TRACE(&make - rows);
        Bytes avi = make();
        const Bytes before = avi;
        EXPECT_NE(embedSideData(avi, SideDataWriter().gsensor(1, 2, 3, 4)), std::nullopt);
        EXPECT_EQ(avi, before);
    }
}

} // namespace samplecard
