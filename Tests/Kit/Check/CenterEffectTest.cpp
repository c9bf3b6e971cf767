#include <QuarnKit/Check/CenterEffect.h>

#include <gtest/gtest.h>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn::test {
namespace {

using Position = Point<double, 3>;

TEST(CenterEffect, RaysIgnoreTheAxisOfACylinder) {
    const auto ignored = [](const Position& center) {
        return ignoredCenterOf(CylinderScreen(center, 3.0, -1.0, 1.0, 2.0), CenterQuery::Rays);
    };
    EXPECT_EQ(ignored({1.0, -2.0, 3.0}), Position(1.0, -2.0, 0.0));
    EXPECT_EQ(ignored({0.0, 0.0, 3.0}), std::nullopt);
}

TEST(CenterEffect, RaysUseTheCenterOfASphere) {
    EXPECT_EQ(ignoredCenterOf(SphericalScreen({1.0, 2.0, 3.0}, 3.0, -1.0, 1.0, 0.0, 1.0), CenterQuery::Rays),
              std::nullopt);
}

TEST(CenterEffect, CalibrationPointsIgnoreEveryCenter) {
    const Position center(0.0, 0.0, 3.0);
    EXPECT_EQ(ignoredCenterOf(CylinderScreen(center, 3.0, -1.0, 1.0, 2.0), CenterQuery::CalibrationPoints),
              center);
    EXPECT_EQ(
        ignoredCenterOf(SphericalScreen(center, 3.0, -1.0, 1.0, 0.0, 1.0), CenterQuery::CalibrationPoints),
        center);
    EXPECT_EQ(ignoredCenterOf(FlatScreen(4.0, 3.0), CenterQuery::CalibrationPoints), std::nullopt);
}

}  // namespace
}  // namespace quarn::test
