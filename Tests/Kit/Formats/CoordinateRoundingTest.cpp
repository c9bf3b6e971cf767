#include <QuarnKit/Formats/Obj/CoordinateRounding.h>

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

Bounds<3> boundsAt(double offset, double size) {
    Bounds<3> bounds(Point<double, 3>(0.0, offset, 0.0));
    bounds.include(Point<double, 3>(0.0, offset + size, 0.0));
    return bounds;
}

TEST(CoordinateRounding, StepIsThatOfFloatsAtTheLargestCoordinate) {
    EXPECT_EQ(roundingOf(boundsAt(5403200.0, 10.0)).step, 0.5);
    EXPECT_EQ(roundingOf(boundsAt(-5403210.0, 10.0)).step, 0.5);
    EXPECT_EQ(roundingOf(boundsAt(1.0, 0.5)).step, 1.0 / 8388608.0);
    EXPECT_EQ(roundingOf(boundsAt(1.0, 0.5)).largest, 1.5);
    EXPECT_EQ(roundingOf(boundsAt(1.0, 0.5)).size, 0.5);
}

TEST(CoordinateRounding, RoundingIsLargeForMeshesFarFromTheirOrigin) {
    EXPECT_FALSE(roundingOf(boundsAt(-5.0, 10.0)).isLarge());
    EXPECT_FALSE(roundingOf(boundsAt(500.0, 10.0)).isLarge());
    EXPECT_TRUE(roundingOf(boundsAt(5000.0, 10.0)).isLarge());
    EXPECT_TRUE(roundingOf(boundsAt(5403210.0, 10.0)).isLarge());
    EXPECT_TRUE(roundingOf(boundsAt(5403210.0, 0.0)).isLarge());
    EXPECT_FALSE(roundingOf(boundsAt(0.0, 0.0)).isLarge());
}

TEST(CoordinateRounding, TextNamesStepCoordinateAndSize) {
    EXPECT_EQ(
        roundingText(roundingOf(boundsAt(5403200.0, 10.0)), "m"),
        "positions are rounded to multiples of 0.5 m, because coordinates reach 5403210 m in a mesh of 10 m");
}

}  // namespace
}  // namespace quarn::test
