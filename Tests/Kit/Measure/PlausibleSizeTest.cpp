#include <QuarnKit/Measure/PlausibleSize.h>

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

TEST(PlausibleSize, IsFromCentimetersToAKilometer) {
    EXPECT_TRUE(isPlausibleSize(0.3));  // a monitor
    EXPECT_TRUE(isPlausibleSize(150.0));
    EXPECT_FALSE(isPlausibleSize(6000.0));
    EXPECT_FALSE(isPlausibleSize(0.012));
}

TEST(PlausibleSize, LikelyUnitGivesAUsualSize) {
    EXPECT_EQ(likelyUnitOf(6000.0), "mm");
    EXPECT_EQ(likelyUnitOf(12.0), "m");
    EXPECT_EQ(likelyUnitOf(0.5), "m");
    EXPECT_EQ(likelyUnitOf(1e9), std::nullopt);
}

}  // namespace
}  // namespace quarn::test
