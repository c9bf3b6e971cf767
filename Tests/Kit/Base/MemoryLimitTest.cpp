#include <QuarnKit/Base/MemoryLimit.h>

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

TEST(MemoryLimit, SizesCountInPowersOf1024) {
    EXPECT_EQ(parseMemorySize("1"), 1U);
    EXPECT_EQ(parseMemorySize("3K"), 3072U);
    EXPECT_EQ(parseMemorySize("500M"), 524288000U);
    EXPECT_EQ(parseMemorySize("2G"), 2147483648U);
    EXPECT_EQ(parseMemorySize("1T"), 1099511627776U);
}

TEST(MemoryLimit, OtherTextIsNoSize) {
    for (const char* text : {"", "M", "0", "0G", "-1", "+1", "1.5G", "1MB", "1 M", "1m", "1x", "nan", "0x10",
                             "18446744073709551616"})
        EXPECT_FALSE(parseMemorySize(text)) << text;
}

TEST(MemoryLimit, SizeThatDoesNotFitIsNoSize) {
    EXPECT_EQ(parseMemorySize("16777215T"), 16777215ULL << 40U);
    EXPECT_FALSE(parseMemorySize("16777216T"));
    EXPECT_EQ(parseMemorySize("18446744073709551615"), 18446744073709551615U);
}

TEST(MemoryLimit, SizesForPeopleHaveOneDigitBehindThePoint) {
    EXPECT_EQ(memorySizeText(0), "0 bytes");
    EXPECT_EQ(memorySizeText(1023), "1023 bytes");
    EXPECT_EQ(memorySizeText(1536), "1.5 KiB");
    EXPECT_EQ(memorySizeText(500ULL << 20U), "500.0 MiB");
    EXPECT_EQ(memorySizeText(5000ULL << 40U), "5000.0 TiB");
}

TEST(MemoryLimit, DefaultIsSomeOfTheMachinesMemory) {
    EXPECT_GT(defaultMemoryLimit(), 1ULL << 20U);
    EXPECT_LT(defaultMemoryLimit(), 1ULL << 50U);
}

}  // namespace
}  // namespace quarn::test
