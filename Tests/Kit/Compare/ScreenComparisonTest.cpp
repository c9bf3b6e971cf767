#include <QuarnKit/Compare/ScreenComparison.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn::test {
namespace {

constexpr double kPi = 3.141592653589793;

Screen wallOf(double width, double height) {
    return {.file = "wall.xml", .geometry = std::make_shared<FlatScreen>(width, height)};
}

Screen halfSphereOf(double radius) {
    return {
        .file = "dome.xml",
        .geometry = std::make_shared<SphericalScreen>(Point<double, 3>(), radius, -kPi, kPi, 0.0, kPi / 2.0)};
}

ScreenComparison compared(Screen a, Screen b, const ComparisonRequirements& requirements = {}) {
    ThreadPool pool(2);
    return compareScreens(std::move(a), std::move(b), requirements, pool);
}

TEST(ScreenComparison, WithoutRequirementsThereIsNoVerdict) {
    const ScreenComparison result = compared(wallOf(4.0, 3.0), wallOf(2.0, 3.0));
    EXPECT_EQ(result.verdict, std::nullopt);
    EXPECT_EQ(result.verdictLimit(), ComparisonLimit::None);
    EXPECT_EQ(result.digests, DigestComparison::Different);
    EXPECT_NEAR(result.aToB.max, 1.0, 1e-12);
    EXPECT_NEAR(result.bToA.max, 0.0, 1e-12);
}

TEST(ScreenComparison, RequiredAccuracyIsReachedForFarSurfaces) {
    // A thousandth of the distance would be 6 mm.
    const ScreenComparison result =
        compared(wallOf(4.0, 3.0), halfSphereOf(6.0), {.accuracy = 4e-3, .max = {}});
    EXPECT_LE(result.range().accuracy, 4e-3);
    EXPECT_EQ(result.verdict, Verdict::Yes);
    EXPECT_EQ(result.limitOf(result.aToB), ComparisonLimit::None);
    // From the middle of the wall's lower edge to the edge of the dome.
    EXPECT_NEAR(result.aToB.max, std::hypot(6.0, 1.5), 4e-3);
}

TEST(ScreenComparison, DistanceToAConcentricSphereIsKnownWithinItsBounds) {
    for (const double radius : {1.0, 3.0}) {
        const ScreenComparison result = compared(halfSphereOf(radius), halfSphereOf(6.0));
        const double distance = 6.0 - radius;
        EXPECT_LE(result.range().min, distance);
        EXPECT_GE(result.range().max, distance);
        EXPECT_LE(result.range().accuracy, 1e-3 * distance * 1.01);
        EXPECT_EQ(result.limitOf(result.aToB), ComparisonLimit::None);
    }
}

TEST(ScreenComparison, VerdictFollowsTheTrueDistanceOnBothSides) {
    for (const double max : {0.05, 0.0999, 0.1001, 0.2}) {
        const ScreenComparison result =
            compared(halfSphereOf(5.9), halfSphereOf(6.0), {.accuracy = 2e-2, .max = max});
        const Verdict expected = max < 0.1 ? Verdict::No : Verdict::Yes;
        const bool isNear = std::abs(max - 0.1) <= 2e-2;
        EXPECT_TRUE(result.verdict == expected || (isNear && result.verdict == Verdict::Undecided)) << max;
    }
}

TEST(ScreenComparison, CoarseAccuracyLeavesAFineMaximumUndecided) {
    const ScreenComparison result =
        compared(halfSphereOf(5.9), halfSphereOf(6.0), {.accuracy = 0.05, .max = 0.1});
    EXPECT_EQ(result.verdict, Verdict::Undecided);
    EXPECT_EQ(result.verdictLimit(), ComparisonLimit::Accuracy);
}

TEST(ScreenComparison, SameAnalyticScreenIsWithinAnyMaximum) {
    const ScreenComparison result =
        compared(halfSphereOf(6.0), halfSphereOf(6.0), {.accuracy = 1e-1, .max = 1e-12});
    EXPECT_EQ(result.digests, DigestComparison::Same);
    EXPECT_EQ(result.verdict, Verdict::Yes);
}

}  // namespace
}  // namespace quarn::test
