#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialArguments.h"

using namespace quarn::test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Outputs start with it: what stays unwritten still holds it.
constexpr double kUnwritten = 12345.0;

struct Answer {
    bool inside = false;
    double t = kUnwritten;
    Point3 hit{kUnwritten, kUnwritten, kUnwritten};
    double a = kUnwritten;
    double b = kUnwritten;
};

Answer ask(const Point3& origin, const Point3& target, const Triangle& triangle, bool allowOutside) {
    Answer x;
    x.inside = intersectTrianglePlane(origin, target, triangle, x.t, x.hit, x.a, x.b, allowOutside);
    return x;
}

void expectUnwritten(const Answer& answer) {
    EXPECT_FALSE(answer.inside);
    EXPECT_EQ(answer.t, kUnwritten);
    EXPECT_EQ(answer.hit, Point3(kUnwritten, kUnwritten, kUnwritten));
    EXPECT_EQ(answer.a, kUnwritten);
    EXPECT_EQ(answer.b, kUnwritten);
}

Answer expectLikeReference(const Point3& origin, const Point3& target, const Triangle& triangle,
                           bool allowOutside) {
    const Answer answer = ask(origin, target, triangle, allowOutside);
    Answer expected;
    reference::Vec3 hit = plain(expected.hit);
    expected.inside = reference::intersectPlane(plain(origin), plain(target), plain(triangle), expected.t,
                                                hit, expected.a, expected.b, allowOutside);
    EXPECT_EQ(answer.inside, expected.inside);
    EXPECT_TRUE(sameBits(answer.t, expected.t));
    EXPECT_TRUE(sameBits(answer.hit, point(hit)));
    EXPECT_TRUE(sameBits(answer.a, expected.a));
    EXPECT_TRUE(sameBits(answer.b, expected.b));
    return answer;
}

}  // namespace

TEST(TrianglePlane, LineAcrossTheTriangleHitsIt) {
    const Answer answer = ask({0.25, 0.5, 2.0}, {0.25, 0.5, 1.0}, unitTriangle(), false);
    EXPECT_TRUE(answer.inside);
    EXPECT_EQ(answer.t, 2.0);
    EXPECT_EQ(answer.hit, Point3(0.25, 0.5, 0.0));
    EXPECT_EQ(answer.a, 0.25);
    EXPECT_EQ(answer.b, 0.5);
}

TEST(TrianglePlane, LineRunsBothWays) {
    const Answer answer = ask({0.25, 0.5, 1.0}, {0.25, 0.5, 2.0}, unitTriangle(), false);
    EXPECT_TRUE(answer.inside);
    EXPECT_EQ(answer.t, -1.0);
}

TEST(TrianglePlane, ParallelLineWritesNothing) {
    expectUnwritten(ask({0.0, 0.0, 1.0}, {5.0, 3.0, 1.0}, unitTriangle(), true));
    expectUnwritten(ask({0.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, unitTriangle(), true));
    // A degenerate triangle has the zero normal, to which each line is parallel.
    expectUnwritten(ask({0.0, 0.0, 1.0}, {0.0, 0.0, 0.0}, triangleOf({}, {}, {}), true));
}

TEST(TrianglePlane, ParallelToleranceIsPinnedOnBothSides) {
    for (const double sign : {1.0, -1.0}) {
        const auto steep = [sign](double rise) {
            return ask({0.25, 0.25, 0.0}, {7.0, 0.25, sign * rise}, unitTriangle(), false);
        };
        expectUnwritten(steep(0.99e-6));
        expectUnwritten(steep(std::nextafter(1e-6, 0.0)));
        EXPECT_TRUE(steep(1e-6).inside);
        EXPECT_TRUE(steep(1.01e-6).inside);
        EXPECT_EQ(steep(1.01e-6).hit, Point3(0.25, 0.25, 0.0));
    }
}

TEST(TrianglePlane, MissStillWritesParameterAndHit) {
    const Answer answer = ask({3.0, 4.0, 2.0}, {3.0, 4.0, 0.0}, unitTriangle(), false);
    EXPECT_FALSE(answer.inside);
    EXPECT_EQ(answer.t, 1.0);
    EXPECT_EQ(answer.hit, Point3(3.0, 4.0, 0.0));
    EXPECT_EQ(answer.a, kUnwritten);
    EXPECT_EQ(answer.b, kUnwritten);
}

TEST(TrianglePlane, AllowOutsideIsHandedOn) {
    EXPECT_FALSE(ask({-0.5, 0.25, 2.0}, {-0.5, 0.25, 0.0}, unitTriangle(), true).inside);
    const Answer answer = ask({0.25, -0.5, 2.0}, {0.25, -0.5, 0.0}, unitTriangle(), true);
    EXPECT_TRUE(answer.inside);
    EXPECT_EQ(answer.b, -0.5);
}

TEST(TrianglePlane, NaNIsNotParallel) {
    const Answer refused = ask({kNaN, 0.0, 1.0}, {0.0, 0.0, 0.0}, unitTriangle(), false);
    EXPECT_FALSE(refused.inside);
    EXPECT_TRUE(std::isnan(refused.t));
    EXPECT_EQ(refused.a, kUnwritten);
    const Answer allowed = ask({kNaN, 0.0, 1.0}, {0.0, 0.0, 0.0}, unitTriangle(), true);
    EXPECT_TRUE(allowed.inside);
    EXPECT_TRUE(std::isnan(allowed.a));
}

TEST(TrianglePlane, HitMayBeWrittenOverTheOrigin) {
    Point3 origin(0.25, 0.5, 2.0);
    Answer x;
    EXPECT_TRUE(intersectTrianglePlane(origin, {0.5, 0.5, 1.0}, unitTriangle(), x.t, origin, x.a, x.b, true));
    EXPECT_EQ(origin, Point3(0.75, 0.5, 0.0));
    EXPECT_EQ(x.a, 0.75);
}

TEST(TrianglePlane, IsTheScalarComputation) {
    int parallel = 0;
    int missed = 0;
    int met = 0;
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        const Point3 p0 = randomPoint(rng, exponents);
        const Point3 p1 = randomPoint(rng, exponents);
        const Triangle triangle = triangleOf(p0, p1, randomPoint(rng, exponents));
        const Point3 origin = randomPoint(rng, exponents);
        const double a = rng.uniform(-0.2, 1.2);
        const Point3 inside = triangle.pointAt(a, rng.uniform(-0.2, 1.2));
        for (const Point3& target : {randomPoint(rng, exponents), inside}) {
            expectLikeReference(origin, target, triangle, true);
            const Answer answer = expectLikeReference(origin, target, triangle, false);
            ++(answer.inside ? met : answer.t == kUnwritten ? parallel : missed);
        }
    }
    EXPECT_GT(parallel, 1000);
    EXPECT_GT(missed, 1000);
    EXPECT_GT(met, seedCount(1000));
}

TEST(TrianglePlane, AnswersSpecialValuesAsTheScalarComputationDoes) {
    withSpecialArguments<18>({0.5, 0.25, 0.0, 1.0, 0.5, 0.25, -0.5, 2.0, 0.125, 0.1, 0.2, 0.9,  //
                              1.0, 1.0, 3.0, 0.5, 1.0, -1.0},
                             [](const std::array<double, 18>& x) {
                                 Triangle triangle;
                                 triangle.vertices[0].position = {x[0], x[1], x[2]};
                                 triangle.edge1 = {x[3], x[4], x[5]};
                                 triangle.edge2 = {x[6], x[7], x[8]};
                                 triangle.normal = {x[9], x[10], x[11]};
                                 const Point3 origin(x[12], x[13], x[14]);
                                 expectLikeReference(origin, {x[15], x[16], x[17]}, triangle, false);
                                 expectLikeReference(origin, {x[15], x[16], x[17]}, triangle, true);
                             });
}

TEST(TrianglePlane, ParameterIsTheExactOneWithinItsErrorBound) {
    // Each dot product of differences errs by at most four roundings of its terms' magnitudes; with
    // the quotient's and those of second order that is less than five.
    constexpr long double kFiveRoundings = 5.0L * 0x1p-53L;
    int compared = 0;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 p0 = rng.point(-10.0, 10.0);
        const Point3 p1 = rng.point(-10.0, 10.0);
        const Triangle triangle = triangleOf(p0, p1, rng.point(-10.0, 10.0));
        const Point3 origin = rng.point(-10.0, 10.0);
        const Point3 target = rng.point(-10.0, 10.0);
        long double approach = 0.0L;
        long double height = 0.0L;
        long double approachTerms = 0.0L;
        long double heightTerms = 0.0L;
        for (std::size_t k = 0; k < 3; ++k) {
            const long double n = triangle.normal[k];
            const long double d = static_cast<long double>(target[k]) - origin[k];
            approach += n * d;
            approachTerms += std::abs(n * d);
            height += n * origin[k] - n * p0[k];
            heightTerms += std::abs(n * origin[k]) + std::abs(n * p0[k]);
        }
        if (std::abs(approach) < 0.001L * approachTerms) continue;
        ++compared;
        const long double t = -height / approach;
        const long double bound =
            kFiveRoundings * ((heightTerms + std::abs(t) * approachTerms) / std::abs(approach) + std::abs(t));
        EXPECT_LE(std::abs(ask(origin, target, triangle, false).t - t), bound);
    }
    EXPECT_GT(compared, seedCount(4000));
}

TEST(TrianglePlane, AxisParallelPlanesAreMetExactly) {
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto axis = static_cast<std::size_t>(rng.integer(0, 2));
        const double level = rng.integer(-100, 100);
        Triangle triangle = unitTriangle();
        for (TriangleVertex& vertex : triangle.vertices) {
            const Point3 flat = vertex.position;
            for (std::size_t k = 0; k < 3; ++k) vertex.position[(axis + 1 + k) % 3] = k < 2 ? flat[k] : level;
        }
        triangle.computeGeometry();
        const Point3 origin = rng.integerPoint(-100, 100);
        const Point3 target = rng.integerPoint(-100, 100);
        if (target[axis] == origin[axis]) continue;
        // All but the quotient is exact.
        EXPECT_EQ(ask(origin, target, triangle, false).t,
                  (level - origin[axis]) / (target[axis] - origin[axis]));
    }
}
