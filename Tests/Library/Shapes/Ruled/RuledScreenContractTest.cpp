// What the contract and the shared algorithms promise of a ruled screen.
#include <gtest/gtest.h>

#include "Library/Shapes/Ruled/RuledScreens.h"

using namespace quarn::test;

namespace {

const RuledSurfaceScreen& quarters() {
    static const OpenRuledScreen screen(kQuarters);
    return screen;
}

}  // namespace

TEST(RuledScreenContract, UVBeyondTheScreenIsStillWritten) {
    Point3 point(9, 9, 9);
    EXPECT_FALSE(quarters().mapInto3D(Point2(2.0, 0.5), point, false));
    EXPECT_NEAR(point[0], 1.0, 1e-15);
    EXPECT_NEAR(point[1], -2.0, 1e-15);
    EXPECT_EQ(point[2], 0.0);
    point = Point3(9, 9, 9);
    EXPECT_TRUE(quarters().mapInto3D(Point2(2.0, 0.5), point, true));
    EXPECT_NEAR(point[1], -2.0, 1e-15);
}

TEST(RuledScreenContract, ClosestPointOfAFarPointLiesOnAnEdge) {
    Point3 corner;
    quarters().mapInto3D(Point2(0, 0), corner, true);
    // Beyond the search there is no UV, which counts as that of the top left corner.
    EXPECT_TRUE(sameBits(quarters().getClosestPoint(Point3(50, 0, 0)), corner));
    EXPECT_TRUE(sameBits(quarters().getClosestPoint(Point3(-50, 0, 0)), corner));
    const Point3 right = quarters().getClosestPoint(Point3(1.2, 0, 0.5));
    EXPECT_NEAR(right[0], 1.0, 1e-15);
    EXPECT_NEAR(right[2], 0.5, 1e-12);
}

TEST(RuledScreenContract, ClosestPointOfAPointFarAboveLiesOnTheBottomEdge) {
    // v has no sign, so that of a position above by more than a ruling's length is clamped to the
    // bottom.
    EXPECT_EQ(quarters().getClosestPoint(Point3(0, 0, 5))[2], -1.0);
    EXPECT_EQ(quarters().getClosestPoint(Point3(0, 0, -5))[2], -1.0);
    EXPECT_NEAR(quarters().getShortestDistance(Point3(0, kApexOfQuarters, 5)), 6.0, 1e-6);
}

TEST(RuledScreenContract, BoundsAreLeftAlone) {
    Point3 min(1, 2, 3);
    Point3 max(4, 5, 6);
    quarters().getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(1, 2, 3)));
    EXPECT_TRUE(sameBits(max, Point3(4, 5, 6)));
    quarters().getBounds(nullptr, nullptr);
    Point3 centre(9, 9, 9);
    quarters().getCentreFromScreenBounds(&centre);
    EXPECT_TRUE(sameBits(centre, Point3(0, 0, 0)));
}

TEST(RuledScreenContract, IsNoPlaneAndHasUVButNoTriangles) {
    EXPECT_FALSE(quarters().isPlanar());
    EXPECT_TRUE(quarters().hasParameterization());
    EXPECT_FALSE(quarters().hasTesselation());
    EXPECT_EQ(quarters().getType(), "class RuledSurfaceScreen");
    EXPECT_EQ(&quarters().getType(), &RuledSurfaceScreen::type());
    std::vector<Triangle> triangles(2);
    quarters().getTesselation(triangles);
    EXPECT_EQ(triangles.size(), 2U);
    std::vector<Point2> outline{Point2(1, 2)};
    quarters().sampleBoundaryUV(outline);
    EXPECT_EQ(outline.size(), 1U);
}

TEST(RuledScreenContract, EitherDirectionFindsTheClosestHit) {
    OpenRuledScreen screen(kQuarters);
    const Point3 from(0.2, -3, 0.1);
    Intersection towards;
    Intersection away;
    for (const bool extrapolate : {false, true}) {
        EXPECT_TRUE(
            ScreenGeometry::getClosestIntersection(from, Point3(0, 1, 0), &screen, towards, extrapolate));
        EXPECT_TRUE(
            ScreenGeometry::getClosestIntersection(from, Point3(0, -1, 0), &screen, away, extrapolate));
        EXPECT_TRUE(sameBits(towards, away));
        EXPECT_TRUE(sameBits(towards.uv, screen.intersect(from, from + Point3(0, 1, 0)).first().uv));
        EXPECT_EQ(towards.normalSign, 1) << "measured along the ray that found it";
    }
}

TEST(RuledScreenContract, ClosestIntersectionExtrapolatesBeyondTheArcs) {
    OpenRuledScreen screen(kQuarters);
    const Point3 from(0, -3, 2);
    Intersection hit;
    EXPECT_FALSE(ScreenGeometry::getClosestIntersection(from, Point3(0, 1, 0), &screen, hit, false));
    EXPECT_TRUE(ScreenGeometry::getClosestIntersection(from, Point3(0, 1, 0), &screen, hit, true));
    EXPECT_NEAR(hit.uv[1], 0.5, 1e-12);
}

TEST(RuledScreenContract, ChannelRaysKeepTheirHitsWhateverTheSide) {
    const auto ray = [](double x, double z) { return std::pair(Point3(x, -5, z), Point3(x, 5, z)); };
    // One ray hits, one passes above, one passes beyond the search.
    const std::vector<std::pair<Point3, Point3>> rays{ray(0, 3), ray(3, 0), ray(0.5, 0)};
    const std::vector<Point3> points = quarters().intersectChannelBoundary(rays, {});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_NEAR(points[0][2], 3.0, 1e-12);
    EXPECT_NEAR(points[1][0], 0.5, 1e-12);
    // Without a hit on the screen itself there is no side to go by; an extra ray gives it.
    EXPECT_TRUE(quarters().intersectChannelBoundary({ray(0, 3)}, {}).empty());
    EXPECT_EQ(quarters().intersectChannelBoundary({ray(0, 3)}, {ray(0, 0)}).size(), 1U);
}

TEST(RuledScreenContract, BoundaryRunsDownTheLeftSideFirst) {
    std::vector<std::vector<Point3>> boundary;
    quarters().sampleBoundary(boundary);
    ASSERT_EQ(boundary.size(), 4U);
    const Point3 corners[] = {Point3(-1, 0, 1), Point3(-1, 0, -1), Point3(1, 0, -1), Point3(1, 0, 1)};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(boundary[i].size(), 20U);
        EXPECT_LT(length(boundary[i][0] - corners[i]), 1e-15);
    }
}

TEST(RuledScreenContract, GridIsOneClosedLine) {
    for (const auto& [density, points] : {std::pair(4, 234U), std::pair(5, 234U), std::pair(2, 138U)}) {
        std::vector<std::vector<Point3>> grid(3);
        quarters().sampleGrid(grid, density);
        ASSERT_EQ(grid.size(), 1U);
        ASSERT_EQ(grid[0].size(), points);
        EXPECT_LT(length(grid[0].front() - Point3(-1, 0, 1)), 1e-15);
        EXPECT_TRUE(sameBits(grid[0].front(), grid[0].back()));
    }
}
