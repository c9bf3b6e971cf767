#include <gtest/gtest.h>

#include <array>
#include <cmath>
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
    double a = kUnwritten;
    double b = kUnwritten;
};

Answer ask(const Triangle& triangle, const Point3& position, bool allowOutside) {
    Answer answer;
    answer.inside = triangle.barycentric(position, answer.a, answer.b, allowOutside);
    return answer;
}

// Queries the unit triangle, whose parameters are x and y themselves.
Answer askUnit(double a, double b, bool allowOutside) {
    return ask(unitTriangle(), {a, b, 0.0}, allowOutside);
}

void expectAccepted(const Answer& answer, double a, double b) {
    EXPECT_TRUE(answer.inside);
    EXPECT_TRUE(sameBits(answer.a, a));
    EXPECT_TRUE(sameBits(answer.b, b));
}

void expectRefused(const Answer& answer) {
    EXPECT_FALSE(answer.inside);
    EXPECT_EQ(answer.a, kUnwritten);
    EXPECT_EQ(answer.b, kUnwritten);
}

void expectLikeReference(const Triangle& triangle, const Point3& position, bool allowOutside) {
    const Answer answer = ask(triangle, position, allowOutside);
    Answer expected;
    expected.inside =
        reference::barycentric(plain(triangle), plain(position), expected.a, expected.b, allowOutside);
    EXPECT_EQ(answer.inside, expected.inside);
    EXPECT_TRUE(sameBits(answer.a, expected.a));
    EXPECT_TRUE(sameBits(answer.b, expected.b));
}

}  // namespace

TEST(Barycentric, FarEdgeIsInsideUpToItsTolerance) {
    expectAccepted(askUnit(0.5, 0.5, false), 0.5, 0.5);
    expectAccepted(askUnit(0.5, 0.5000005, false), 0.5, 0.5000005);
    expectRefused(askUnit(0.5, 0.500002, false));
    expectAccepted(askUnit(0.5, 0.500002, true), 0.5, 0.500002);
}

TEST(Barycentric, AllowOutsideDoesNotRelaxTheEdgeOfA) {
    expectRefused(askUnit(-0.5, 0.25, true));
    expectRefused(askUnit(-0.5, 0.25, false));
    expectAccepted(askUnit(0.25, -0.5, true), 0.25, -0.5);
    expectRefused(askUnit(0.25, -0.5, false));
    // The edge of a comes first, for any values of the others.
    expectRefused(askUnit(-0.5, -0.5, true));
}

TEST(Barycentric, TolerancesArePinnedOnBothSides) {
    expectAccepted(askUnit(-0.99e-6, 0.25, false), -0.99e-6, 0.25);
    expectRefused(askUnit(-1.01e-6, 0.25, false));
    expectAccepted(askUnit(-0.99e-6, 0.25, true), -0.99e-6, 0.25);
    expectRefused(askUnit(-1.01e-6, 0.25, true));
    expectAccepted(askUnit(0.25, -0.99e-6, false), 0.25, -0.99e-6);
    expectRefused(askUnit(0.25, -1.01e-6, false));
    expectAccepted(askUnit(0.0, 1.00000099, false), 0.0, 1.00000099);
    expectRefused(askUnit(0.0, 1.00000101, false));
}

TEST(Barycentric, LimitsThemselvesAreInside) {
    expectAccepted(askUnit(-1e-6, 0.25, false), -1e-6, 0.25);
    expectAccepted(askUnit(0.25, -1e-6, false), 0.25, -1e-6);
    expectAccepted(askUnit(0.0, 1.000001, false), 0.0, 1.000001);
    expectRefused(askUnit(std::nextafter(-1e-6, -1.0), 0.25, false));
    expectRefused(askUnit(0.25, std::nextafter(-1e-6, -1.0), false));
    expectRefused(askUnit(0.0, std::nextafter(1.000001, 2.0), false));
}

TEST(Barycentric, CornersHaveTheParametersOfTheirs) {
    const Triangle t = triangleOf({2.0, 1.0, 5.0}, {4.0, 1.0, 5.0}, {2.0, 5.0, 5.0});
    expectAccepted(ask(t, t.vertices[0].position, false), 0.0, 0.0);
    expectAccepted(ask(t, t.vertices[1].position, false), 1.0, 0.0);
    expectAccepted(ask(t, t.vertices[2].position, false), 0.0, 1.0);
}

TEST(Barycentric, OnlyADeterminantOfExactlyZeroIsRefused) {
    // The determinant is the least number above zero: 2^-1074.
    Triangle thin = unitTriangle();
    thin.edge2 = {0.0, 0x1p-537, 0.0};
    Answer answer = ask(thin, {0.0, 0.0, 0.0}, true);
    EXPECT_TRUE(answer.inside);
    EXPECT_TRUE(std::isnan(answer.a));  // zero times an infinite reciprocal
    thin.edge2 = {0.0, 0x1p-538, 0.0};
    expectRefused(ask(thin, {0.0, 0.0, 0.0}, true));
}

TEST(Barycentric, NaNIsOutsideYetWrittenWhenOutsideIsAllowed) {
    for (std::size_t k = 0; k < 3; ++k) {
        Point3 position(0.25, 0.25, 0.0);
        position[k] = kNaN;
        expectRefused(ask(unitTriangle(), position, false));
        const Answer allowed = ask(unitTriangle(), position, true);
        EXPECT_TRUE(allowed.inside);
        EXPECT_TRUE(std::isnan(allowed.a) && std::isnan(allowed.b));
    }
}

TEST(Barycentric, OutputsMayBeTheQueriedCoordinates) {
    Point3 position(0.25, 0.5, 0.0);
    EXPECT_TRUE(unitTriangle().barycentric(position, position[1], position[0], false));
    EXPECT_EQ(position, Point3(0.5, 0.25, 0.0));
}

TEST(Barycentric, IsTheScalarComputation) {
    int inside = 0;
    int outside = 0;
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        const Point3 p0 = randomPoint(rng, exponents);
        const Point3 p1 = randomPoint(rng, exponents);
        const Triangle triangle = triangleOf(p0, p1, randomPoint(rng, exponents));
        const Point3 anywhere = randomPoint(rng, exponents);
        const double a = rng.uniform(-0.2, 1.2);
        const Point3 onPlane = triangle.pointAt(a, rng.uniform(-0.2, 1.2));
        for (const Point3& position : {anywhere, onPlane, p0, p1}) {
            expectLikeReference(triangle, position, false);
            expectLikeReference(triangle, position, true);
            ++(ask(triangle, position, false).inside ? inside : outside);
        }
    }
    EXPECT_GT(inside, seedCount(10000));
    EXPECT_GT(outside, 10000);
}

TEST(Barycentric, AnswersSpecialValuesAsTheScalarComputationDoes) {
    withSpecialArguments<12>({0.5, 0.25, 0.0, 1.0, 0.5, 0.25, -0.5, 2.0, 0.125, 1.0, 1.0, 0.25},
                             [](const std::array<double, 12>& x) {
                                 Triangle triangle;
                                 triangle.vertices[0].position = {x[0], x[1], x[2]};
                                 triangle.edge1 = {x[3], x[4], x[5]};
                                 triangle.edge2 = {x[6], x[7], x[8]};
                                 const Point3 position(x[9], x[10], x[11]);
                                 expectLikeReference(triangle, position, false);
                                 expectLikeReference(triangle, position, true);
                             });
}

TEST(Barycentric, FindsTheParametersOfTheFootWithinTwoRoundings) {
    // Small integers and fractions of 64 keep all but the reciprocal and the product with it exact.
    constexpr double kTwoRoundings = 1.001 * 0x1p-52;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Triangle t;
        t.vertices[0].position = rng.integerPoint(-20, 20);
        t.edge1 = rng.integerPoint(-20, 20);
        t.edge2 = rng.integerPoint(-20, 20);
        const Point3 across = cross(t.edge1, t.edge2);
        if (across == Point3()) continue;
        const double a = rng.integer(-16, 80) / 64.0;
        const double b = rng.integer(-16, 80) / 64.0;
        // A height above the plane does not move the projection.
        const Answer answer = ask(t, t.pointAt(a, b) + rng.integer(-8, 8) / 4.0 * across, true);
        ASSERT_EQ(answer.inside, a >= 0.0);
        if (!answer.inside) continue;
        EXPECT_LE(std::abs(answer.a - a), kTwoRoundings * std::abs(a));
        EXPECT_LE(std::abs(answer.b - b), kTwoRoundings * std::abs(b));
        EXPECT_EQ(ask(t, t.pointAt(a, b), false).inside, b >= 0.0 && a + b <= 1.0);
    }
}
