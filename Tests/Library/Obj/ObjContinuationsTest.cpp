#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjText.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Reference/Formats/ReferenceObjReader.h"
#include "Support/Rng.h"

using namespace quarn;
using namespace quarn::test;

namespace {

constexpr std::size_t kMillion = 1000000;

std::string blanked(std::string text) {
    detail::blankContinuations(text);
    return text;
}

}  // namespace

TEST(ObjContinuations, BackslashAndLineFeedBecomeTwoBlanks) {
    EXPECT_EQ(blanked("v 1 2\\\n3\n"), "v 1 2  3\n");
    EXPECT_EQ(blanked("\\\n\\\n"), "    ");
    EXPECT_EQ(blanked("a\\\\\nb"), "a\\  b");
}

TEST(ObjContinuations, OtherBackslashesStay) {
    for (const char* text : {"", "\\", "a\\", "\\ \n", "\\\r\n", "\\n", "\n\\", "\\\\\\"})
        EXPECT_EQ(blanked(text), text);
}

TEST(ObjContinuations, NulsAreBytesLikeOthers) {
    const std::string text("a\0\\\nb\0", 6);
    EXPECT_EQ(blanked(text), std::string("a\0  b\0", 6));
}

TEST(ObjContinuations, RandomTextsAreBlankedAsByOneLoop) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        std::string text(static_cast<std::size_t>(rng.integer(0, 40)), ' ');
        for (char& c : text) c = "\\\\\na"[rng.integer(0, 3)];
        ASSERT_EQ(blanked(text), referenceBlanked(text)) << i;
    }
}

TEST(ObjContinuations, PairsAcrossTwoRangesAreBlanked) {
    // Three ranges, with backslashes and line feeds in all ways around their limits.
    for (int i = 0; i < seedCount(64); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::string text(2 * kMillion + 5, 'x');
        for (const std::size_t limit : {kMillion, 2 * kMillion})
            for (std::size_t k = limit - 4; k < limit + 4; ++k) text[k] = "\\\\\n"[rng.integer(0, 2)];
        ASSERT_TRUE(blanked(text) == referenceBlanked(text));
    }
}

TEST(ObjContinuations, LargeTextOfNothingButPairsIsBlanked) {
    std::string text;
    while (text.size() < 3 * kMillion) text += "\\\n";
    EXPECT_TRUE(blanked(text) == std::string(text.size(), ' '));
    // Shifted by one, so that each limit lies within a pair.
    EXPECT_TRUE(blanked("\n" + text) == "\n" + std::string(text.size(), ' '));
}

TEST(ObjContinuations, ShortTextIsOneRangeWithoutItsLastByte) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{2}, std::size_t{1000}, kMillion - 1}) {
        const std::vector<detail::ObjRange> ranges = detail::continuationRanges(size);
        ASSERT_EQ(ranges.size(), 1U);
        EXPECT_EQ(ranges[0].first, 0U);
        EXPECT_EQ(ranges[0].last, size - 1);
    }
}

TEST(ObjContinuations, EmptyTextIsOneEmptyRange) {
    const std::vector<detail::ObjRange> ranges = detail::continuationRanges(0);
    ASSERT_EQ(ranges.size(), 1U);
    EXPECT_EQ(ranges[0].first, ranges[0].last);
}

TEST(ObjContinuations, RangesJoinWithoutGapUpToTheLastByte) {
    for (const std::size_t size :
         {kMillion, kMillion + 1, 105 * kMillion, 320 * kMillion + 7, std::size_t{2147483647}}) {
        SCOPED_TRACE(size);
        const std::vector<detail::ObjRange> ranges = detail::continuationRanges(size);
        std::size_t next = 0;
        for (const detail::ObjRange& range : ranges) {
            EXPECT_EQ(range.first, next);
            EXPECT_LE(range.first, range.last);
            next = range.last;
        }
        EXPECT_GE(next, size - 1);
        EXPECT_LE(next, size);
    }
}

TEST(ObjContinuations, NumberOfRangesGrowsWithTheSizeUpToAbout257) {
    EXPECT_EQ(detail::continuationRanges(kMillion - 1).size(), 1U);
    EXPECT_EQ(detail::continuationRanges(kMillion).size(), 2U);
    EXPECT_EQ(detail::continuationRanges(105 * kMillion).size(), 106U);
    EXPECT_EQ(detail::continuationRanges(255 * kMillion + 999999).size(), 256U);
    EXPECT_EQ(detail::continuationRanges(256 * kMillion).size(), 257U);
    EXPECT_EQ(detail::continuationRanges(2000 * kMillion).size(), 257U);
}

TEST(ObjContinuations, SizeCountsAsASignedNumberOf32Bits) {
    constexpr std::size_t k2GiB = std::size_t{1} << 31U;
    constexpr std::size_t k4GiB = std::size_t{1} << 32U;
    EXPECT_TRUE(detail::continuationRanges(k2GiB).empty());
    EXPECT_TRUE(detail::continuationRanges(k4GiB - kMillion).empty());
    // So near to zero that there is one piece, which is empty.
    ASSERT_EQ(detail::continuationRanges(k4GiB - 5).size(), 1U);
    EXPECT_EQ(detail::continuationRanges(k4GiB - 5)[0].first, detail::continuationRanges(k4GiB - 5)[0].last);
    // Beyond 4 GiB only the rest counts.
    ASSERT_EQ(detail::continuationRanges(k4GiB + 100).size(), 1U);
    EXPECT_EQ(detail::continuationRanges(k4GiB + 100)[0].last, 99U);
}
