// Rays that hit the mesh on the wrong side or not at all.
#include <gtest/gtest.h>

#include <cmath>

#include "Library/Mapping/MappingCases.h"

using namespace quarn::test;

namespace {

// A screen without triangles, of which only the boundary is queried.
struct Outlined {
    std::vector<Triangle> faces;  // that boundary points belong to
    TriangleScreen screen;

    explicit Outlined(const std::vector<Point3>& points) {
        screen.outline().points = points;
        screen.outline().uvPoints.resize(points.size());
        screen.outline().triangles.assign(points.size(), nullptr);
    }
    // The normals of the triangles that the boundary's points belong to.
    void face(const std::vector<Point3>& normals) {
        faces.resize(normals.size());
        for (std::size_t i = 0; i < normals.size(); ++i) {
            faces[i].normal = normals[i];
            screen.outline().triangles[i] = &faces[i];
        }
    }
    [[nodiscard]] Point3 ask(const Point3& start, const Point3& end, int sign = 0) const {
        const IntersectionSet hits = screen.intersectExtrapolatedWithSpecifiedNormal(start, end, sign);
        EXPECT_EQ(hits.count(), 1);
        Intersection expected;
        expected.point = hits.first().point;
        EXPECT_TRUE(sameBits(hits.first(), expected)) << "all but the position is as in a new hit";
        return hits.first().point;
    }
};

const Point3 kX(1.0, 0.0, 0.0);

}  // namespace

TEST(PastTheEdge, AnyHitIsEnoughForASignOfZero) {
    const TriangleScreen screen(foldedSheet(3, 0.5, 2));
    for (const double side : {1.0, -1.0}) {
        const Point3 start(0.3, -side * 4.0, 0.2);
        const Point3 end(0.3, side * 4.0, 0.2);
        const IntersectionSet hits = screen.intersect(start, end);
        EXPECT_EQ(hits.count(), 3);
        EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(start, end, 0), hits));
    }
}

TEST(PastTheEdge, HitsOfTheWantedSideStayInOrder) {
    const TriangleScreen screen(foldedSheet(4, 0.5, 2));
    const Point3 start(0.3, -4.0, 0.2);
    const Point3 end(0.3, 4.0, 0.2);
    const IntersectionSet hits = screen.intersect(start, end);
    ASSERT_EQ(hits.count(), 4);
    for (const int sign : {1, -1}) {
        const IntersectionSet kept = screen.intersectExtrapolatedWithSpecifiedNormal(start, end, sign);
        ASSERT_EQ(kept.count(), 2);
        int found = 0;
        for (const Intersection& hit : hits) {
            if (hit.normalSign != sign) continue;
            EXPECT_TRUE(sameBits(kept.get(found++), hit));
        }
    }
}

TEST(PastTheEdge, OnlyWrongSidesGiveAPositionWithoutTriangle) {
    const TriangleScreen screen(flatGrid({4, 3}));
    const Point3 start(0.3, -4.0, 0.2);
    const Point3 end(0.3, 4.0, 0.2);
    ASSERT_EQ(screen.intersect(start, end).count(), 1);
    const int facing = screen.intersect(start, end).first().normalSign;
    EXPECT_EQ(screen.intersectExtrapolatedWithSpecifiedNormal(start, end, facing).first().normalSign, facing);
    const IntersectionSet past = screen.intersectExtrapolatedWithSpecifiedNormal(start, end, -facing);
    ASSERT_EQ(past.count(), 1);
    EXPECT_EQ(past.first().triangleIndex, -1);
    EXPECT_TRUE(sameBits(past.first(), Intersection())) << "the whole boundary faces the other way";
}

TEST(PastTheEdge, RayBesideASheetGivesItsPositionNearestToTheRim) {
    const TriangleScreen screen(flatGrid({4, 3}));
    // It passes the sheet's right edge, x = 2, at a distance of 0.5 in the plane y = 0.
    const IntersectionSet past =
        screen.intersectExtrapolatedWithSpecifiedNormal({2.5, -4.0, 0.1}, {2.5, 1.0, 0.1}, 0);
    ASSERT_EQ(past.count(), 1);
    EXPECT_EQ(past.first().triangleIndex, -1);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(past.first().point[i], Point3(2.5, 0.0, 0.1)[i], 1e-12);
}

TEST(PastTheEdge, RayThroughAnOutlinePointGivesThatPoint) {
    const TriangleScreen screen(flatGrid({4, 4}, {4.0, 4.0}));
    const Point3 corner(2.0, 0.0, 2.0);
    const Point3 start = corner + Point3(1.0, -4.0, 1.0);
    const Point3 past =
        screen.intersectExtrapolatedWithSpecifiedNormal(start, corner + Point3(0.5, -2.0, 0.5), 0)
            .first()
            .point;
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(past[i], corner[i], 1e-12);
}

TEST(PastTheEdge, WithoutAnOutlineItIsTheZeroPosition) {
    const Outlined nothing({});
    for (const int sign : {0, 1, -1})
        EXPECT_TRUE(sameBits(nothing.ask({1.0, 1.0, 1.0}, {2.0, 2.0, 2.0}, sign), Point3()));
}

TEST(PastTheEdge, RayWithoutDirectionGivesTheZeroPosition) {
    const TriangleScreen screen(flatGrid({4, 3}));
    const Point3 eye(3.0, 4.0, 5.0);
    EXPECT_TRUE(
        sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(eye, eye, 0).first(), Intersection()));
}

TEST(PastTheEdge, SinglePointGivesItsFootOnTheRay) {
    const Outlined one({{3.0, 7.0, 0.0}});
    EXPECT_TRUE(sameBits(one.ask({1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}), Point3(3.0, 0.0, 0.0)));
    EXPECT_TRUE(sameBits(one.ask({1.0, 0.0, 0.0}, {5.0, 0.0, 0.0}), Point3(3.0, 0.0, 0.0)));
}

TEST(PastTheEdge, SinglePointBehindTheRayGivesItsOrigin) {
    const Outlined one({{-3.0, 7.0, 0.0}});
    EXPECT_TRUE(sameBits(one.ask({1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}), Point3(1.0, 0.0, 0.0)));
    EXPECT_TRUE(
        sameBits(Outlined({{1.0, 7.0, 0.0}}).ask({1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}), Point3(1.0, 0.0, 0.0)));
}

// Its direction, a quotient by a length of zero, is infinite, and its squared length is zero.
TEST(PastTheEdge, SinglePointGivesTheOriginOfARayThatIsTooShort) {
    const Outlined one({{3.0, 7.0, 1.0}});
    const Point3 origin(0.0, 0.0, 0.0);
    EXPECT_TRUE(sameBits(one.ask(origin, {1e-200, 1e-200, 1e-200}), origin));
}

TEST(PastTheEdge, OutlinePointAtTheTargetIsNeverChosen) {
    EXPECT_TRUE(sameBits(Outlined({{2.0, 0.0, 0.0}}).ask({1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}), Point3()));
    // The last point is chosen instead; the segment to it passes the ray at x = 4.
    const Outlined outline({{2.0, 0.0, 0.0}, {9.0, 1.0, 8.0}, {4.0, 1.0, 0.0}});
    EXPECT_TRUE(sameBits(outline.ask({0.0, 0.0, 0.0}, {2.0, 0.0, 0.0}), Point3(4.0, 0.0, 0.0)));
}

TEST(PastTheEdge, OfEqualAlignmentsTheEarliestPointIsChosen) {
    // (5, 4, 0) and (9, -8, 0) both lie 45 degrees off the ray, as seen from its target.
    const Outlined outline(
        {{5.0, 4.0, -1.0}, {5.0, 4.0, 0.0}, {5.0, 4.0, 1.0}, {9.0, -8.0, -1.0}, {9.0, -8.0, 0.0}});
    EXPECT_TRUE(sameBits(outline.ask({0.0, 0.0, 0.0}, kX), Point3(5.0, 0.0, 0.0)));
}

namespace {

// In the cases below the ray runs along X, and the chosen point is (4, 1, 0). The line to it from
// (3, 5, 4) comes nearest to the ray at x = 4.125, that to (5, 5, 4) at x = 3.875, and that to (6,
// 5, 4) at x = 3.75. Each segment ends at the chosen point before it gets there, so that the gaps
// squared are 1 + 1/64, 1 + 1/64 and 1 + 1/16.
const Point3 kChosen(4.0, 1.0, 0.0);
const Point3 kBeforeIt(3.0, 5.0, 4.0);
const Point3 kAfterIt(5.0, 5.0, 4.0);
const Point3 kFartherAfterIt(6.0, 5.0, 4.0);

double askAlongX(const std::vector<Point3>& outline) {
    const Point3 position = Outlined(outline).ask({0.0, 0.0, 0.0}, kX);
    EXPECT_EQ(position[1], 0.0);
    EXPECT_EQ(position[2], 0.0);
    return position[0];
}

}  // namespace

TEST(PastTheEdge, NearerSegmentIsTakenAndTheSecondOnATie) {
    EXPECT_EQ(askAlongX({kBeforeIt, kChosen, kFartherAfterIt}), 4.125);
    EXPECT_EQ(askAlongX({kFartherAfterIt, kChosen, kBeforeIt}), 4.125);
    EXPECT_EQ(askAlongX({kBeforeIt, kChosen, kAfterIt}), 3.875);
    EXPECT_EQ(askAlongX({kAfterIt, kChosen, kBeforeIt}), 4.125);
}

TEST(PastTheEdge, FirstPointHasTheLastAsItsPredecessor) {
    EXPECT_EQ(askAlongX({kChosen, kFartherAfterIt, {0.0, 9.0, 9.0}, kBeforeIt}), 4.125);
}

TEST(PastTheEdge, LastPointHasNoSuccessor) {
    EXPECT_EQ(askAlongX({kBeforeIt, {0.0, 9.0, 9.0}, kFartherAfterIt, kChosen}), 3.75);
}

TEST(PastTheEdge, ClosedOutlineHasNoSegmentBeforeItsFirstPoint) {
    EXPECT_EQ(askAlongX({kChosen, kFartherAfterIt, kBeforeIt, kChosen}), 3.75);
}

TEST(PastTheEdge, LastPointOfAClosedOutlineIsChosenOnlyWhereTheFirstFacesTheOtherWay) {
    Outlined outline({kChosen, kFartherAfterIt, kBeforeIt, kChosen});
    outline.face({-1.0 * kX, kX, kX, kX});
    EXPECT_EQ(outline.ask({0.0, 0.0, 0.0}, kX, -1)[0], 3.75);
    EXPECT_EQ(outline.ask({0.0, 0.0, 0.0}, kX, 1)[0], 4.125);
}

// Seen from the target the fourth point lies nearly straight behind; its segments come nearest to
// the ray's line before the ray begins.
TEST(PastTheEdge, PointBehindScoresLikeOneAhead) {
    const Point3 behind(-9.0, 0.5, 0.0);
    EXPECT_EQ(askAlongX({kBeforeIt, kChosen, kFartherAfterIt, behind, {-9.0, 0.5, 8.0}}), 0.0);
    EXPECT_EQ(askAlongX({kBeforeIt, kChosen, kFartherAfterIt, {-9.0, 8.5, 0.0}, {-9.0, 8.5, 8.0}}), 4.125);
}

TEST(PastTheEdge, SegmentsAlongTheRayGiveTheOutlinePointItself) {
    const Point3 far(9.0, 1.0, 0.0);
    const Outlined middle({{3.0, 1.0, 0.0}, far, {5.0, 1.0, 0.0}});
    EXPECT_TRUE(sameBits(middle.ask({0.0, 0.0, 0.0}, kX), far));
    const Outlined last({{3.0, 1.0, 0.0}, {5.0, 1.0, 0.0}, far});
    EXPECT_TRUE(sameBits(last.ask({0.0, 0.0, 0.0}, kX), far));
}

TEST(PastTheEdge, SignPassesOverPointsThatFaceTheOtherWay) {
    Outlined outline({{9.0, 1.0, 0.0}, {9.0, 1.0, 4.0}, {4.0, 5.0, 0.0}, {4.0, 5.0, 4.0}});
    outline.face({{-1.0, 0.0, 0.0}, {-1.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}});
    EXPECT_EQ(outline.ask({0.0, 0.0, 0.0}, kX, 0)[0], 9.0);
    EXPECT_EQ(outline.ask({0.0, 0.0, 0.0}, kX, -1)[0], 9.0);
    EXPECT_LT(outline.ask({0.0, 0.0, 0.0}, kX, 1)[0], 9.0);
    EXPECT_TRUE(sameBits(outline.ask({0.0, 0.0, 0.0}, kX, 2), Point3())) << "no sign is 2";
    outline.screen.outline().triangles[0] = nullptr;
    outline.screen.outline().triangles[1] = nullptr;
    EXPECT_TRUE(sameBits(outline.ask({0.0, 0.0, 0.0}, kX, -1), Point3()));
    EXPECT_EQ(outline.ask({0.0, 0.0, 0.0}, kX, 0)[0], 9.0) << "a sign of 0 selects no triangle";
}
