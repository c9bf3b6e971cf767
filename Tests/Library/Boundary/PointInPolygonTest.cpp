#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Reference/Mesh/ReferencePointInPolygon.h"
#include "Support/Rng.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;
using quarn::detail::pointWithinPolygon;

namespace {

using UV = Point<double, 2>;
using Polygon = std::vector<UV>;

const Polygon kUnitSquare = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
const Polygon kDiamond = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};

// The same in exact arithmetic, for whole numbers: on an edge, or an odd number of crossings to the
// right.
bool holdsExactly(const Polygon& polygon, int u, int v) {
    bool isInside = false;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const auto whole = [](double number) { return static_cast<std::int64_t>(number); };
        const UV& a = polygon[i];
        const UV& b = polygon[(i + 1) % polygon.size()];
        const std::int64_t startU = whole(a[0]) - u;
        const std::int64_t startV = whole(a[1]) - v;
        const std::int64_t endU = whole(b[0]) - u;
        const std::int64_t endV = whole(b[1]) - v;
        const std::int64_t area = startU * endV - startV * endU;
        if (area == 0 && startU * endU + startV * endV <= 0) return true;
        if ((startV > 0) != (endV > 0) && (endV > startV ? area > 0 : area < 0)) isInside = !isInside;
    }
    return isInside;
}

}  // namespace

TEST(PointInPolygon, IsOutsideOfAnEmptyOutline) {
    EXPECT_FALSE(quarn::detail::pointWithinPolygon({}, {0, 0}));
    EXPECT_FALSE(quarn::detail::PolygonBands().contains({0, 0}));
}

TEST(PointInPolygon, LiesWithinAUnitSquareOrBesideIt) {
    EXPECT_TRUE(quarn::detail::pointWithinPolygon(kUnitSquare, {0.5, 0.5}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {-0.5, 0.5}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {1.5, 0.5}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {0.5, -0.5}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {0.5, 1.5}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {-0.5, 0.0}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {-0.5, 1.0}));
}

TEST(PointInPolygon, IsInsideAtEachCornerAndOnEachEdge) {
    for (const Polygon& polygon : {kUnitSquare, kDiamond}) {
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const UV& a = polygon[i];
            const UV& b = polygon[(i + 1) % polygon.size()];
            EXPECT_TRUE(quarn::detail::pointWithinPolygon(polygon, a)) << i;
            EXPECT_TRUE(quarn::detail::pointWithinPolygon(polygon, (a + b) * 0.5)) << i;
        }
    }
}

TEST(PointInPolygon, CrossesACornerAtItsOwnHeightOnce) {
    EXPECT_TRUE(quarn::detail::pointWithinPolygon(kDiamond, {0, 0}));
    EXPECT_TRUE(quarn::detail::pointWithinPolygon(kDiamond, {-0.5, 0}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kDiamond, {-2, 0}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kDiamond, {-2, 1}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kDiamond, {-2, -1}));
}

TEST(PointInPolygon, CountsAsOnAnEdgeUpToTheTolerance) {
    for (const UV outwards : {UV(1, 0), UV(-1, 0), UV(0, 1), UV(0, -1)}) {
        const UV onEdge = UV(0.5, 0.5) + outwards * 0.5;
        EXPECT_TRUE(quarn::detail::pointWithinPolygon(kUnitSquare, onEdge + outwards * 0.99e-9));
        EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, onEdge + outwards * 1.01e-9));
    }
    // Past a corner: the corner of the widened box is farther away than the tolerance.
    EXPECT_TRUE(quarn::detail::pointWithinPolygon(kUnitSquare, {-0.7e-9, -0.7e-9}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kUnitSquare, {-0.72e-9, -0.72e-9}));
    // Beside a slanted edge, which is measured at right angles to it.
    EXPECT_TRUE(quarn::detail::pointWithinPolygon(kDiamond, {0.5 + 0.7e-9, 0.5 + 0.7e-9}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon(kDiamond, {0.5 + 0.72e-9, 0.5 + 0.72e-9}));
}

TEST(PointInPolygon, OfOnePointIsThatPoint) {
    EXPECT_TRUE(quarn::detail::pointWithinPolygon({{3, 4}}, {3, 4}));
    EXPECT_TRUE(quarn::detail::pointWithinPolygon({{3, 4}}, {3, 4 + 0.9e-9}));
    EXPECT_TRUE(quarn::detail::pointWithinPolygon({{0, 0}}, {1e-9, 0}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon({{3, 4}}, {3, 4 + 1.1e-9}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon({{0, 0}}, {std::nextafter(1e-9, 1.0), 0}));
    EXPECT_FALSE(quarn::detail::pointWithinPolygon({{3, 4}, {3, 4}}, {2, 4}));
}

TEST(PointInPolygon, GivesTheAnswerOfExactArithmeticForWholeNumbers) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon polygon;
        for (int n = rng.integer(1, 12); n > 0; --n) {
            const double u = rng.integer(0, 8);
            polygon.push_back({u, static_cast<double>(rng.integer(0, 8))});
        }
        for (int u = -1; u <= 9; ++u)
            for (int v = -1; v <= 9; ++v)
                EXPECT_EQ(quarn::detail::pointWithinPolygon(polygon, UV(u, v)), holdsExactly(polygon, u, v))
                    << u << " " << v;
    }
}

// Numbers so large that the rounding of each operation shows.
TEST(PointInPolygon, RoundsEachOperationAsTheReferenceDoes) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon polygon;
        const double scale = std::ldexp(1.0, rng.integer(-40, 40));
        for (int n = rng.integer(2, 8); n > 0; --n) {
            const double u = rng.uniform(0.0, scale);
            polygon.push_back({u, rng.uniform(0.0, scale)});
        }
        for (int n = 0; n < 200; ++n) {
            // Near an edge, by a few units in the last place.
            const UV& a = polygon[static_cast<std::size_t>(n) % polygon.size()];
            const UV& b = polygon[static_cast<std::size_t>(n + 1) % polygon.size()];
            const UV on = a + (b - a) * rng.uniform(0.0, 1.0);
            const UV point(on[0] * (1.0 + rng.integer(-4, 4) * 0x1p-52), on[1]);
            EXPECT_EQ(quarn::detail::pointWithinPolygon(polygon, point),
                      referencePointInPolygon(polygon, point[0], point[1]));
        }
    }
}

TEST(PointInPolygon, GivesTheAnswerOfTheReferenceForNumbersOfEveryKind) {
    for (int i = 0; i < seedCount(20'000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon polygon;
        for (int n = rng.integer(1, 6); n > 0; --n) polygon.push_back(wildPoint<2>(rng));
        const UV point = rng.coin() ? wildPoint<2>(rng) : polygon.front();
        EXPECT_EQ(quarn::detail::pointWithinPolygon(polygon, point),
                  referencePointInPolygon(polygon, point[0], point[1]));
    }
}
