#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include <QuarnScreen/Lines.h>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialArguments.h"

using namespace quarn::test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Outputs start with it: what stays unwritten still holds it.
const Point3 kUnwritten(12345.0, 23456.0, 34567.0);

struct Lines {
    Point3 a0;
    Point3 a1;
    Point3 b0;
    Point3 b1;
};

struct Answer {
    bool found = false;
    Point3 onA = kUnwritten;
    Point3 onB = kUnwritten;
};

Answer ask(const Lines& x, const reference::Clamps& c = {}) {
    Answer answer;
    answer.found = closestPointsBetweenLines(x.a0, x.a1, x.b0, x.b1, answer.onA, answer.onB, c.aStart, c.aEnd,
                                             c.bStart, c.bEnd);
    return answer;
}

void expectUnwritten(const Answer& answer) {
    EXPECT_FALSE(answer.found);
    EXPECT_EQ(answer.onA, kUnwritten);
    EXPECT_EQ(answer.onB, kUnwritten);
}

bool expectLikeReference(const Lines& x, const reference::Clamps& clamps) {
    const Answer answer = ask(x, clamps);
    reference::Vec3 onA = plain(kUnwritten);
    reference::Vec3 onB = plain(kUnwritten);
    EXPECT_EQ(answer.found,
              reference::closestPoints(plain(x.a0), plain(x.a1), plain(x.b0), plain(x.b1), onA, onB, clamps));
    EXPECT_TRUE(sameBits(answer.onA, point(onA)));
    EXPECT_TRUE(sameBits(answer.onB, point(onB)));
    return answer.found;
}

std::array<reference::Clamps, 16> allClamps() {
    std::array<reference::Clamps, 16> all;
    for (unsigned i = 0; i < 16; ++i) all[i] = {(i & 1U) != 0, (i & 2U) != 0, (i & 4U) != 0, (i & 8U) != 0};
    return all;
}

// Lines along x (through the origin) and along y (one above), which are closest at the parameters s
// and t.
Lines crossing(double s, double t) {
    return {{-s, 0.0, 0.0}, {1.0 - s, 0.0, 0.0}, {0.0, -t, 1.0}, {0.0, 1.0 - t, 1.0}};
}

}  // namespace

TEST(ClosestPointsBetweenLines, ZeroLengthFirstSegmentWritesNothing) {
    expectUnwritten(ask({{1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}, {0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}));
    expectUnwritten(ask({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}}));
}

TEST(ClosestPointsBetweenLines, ParallelLinesWriteNothing) {
    expectUnwritten(ask({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {1.0, 1.0, 0.0}}));
    expectUnwritten(ask({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {-5.0, 1.0, 0.0}}));
    expectUnwritten(ask({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}));
}

TEST(ClosestPointsBetweenLines, LeastLengthIsPinnedOnBothSides) {
    // The other segment is long, so that the determinant does not decide.
    const auto withFirst = [](double size) {
        return ask({{0.0, 0.0, 0.0}, {size, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.0, 1e6, 1.0}});
    };
    const auto withSecond = [](double size) {
        return ask({{0.0, 0.0, 1.0}, {0.0, 1e6, 1.0}, {0.0, 0.0, 0.0}, {size, 0.0, 0.0}});
    };
    for (const double tooShort : {0.99e-10, std::nextafter(1e-10, 0.0)}) {
        expectUnwritten(withFirst(tooShort));
        expectUnwritten(withSecond(tooShort));
    }
    for (const double longEnough : {1e-10, 1.01e-10}) {
        EXPECT_TRUE(withFirst(longEnough).found);
        EXPECT_TRUE(withSecond(longEnough).found);
    }
}

TEST(ClosestPointsBetweenLines, LeastDeterminantIsPinnedOnBothSides) {
    const auto withDirection = [](const Point3& da) {
        return ask({{}, da, {0.0, 0.0, 0.0}, {0.0, 1.0, 0.0}});
    };
    expectUnwritten(withDirection({std::sqrt(0.99e-10), 0.0, 0.0}));
    EXPECT_TRUE(withDirection({std::sqrt(1.01e-10), 0.0, 0.0}).found);
    // The squares of 6e-6 and 8e-6 add up to 1e-10 itself, which is not below the limit.
    ASSERT_EQ(6e-6 * 6e-6 + 8e-6 * 8e-6, 1e-10);
    EXPECT_TRUE(withDirection({6e-6, 0.0, 8e-6}).found);
}

TEST(ClosestPointsBetweenLines, ShortPerpendicularSegmentsCountAsParallel) {
    // 1e-3 long each: the determinant, 1e-12, does not see that they are perpendicular.
    expectUnwritten(ask({{0.0, 0.0, 0.0}, {1e-3, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.0, 1e-3, 1.0}}));
}

TEST(ClosestPointsBetweenLines, EachEndClampsItsOwnParameterOnly) {
    for (const reference::Clamps& c : allClamps())
        for (const double s : {-2.0, 0.0, 0.5, 1.0, 3.0})
            for (const double t : {-2.0, 0.0, 0.5, 1.0, 3.0}) {
                const double sKept = c.aStart && s < 0.0 ? 0.0 : c.aEnd && s > 1.0 ? 1.0 : s;
                const double tKept = c.bStart && t < 0.0 ? 0.0 : c.bEnd && t > 1.0 ? 1.0 : t;
                const Answer answer = ask(crossing(s, t), c);
                EXPECT_TRUE(answer.found);
                EXPECT_EQ(answer.onA, Point3(sKept - s, 0.0, 0.0)) << s;
                EXPECT_EQ(answer.onB, Point3(0.0, tKept - t, 1.0)) << t;
            }
}

TEST(ClosestPointsBetweenLines, ClampedParameterDoesNotMoveTheOther) {
    // Lines that cross at a slant: the projection of A's clamped end on B would be (0.5, 0.5, 0).
    const Lines slanted{{1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {1.0, 1.0, 0.0}};
    const Answer answer = ask(slanted, {true, true, true, true});
    EXPECT_EQ(answer.onA, Point3(1.0, 0.0, 0.0));
    EXPECT_EQ(answer.onB, Point3(0.0, 0.0, 0.0));
}

TEST(ClosestPointsBetweenLines, ShortFormClampsNothing) {
    const Lines x = crossing(-2.0, 3.0);
    Answer answer;
    EXPECT_TRUE(closestPointsBetweenLines(x.a0, x.a1, x.b0, x.b1, answer.onA, answer.onB));
    EXPECT_EQ(answer.onA, Point3(0.0, 0.0, 0.0));
    EXPECT_EQ(answer.onB, Point3(0.0, 0.0, 1.0));
}

TEST(ClosestPointsBetweenLines, NaNParameterBecomesOneWhereTheEndIsClamped) {
    const Lines x{{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {kNaN, 0.0, 1.0}, {0.0, 1.0, 1.0}};
    const Answer free = ask(x, {true, false, true, false});
    EXPECT_TRUE(free.found);
    EXPECT_TRUE(std::isnan(free.onA[0]) && std::isnan(free.onB[0]));
    EXPECT_EQ(ask(x, {true, true, true, true}).onA, Point3(1.0, 0.0, 0.0));
    EXPECT_EQ(ask(x, {false, true, false, false}).onA, Point3(1.0, 0.0, 0.0));
}

TEST(ClosestPointsBetweenLines, NegativeZeroDoesNotPassTheStart) {
    // The parameter on A is -0.0, which is not below 0.0: its sign goes on into the point.
    const Lines x{{-0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 1.0}, {0.0, 2.0, 1.0}};
    EXPECT_TRUE(sameBits(ask(x, {true, true, true, true}).onA, Point3(-0.0, 0.0, 0.0)));
}

TEST(ClosestPointsBetweenLines, OutputsMayBeTheInputs) {
    Lines x = crossing(0.5, 0.25);
    EXPECT_TRUE(closestPointsBetweenLines(x.a0, x.a1, x.b0, x.b1, x.b0, x.a0));
    EXPECT_EQ(x.b0, Point3(0.0, 0.0, 0.0));
    EXPECT_EQ(x.a0, Point3(0.0, 0.0, 1.0));
}

TEST(ClosestPointsBetweenLines, AreExactWhereAllNumbersAre) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        // The common perpendicular stands at the parameters s and t, fractions of 64, and is
        // `height` long.
        const Point3 a0 = rng.integerPoint(-20, 20);
        const Point3 da = rng.integerPoint(-20, 20);
        const Point3 db = rng.integerPoint(-20, 20);
        const Point3 across = cross(da, db);
        if (across == Point3()) continue;
        const Point3 onA = a0 + rng.integer(-128, 128) / 64.0 * da;
        const Point3 onB = onA + rng.integer(-8, 8) / 4.0 * across;
        const Point3 b0 = onB - rng.integer(-128, 128) / 64.0 * db;
        const Answer answer = ask({a0, a0 + da, b0, b0 + db});
        ASSERT_TRUE(answer.found);
        EXPECT_EQ(answer.onA, onA);
        EXPECT_EQ(answer.onB, onB);
    }
}

TEST(ClosestPointsBetweenLines, IsTheScalarComputation) {
    int found = 0;
    int refused = 0;
    const auto clamps = allClamps();
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        Lines x;
        for (Point3* p : {&x.a0, &x.a1, &x.b0, &x.b1}) *p = randomPoint(rng, exponents);
        for (const reference::Clamps& c : clamps) ++(expectLikeReference(x, c) ? found : refused);
    }
    EXPECT_GT(found, 10000);
    EXPECT_GT(refused, seedCount(10000));
}

TEST(ClosestPointsBetweenLines, AnswersSpecialValuesAsTheScalarComputationDoes) {
    const auto clamps = allClamps();
    withSpecialArguments<
        12>({0.5, 0.25, 0.0, 1.0, 0.5, 0.25, -0.5, 2.0, 0.125, 1.0, 1.0, 0.25}, [&clamps](
                                                                                    const std::array<double,
                                                                                                     12>& x) {
        const Lines lines{{x[0], x[1], x[2]}, {x[3], x[4], x[5]}, {x[6], x[7], x[8]}, {x[9], x[10], x[11]}};
        for (const reference::Clamps& c : clamps) expectLikeReference(lines, c);
    });
}
