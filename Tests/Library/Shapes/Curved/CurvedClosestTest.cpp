// The algorithms that all shapes share, on cylinders and spheres.
#include <numbers>

#include "Library/Shapes/Curved/CurvedCases.h"
#include "Support/SharedQueries.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;
const Point3 kAhead(0, 1, 0);

// Both sides of +Y and -Y belong to it.
CylinderScreen wideCylinder() {
    return {Point3(), 2.0, -0.25 * kPi, 1.25 * kPi, 4.0};
}

TEST(CurvedClosest, ForwardHitWinsAtEqualDistanceOnACylinder) {
    CylinderScreen screen = wideCylinder();
    Intersection result;
    ASSERT_TRUE(closest(Point3(), kAhead, screen, result));
    EXPECT_TRUE(sameBits(result.point, Point3(0, 2, 0)));
    EXPECT_EQ(result.normalSign, -1);
    EXPECT_TRUE(result.hasUV);
    EXPECT_TRUE(sameBits(result.uv, screen.mapInto2D(Point3(0, 2, 0), false)));
    ASSERT_TRUE(closest(Point3(), Point3(0, -1, 0), screen, result));
    EXPECT_TRUE(sameBits(result.point, Point3(0, -2, 0)));
}

TEST(CurvedClosest, HitBehindIsFoundAndMeasuredAlongItsOwnRay) {
    SphericalScreen screen(Point3(), 2.0, -1.0, 1.0, -1.0, 1.0);
    Intersection result;
    ASSERT_TRUE(closest(Point3(0, 1, 0), Point3(0, -1, 0), screen, result));
    EXPECT_TRUE(sameBits(result.point, Point3(0, 2, 0)));
    EXPECT_EQ(result.normalSign, -1);
}

TEST(CurvedClosest, LengthOfTheDirectionDoesNotMatter) {
    CylinderScreen screen = wideCylinder();
    for (const double scale : {0x1p-20, 1.0, 0x1p20}) {
        Intersection result;
        ASSERT_TRUE(closest(Point3(0, 1, 0), kAhead * scale, screen, result)) << scale;
        EXPECT_NEAR(result.point[1], 2.0, 1e-9);
    }
}

// Intended: the sign 0 of an extrapolated search keeps exact tangents alone.
TEST(CurvedClosest, ExtrapolationFindsNothingButExactTangents) {
    CylinderScreen cylinder = wideCylinder();
    SphericalScreen sphere(Point3(), 2.0, -kPi, kPi, -1.5, 1.5);
    for (IScreenGeometry* screen :
         {static_cast<IScreenGeometry*>(&cylinder), static_cast<IScreenGeometry*>(&sphere)}) {
        Intersection result;
        for (const double x : {0.0, 0.5, -1.0})
            EXPECT_FALSE(closest(Point3(x, 1, 0), kAhead, *screen, result, true));
        EXPECT_TRUE(sameBits(result, Intersection()));
        // So near that the surface's closest position does not refuse it.
        ASSERT_TRUE(closest(Point3(-0x1p-11, 2, 0), Point3(1, 0, 0), *screen, result, true));
        EXPECT_TRUE(sameBits(result.point, Point3(0, 2, 0)));
        EXPECT_EQ(result.normalSign, 0);
    }
}

TEST(CurvedClosest, FromTheSurfaceItselfAHitAcrossIsTooFar) {
    CylinderScreen cylinder = wideCylinder();
    SphericalScreen sphere(Point3(), 2.0, -kPi, kPi, -1.5, 1.5);
    Intersection result;
    ASSERT_EQ(cylinder.intersect(Point3(0, -2, 0), Point3(0, -1, 0)).count(), 1);
    EXPECT_FALSE(closest(Point3(0, -2, 0), kAhead, cylinder, result));
    EXPECT_FALSE(closest(Point3(0, -2, 0), kAhead, sphere, result));
    EXPECT_TRUE(sameBits(result, Intersection()));
    // A hit within a thousandth counts.
    EXPECT_TRUE(closest(Point3(0, -2.0005, 0), kAhead, cylinder, result));
    EXPECT_TRUE(closest(Point3(0, -2.0005, 0), kAhead, sphere, result));
}

// A ray that glances along the wall strikes it far from where the wall is nearest.
TEST(CurvedClosest, HitPastTheRootOfThreeIsRefused) {
    SphericalScreen screen(Point3(), 1.0, -kPi, kPi, -1.5, 1.5);
    const auto isFound = [&screen](double angle) {
        Intersection result;
        // From (0, 0.9), where the closest position is 0.1 away.
        return closest(Point3(0, 0.9, 0), Point3(std::sin(angle), std::cos(angle), 0), screen, result);
    };
    // Distance s to the circle: (0.9 + s cos)^2 + (s sin)^2 = 1, so s = -0.9 cos + sqrt(1 - (0.9
    // sin)^2); s reaches 0.1 sqrt(3) at cos = (1 - 0.81 - 0.03) / (1.8 * 0.1 * sqrt(3)) = 0.5132.
    EXPECT_TRUE(isFound(std::acos(0.52)));
    EXPECT_FALSE(isFound(std::acos(0.50)));
}

TEST(CurvedClosest, BeyondAnEndOfACylinderIsItsEndAtTheSameHeight) {
    const CylinderScreen screen(Point3(0, 0, 1), 2.0, 0.0, kPi / 2, 4.0);
    for (const double x : {-0.5, -5.0, -50.0}) {
        const Point3 point = screen.getClosestPoint(Point3(x, 1, 2));
        EXPECT_TRUE(sameBits(point, Point3(0, 2, 2))) << x;
    }
    EXPECT_NEAR(length(screen.getClosestPoint(Point3(5, -1, 2)) - Point3(2, 0, 2)), 0.0, 1e-14);
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(0, 1, 99)), Point3(0, 2, 3))) << "top edge";
    EXPECT_TRUE(sameBits(screen.getClosestPoint(Point3(0, 1, -99)), Point3(0, 2, -1))) << "bottom edge";
}

TEST(CurvedClosest, BeyondALimitOfASphereIsItsEdge) {
    const SphericalScreen screen(Point3(), 2.0, 0.0, kPi / 2, -0.5, 0.5);
    EXPECT_NEAR(
        length(screen.getClosestPoint(Point3(0, 1, 1.9)) - Point3(0, 2 * std::cos(0.5), 2 * std::sin(0.5))),
        0.0, 1e-14);
    EXPECT_NEAR(length(screen.getClosestPoint(Point3(-1, 1, 0)) - Point3(0, 2, 0)), 0.0, 1e-14);
    EXPECT_TRUE(std::isnan(screen.getClosestPoint(Point3(0, 0, 2.5))[0])) << "no elevation is that high";
}

template <class Case>
class CurvedChannel : public ::testing::Test {
protected:
    // A section on the side of +Y, two high and more.
    static typename Case::Screen screen() {
        typename Case::Reference r;
        r.radius = 2.0;
        r.minTheta = -0.5;
        r.maxTheta = 0.5;
        if constexpr (std::is_same_v<Case, CylinderCase>) {
            r.height = 2.0;
        } else {
            r.minPhi = -0.5;
            r.maxPhi = 0.5;
        }
        return Case::screenOf(r);
    }
};
TYPED_TEST_SUITE(CurvedChannel, CurvedShapes, CurvedNames);

// The side of the first hit on the section picks the same wall for rays that miss the section.
TYPED_TEST(CurvedChannel, RaysThatMissTheSectionHitTheSameSide) {
    const auto screen = this->screen();
    const Point3 eye(0, -5, 0);
    const IScreenGeometry::PointPairs rays{{eye, Point3(1.5, 0, 0)}, {eye, Point3(0, 0, 0)}};
    ASSERT_TRUE(screen.intersect(rays[0].first, rays[0].second).empty());
    const auto points = screen.intersectChannelBoundary(rays, {});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_GT(points[0][1], 0.0) << "where the ray leaves, as the second ray does";
    EXPECT_TRUE(sameBits(points[1], Point3(0, 2, 0)));
}

TYPED_TEST(CurvedChannel, ExtraRaysShowTheSideAlone) {
    const auto screen = this->screen();
    const Point3 eye(0, -5, 0);
    const IScreenGeometry::PointPairs rays{{eye, Point3(1.5, 0, 0)}, {eye, Point3(9, 0, 0)}};
    EXPECT_TRUE(screen.intersectChannelBoundary(rays, {}).empty());
    const auto points = screen.intersectChannelBoundary(rays, {{eye, Point3(9, 0, 0)}, {eye, Point3()}});
    ASSERT_EQ(points.size(), 1U) << "the second ray misses the surface";
    EXPECT_GT(points[0][1], 0.0);
}

}  // namespace
}  // namespace quarn::test
