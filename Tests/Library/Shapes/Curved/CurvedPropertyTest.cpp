// What geometry says of the answers, within rounding.
#include <limits>
#include <numbers>

#include "Library/Shapes/Curved/CurvedCases.h"

namespace quarn::test {
namespace {

constexpr int kCases = 10000;
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

// Rounding errors of a position, in units of the last place of its largest term: the sine, the
// products and the sum each add less than one, on the way there and back.
constexpr double kPositionRoundings = 16.0 * kEpsilon;

// A screen whose limits mapInto2D takes back: within a turn, in the order of their names, away from
// the poles.
template <class Case>
typename Case::Reference simpleReference(Rng& rng) {
    typename Case::Reference r;
    r.cx = rng.uniform(-3.0, 3.0);
    r.cy = rng.uniform(-3.0, 3.0);
    r.cz = rng.uniform(-3.0, 3.0);
    r.radius = rng.uniform(0.5, 9.0);
    r.minTheta = rng.uniform(-3.0, 1.0);
    r.maxTheta = r.minTheta + rng.uniform(0.5, 5.0);
    if constexpr (std::is_same_v<Case, CylinderCase>) {
        r.height = rng.uniform(0.5, 8.0);
    } else {
        r.minPhi = rng.uniform(-1.2, 0.5);
        r.maxPhi = r.minPhi + rng.uniform(0.2, 0.7);
    }
    return r;
}

// Vector from the axis or the center to a position.
Point3 spoke(const ReferenceCylinder& r, const Point3& p) {
    return {p[0] - r.cx, p[1] - r.cy, 0.0};
}
Point3 spoke(const ReferenceSphere& r, const Point3& p) {
    return {p[0] - r.cx, p[1] - r.cy, p[2] - r.cz};
}

// Where the roots of a ray are those of the geometry: a cylinder's only around the Z axis.
void centreOnAxis(ReferenceCylinder& r) {
    r.cx = 0.0;
    r.cy = 0.0;
}
void centreOnAxis(ReferenceSphere&) {}

// A length that bounds all terms of the positions of a plain screen.
constexpr double kReach = 3.0 + 9.0 + 4.0;
constexpr double kMinRadius = 0.5;

// A position's error is an angle once divided by the radius and, on a sphere, by cos(1.2) > 0.36;
// the shortest range is 0.2 radians.
constexpr double kUVTolerance = kPositionRoundings * kReach / kMinRadius / 0.36 / 0.2;

// Rays run between positions of this box. Three squared coordinates below 2 * kBox + kReach meet in
// the quadratic, with some ten roundings.
constexpr double kBox = 9.0;
constexpr double kSquaredTolerance = 10.0 * kEpsilon * 3.0 * (2.0 * kBox + kReach) * (2.0 * kBox + kReach);

template <class Case>
class CurvedPropertyTest : public CurvedTest<Case> {
protected:
    template <class Check>
    static void forEachPlainScreen(const Check& check) {
        for (int i = 0; i < kCases && !::testing::Test::HasFailure(); ++i) {
            Rng rng(i);
            SCOPED_TRACE(i);
            const auto reference = simpleReference<Case>(rng);
            check(reference, Case::screenOf(reference), rng);
        }
    }
};
TYPED_TEST_SUITE(CurvedPropertyTest, CurvedShapes, CurvedNames);

TYPED_TEST(CurvedPropertyTest, MapInto2DTakesMapInto3DBack) {
    this->forEachPlainScreen([](const auto&, const auto& screen, Rng& rng) {
        const double u = rng.uniform(0.001, 0.999);
        const double v = rng.uniform(0.001, 0.999);
        Point3 point;
        EXPECT_TRUE(screen.mapInto3D(Point2(u, v), point, false));
        const Point2 back = screen.mapInto2D(point, false);
        EXPECT_NEAR(back[0], u, kUVTolerance);
        EXPECT_NEAR(back[1], v, kUVTolerance);
    });
}

// Intended: where the azimuth of the edge u = 1 lies past half a turn and rounds up, the wrap is
// refused.
TYPED_TEST(CurvedPropertyTest, EdgePastHalfATurnMapsToItselfOrATurnLower) {
    this->forEachPlainScreen([](const auto& reference, const auto& screen, Rng&) {
        Point3 point;
        screen.mapInto3D(Point2(1.0, 0.5), point, true);
        const double u = screen.mapInto2D(point, false)[0];
        const double lower = 1.0 - 2.0 * std::numbers::pi / (reference.maxTheta - reference.minTheta);
        const bool isPastHalf = reference.maxTheta > 3.14;
        EXPECT_TRUE(std::abs(u - 1.0) < kUVTolerance || (isPastHalf && std::abs(u - lower) < kUVTolerance))
            << u;
    });
}

TYPED_TEST(CurvedPropertyTest, PositionsLieOnTheSurface) {
    this->forEachPlainScreen([](const auto& reference, const auto& screen, Rng& rng) {
        Point3 point;
        screen.mapInto3D(Point2(rng.uniform(-1.0, 2.0), rng.uniform(-1.0, 2.0)), point, true);
        EXPECT_NEAR(length(spoke(reference, point)), reference.radius, kPositionRoundings * kReach);
    });
}

TYPED_TEST(CurvedPropertyTest, NormalsAreUnitAndSquareToTheSurface) {
    this->forEachPlainScreen([](const auto& reference, const auto& screen, Rng& rng) {
        const double u = rng.uniform(0.1, 0.9);
        const double v = rng.uniform(0.1, 0.9);
        const auto at = [&screen](double atU, double atV) {
            Point3 point;
            screen.mapInto3D(Point2(atU, atV), point, true);
            return point;
        };
        const Point3 normal = screen.getScreenNormal(at(u, v));
        EXPECT_NEAR(length(normal), 1.0, 4.0 * kEpsilon);
        EXPECT_LT(dot(normal, spoke(reference, at(u, v))), 0.0);
        // The chord between two positions at equal steps is parallel to the tangent between them,
        // in u on a circle of latitude, in v on a ruling or a meridian.
        const double tolerance = kPositionRoundings * kReach / kMinRadius * reference.radius;
        EXPECT_NEAR(dot(normal, at(u + 0.1, v) - at(u - 0.1, v)), 0.0, tolerance);
        EXPECT_NEAR(dot(normal, at(u, v + 0.1) - at(u, v - 0.1)), 0.0, tolerance);
    });
}

TYPED_TEST(CurvedPropertyTest, HitsLieOnTheSurfaceAndOnTheRay) {
    int hits[2] = {0, 0};
    this->forEachPlainScreen([&hits](auto reference, const auto&, Rng& rng) {
        centreOnAxis(reference);
        const auto screen = TypeParam::screenOf(reference);
        const Point3 from = rng.point(-kBox, kBox);
        const Point3 to = rng.point(-kBox, kBox);
        const Point3 direction = to - from;
        for (const int sign : {1, -1}) {
            for (const Intersection& hit : screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign)) {
                const Point3 out = spoke(reference, hit.point);
                EXPECT_NEAR(dot(out, out), reference.radius * reference.radius, kSquaredTolerance);
                const Point3 way = hit.point - from;
                const Point3 aside = cross(way, direction) / length(direction);
                EXPECT_NEAR(length(aside), 0.0, kPositionRoundings * (length(way) + kReach));
                EXPECT_GT(dot(way, direction), 0.0);
                EXPECT_EQ(hit.normalSign, sign);
                EXPECT_LT(dot(direction, out) * sign, 0.0);
                ++hits[sign == 1 ? 0 : 1];
            }
        }
    });
    EXPECT_GT(hits[0], kCases / 10);
    EXPECT_GT(hits[1], kCases / 5);
}

TYPED_TEST(CurvedPropertyTest, HitsOfTheSectionAreHitsOfTheSurfaceOnIt) {
    int kept = 0;
    this->forEachPlainScreen([&kept](auto reference, const auto&, Rng& rng) {
        centreOnAxis(reference);
        const auto screen = TypeParam::screenOf(reference);
        const Point3 from = rng.point(-9.0, 9.0);
        const Point3 to =
            rng.coin() ? rng.point(-9.0, 9.0) : reference.positionAt(rng.uniform(0.0, 1.0), 0.5);
        std::vector<Intersection> expected;
        for (const int sign : {1, 0, -1})
            for (const Intersection& hit : screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign))
                if (screen.isOnScreenSection(hit.point)) expected.push_back(hit);
        const IntersectionSet hits = screen.intersect(from, to);
        EXPECT_EQ(static_cast<std::size_t>(hits.count()), expected.size());
        for (const Intersection& hit : hits) {
            EXPECT_TRUE(screen.isOnScreenSection(hit.point));
            ++kept;
        }
    });
    EXPECT_GT(kept, kCases / 20);
}

TYPED_TEST(CurvedPropertyTest, ClosestPointLiesOnTheSectionOfTheSurface) {
    this->forEachPlainScreen([](const auto& reference, const auto& screen, Rng& rng) {
        Point3 point = rng.point(-9.0, 9.0);
        // A sphere has no elevation for a position above or below it.
        point[2] = reference.cz + reference.radius * rng.uniform(-0.99, 0.99);
        const Point3 closest = screen.getClosestPoint(point);
        EXPECT_TRUE(screen.isOnScreenSection(closest));
        EXPECT_NEAR(screen.getShortestDistance(point), length(point - closest), kPositionRoundings * kReach);
    });
}

TYPED_TEST(CurvedPropertyTest, GridAndSamplesLieWhereMapInto3DPutsThem) {
    this->forEachPlainScreen([](const auto&, const auto& screen, Rng& rng) {
        const double v = rng.uniform(0.0, 1.0);
        const double uStart = rng.uniform(0.0, 0.4);
        const double uEnd = rng.uniform(0.6, 1.0);
        Samples samples;
        screen.sampleHorizontally(v, uStart, uEnd, 5, 3, samples, false);
        ASSERT_EQ(samples.size(), 5U);
        for (const auto& [key, position] : samples) {
            const double u = uStart + (uEnd - uStart) * key[0] / 4.0;
            Point3 expected;
            screen.mapInto3D(Point2(u, v), expected, true);
            EXPECT_NEAR(length(position - expected), 0.0, kPositionRoundings * kReach);
        }
    });
}

}  // namespace
}  // namespace quarn::test
