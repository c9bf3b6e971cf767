#include <limits>
#include <numbers>
#include <type_traits>

#include "Library/Shapes/Curved/CurvedCases.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

template <class Case>
class CurvedContract : public ::testing::Test {
protected:
    using Screen = typename Case::Screen;

    static_assert(std::is_base_of_v<ScreenGeometry, Screen>);
    static_assert(std::is_copy_constructible_v<Screen> && std::is_copy_assignable_v<Screen>);
    static_assert(std::is_constructible_v<Screen, IScreenConfig*>);
    static_assert(std::is_aggregate_v<typename Case::Params>);

    static Screen screen() {
        typename Case::Reference r;
        double next = 0.5;
        fillParameters(r, [&next] { return next *= 1.25; });
        return Case::screenOf(r);
    }
};
TYPED_TEST_SUITE(CurvedContract, CurvedShapes, CurvedNames);

TYPED_TEST(CurvedContract, DefaultScreenIsUndefined) {
    const typename TypeParam::Screen screen;
    EXPECT_FALSE(screen.isValid());
    EXPECT_EQ(screen.getParams().radius, -1.0);
    EXPECT_TRUE(sameBits(screen.getParams().center, Point3()));
    EXPECT_EQ(screen.getParams().minTheta, 0.0);
    EXPECT_EQ(screen.getParams().maxTheta, 0.0);
}

TYPED_TEST(CurvedContract, RadiusOfZeroIsValidAndNaNIsNot) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kLeast = std::numeric_limits<double>::denorm_min();
    const std::pair<double, bool> cases[] = {{0.0, true},    {-0.0, true},      {1.0, true},
                                             {kLeast, true}, {-1.0, false},     {-kLeast, false},
                                             {kNaN, false},  {kInfinity, true}, {-kInfinity, false}};
    for (const auto& [radius, isValid] : cases) {
        typename TypeParam::Reference r;
        r.radius = radius;
        EXPECT_EQ(TypeParam::screenOf(r).isValid(), isValid) << radius;
    }
}

TYPED_TEST(CurvedContract, TypeNameIsTheOneInFiles) {
    const typename TypeParam::Screen screen;
    const IScreenGeometry& contract = screen;
    const bool isCylinder = std::is_same_v<TypeParam, CylinderCase>;
    EXPECT_EQ(TypeParam::Screen::type(), isCylinder ? "class CylinderScreen" : "class SphericalScreen");
    EXPECT_EQ(&contract.getType(), &TypeParam::Screen::type());
}

TYPED_TEST(CurvedContract, FixedAnswersOfACurvedScreen) {
    const auto screen = this->screen();
    EXPECT_TRUE(screen.hasParameterization());
    EXPECT_FALSE(screen.isPlanar());
    EXPECT_FALSE(screen.hasTesselation());
    std::vector<Triangle> triangles(2);
    screen.getTesselation(triangles);
    EXPECT_EQ(triangles.size(), 2U);
    std::vector<Point2> outline(3);
    screen.sampleBoundaryUV(outline);
    EXPECT_EQ(outline.size(), 3U);
    // Intended: for any center.
    EXPECT_TRUE(sameBits(screen.getEyepoint(), Point3(0, 0, 0)));
}

TYPED_TEST(CurvedContract, CopiesAnswerAlike) {
    const auto screen = this->screen();
    typename TypeParam::Screen assigned;
    assigned = screen;
    const auto copy = screen;
    EXPECT_EQ(assigned.getUniqueDataHash(), screen.getUniqueDataHash());
    EXPECT_EQ(copy.getUniqueDataHash(), screen.getUniqueDataHash());
}

// Overrides what the shape's own operations must call through the virtual table.
template <class Screen>
class Overridden : public Screen {
public:
    using Screen::Screen;
    explicit Overridden(const Screen& screen) : Screen(screen) {}
    bool parameterized = true;

    [[nodiscard]] Point3 getScreenNormal(const Point3&) const override { return {0.0, 1.0, 0.0}; }
    [[nodiscard]] bool hasParameterization() const override { return parameterized; }
    bool mapInto3D(const Point2& uv, Point3& point, bool extrapolate) const override {
        EXPECT_TRUE(extrapolate);
        point = Point3(uv[0], uv[1], 7.0);
        return true;
    }
};

TYPED_TEST(CurvedContract, SideOfAHitUsesTheOverriddenNormal) {
    typename TypeParam::Reference r;
    r.radius = 1.0;
    const Overridden<typename TypeParam::Screen> screen(TypeParam::screenOf(r));
    const auto hits = screen.intersectExtrapolatedWithSpecifiedNormal(Point3(0, -2, 0), Point3(0, 0, 0), 1);
    ASSERT_EQ(hits.count(), 2);
    EXPECT_EQ(hits.last().normalSign, 1);
}

TYPED_TEST(CurvedContract, BoundaryUsesTheOverriddenMapping) {
    typename TypeParam::Reference r;
    r.radius = 1.0;
    r.maxTheta = 1.0;
    Overridden<typename TypeParam::Screen> screen(TypeParam::screenOf(r));
    Outline outline;
    screen.sampleBoundary(outline);
    ASSERT_EQ(outline.size(), 4U);
    EXPECT_TRUE(sameBits(outline[0].front(), Point3(0, 0, 7)));
    screen.parameterized = false;
    screen.sampleBoundary(outline);
    EXPECT_EQ(outline.size(), 4U) << "a screen without UV mapping has no boundary";
}

TEST(CurvedBounds, CylinderLeavesThemAsTheyWere) {
    const CylinderScreen screen(Point3(5, 5, 5), 1.0, 0.0, 1.0, 2.0);
    Point3 min(1, 2, 3);
    Point3 max(4, 5, 6);
    screen.getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(1, 2, 3)));
    EXPECT_TRUE(sameBits(max, Point3(4, 5, 6)));
    Point3 centre(9, 9, 9);
    screen.getCentreFromScreenBounds(&centre);
    EXPECT_TRUE(sameBits(centre, Point3(0, 0, 0)));
}

TEST(CurvedBounds, SphereGivesTheBoxOfTheWholeSphere) {
    const SphericalScreen dome(Point3(1, 2, 3), 4.0, 0.0, 1.0, 0.0, 0.5);
    Point3 min;
    Point3 max;
    dome.getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(-3, -2, -1)));
    EXPECT_TRUE(sameBits(max, Point3(5, 6, 7)));
    Point3 centre;
    dome.getCentreFromScreenBounds(&centre);
    EXPECT_TRUE(sameBits(centre, Point3(1, 2, 3)));
}

TEST(CurvedHeading, OfACylinderIsItsMiddleAzimuthWithoutTheCentre) {
    const CylinderScreen screen(Point3(5, 5, 5), 2.0, 0.0, kPi, 2.0);
    const Point3 heading = screen.getCenterOfScreenHeading();
    EXPECT_NEAR(heading[0], 1.0, 1e-15);
    EXPECT_NEAR(heading[1], 0.0, 1e-15);
    EXPECT_EQ(heading[2], 0.0);
}

// Intended: the azimuth of the corner counts from +Y: 2 on a section whose own half is 0.5.
TEST(CurvedHeading, AngleOfALopsidedCylinderCountsFromTheY) {
    const CylinderScreen even(Point3(), 1.0, -0.5, 0.5, 0.0);
    EXPECT_NEAR(even.getMaxAngleFromHeading(), 0.5, 1e-15);
    const CylinderScreen lopsided(Point3(), 1.0, 1.0, 2.0, 0.0);
    EXPECT_NEAR(lopsided.getMaxAngleFromHeading(), 0.5, 1e-15) << "corner at 2, heading at 1.5";
    const CylinderScreen behind(Point3(), 1.0, -2.0, -1.0, 0.0);
    EXPECT_NEAR(behind.getMaxAngleFromHeading(), 2 * kPi - 3.5, 1e-14) << "corner at 2, heading at -1.5";
    const CylinderScreen high(Point3(), 1.0, 0.0, 0.0, 2.0);
    EXPECT_NEAR(high.getMaxAngleFromHeading(), kPi / 4, 1e-15);
}

TEST(CurvedHeading, OfADomeIsThePole) {
    const auto headingOf = [](double minTheta, double maxTheta, double minPhi, double maxPhi) {
        return SphericalScreen(Point3(5, 5, 5), 1.0, minTheta, maxTheta, minPhi, maxPhi)
            .getCenterOfScreenHeading();
    };
    EXPECT_TRUE(sameBits(headingOf(-kPi, kPi, 0.0, kPi / 2), Point3(0, 0, 1)));
    EXPECT_TRUE(sameBits(headingOf(-kPi, kPi, -kPi / 2, 0.0), Point3(0, 0, -1)));
    EXPECT_TRUE(sameBits(headingOf(-kPi, kPi, -0.5, 0.5), Point3(0, 0, 1))) << "equal gaps";
    // The widest gap is that of the azimuth; so is an equal one.
    EXPECT_TRUE(sameBits(headingOf(-0.5, 0.5, -0.5, 0.5), Point3(0, 1, 0)));
    EXPECT_TRUE(sameBits(headingOf(-kPi / 2, kPi / 2, 0.0, kPi / 2), Point3(0, 1, 0)));
    EXPECT_TRUE(sameBits(headingOf(-1.6, 1.6, 0.0, kPi / 2), Point3(0, 0, 1)));
    EXPECT_TRUE(sameBits(headingOf(std::nan(""), 1.0, 0.0, 1.0), Point3(0, 0, 1))) << "no gap of the azimuth";
}

// Intended: the angle is taken at the origin of the frame, not at the center.
TEST(CurvedHeading, AngleOfASphereIsThatOfItsOutlineFromTheOrigin) {
    const SphericalScreen dome(Point3(), 2.0, -kPi, kPi, 0.25, kPi / 2);
    EXPECT_NEAR(dome.getMaxAngleFromHeading(), kPi / 2 - 0.25, 1e-14);
    const SphericalScreen raised(Point3(0, 0, 10), 2.0, -kPi, kPi, 0.0, kPi / 2);
    EXPECT_NEAR(raised.getMaxAngleFromHeading(), std::atan2(2.0, 10.0), 1e-14);
    const SphericalScreen empty(Point3(), 2.0, 1.0, 0.0, 1.0, 0.0);
    EXPECT_EQ(empty.getMaxAngleFromHeading(), 0.0);
    const SphericalScreen undefined(Point3(std::nan(""), 0, 0), 2.0, 0.0, 1.0, 0.0, 1.0);
    EXPECT_EQ(undefined.getMaxAngleFromHeading(), 0.0) << "NaN does not displace what is held";
}

}  // namespace
}  // namespace quarn::test
