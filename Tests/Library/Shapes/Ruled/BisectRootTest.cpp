#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "Reference/Shapes/ReferenceRuled.h"
#include "Support/SpecialArguments.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// A straight line through a root, which notes where it was evaluated.
struct NotedLine {
    double root;
    std::shared_ptr<std::vector<double>> arguments = std::make_shared<std::vector<double>>();
    double operator()(double x) const {
        arguments->push_back(x);
        return x - root;
    }
};

}  // namespace

TEST(BisectRoot, HalvesTowardsTheRootAndEvaluatesOnceMore) {
    const NotedLine line{0.3};
    double root = 9.0;
    EXPECT_TRUE(bisectRoot(line, root, 0.0, 1.0, 4, 0.0, 1.0));
    EXPECT_EQ(*line.arguments, (std::vector{0.5, 0.25, 0.375, 0.3125, 0.3125}));
}

TEST(BisectRoot, AnswersTheLastMidpointAndNotTheMiddleOfTheInterval) {
    double root = 9.0;
    // The interval ends as 0.25 to 0.3125.
    EXPECT_TRUE(bisectRoot(NotedLine{0.3}, root, 0.0, 1.0, 4, 0.0, 1.0));
    EXPECT_EQ(root, 0.3125);
}

TEST(BisectRoot, StopsWhereTheIntervalIsAsLongAsTheTolerance) {
    const auto callsAt = [](double tolerance) {
        const NotedLine line{0.3};
        double root = 0.0;
        (void)bisectRoot(line, root, 0.0, 1.0, 50, tolerance, 1.0);
        return line.arguments->size() - 1;
    };
    EXPECT_EQ(callsAt(0.125), 3U);
    EXPECT_EQ(callsAt(std::nextafter(0.125, 0.0)), 4U);
    EXPECT_EQ(callsAt(std::nextafter(0.125, 1.0)), 3U);
    EXPECT_EQ(callsAt(1e-05), 17U);
    EXPECT_EQ(callsAt(2.0), 1U);
    EXPECT_EQ(callsAt(-1.0), 50U);
    EXPECT_EQ(callsAt(kNaN), 50U);
}

TEST(BisectRoot, ZeroGoesOnAboveIt) {
    const NotedLine line{0.5};
    double root = 0.0;
    EXPECT_TRUE(bisectRoot(line, root, 0.0, 1.0, 2, 0.0, 1.0));
    EXPECT_EQ(*line.arguments, (std::vector{0.5, 0.75, 0.75}));
}

TEST(BisectRoot, NaNCountsAsPositiveAndIsAccepted) {
    double root = 9.0;
    int calls = 0;
    const auto nan = [&calls](double) {
        ++calls;
        return kNaN;
    };
    EXPECT_TRUE(bisectRoot(nan, root, 0.0, 1.0, 3, 0.0, -1.0));
    EXPECT_EQ(root, 0.125);
    EXPECT_EQ(calls, 4);
}

TEST(BisectRoot, WithoutIterationsTheRootIsZeroAndEvaluatedOnce) {
    for (const int iterations : {0, -1, std::numeric_limits<int>::min()}) {
        const NotedLine line{0.3};
        double root = 9.0;
        EXPECT_TRUE(bisectRoot(line, root, 1.0, 2.0, iterations, 0.0, 1.0));
        EXPECT_EQ(root, 0.0);
        EXPECT_EQ(*line.arguments, std::vector{0.0});
    }
}

TEST(BisectRoot, RefusesAValueAboveTheAcceptanceAndNoneAtIt) {
    const auto constant = [](double) { return 2.0; };
    double root = 9.0;
    EXPECT_TRUE(bisectRoot(constant, root, 0.0, 1.0, 2, 0.0, 2.0));
    EXPECT_FALSE(bisectRoot(constant, root, 0.0, 1.0, 2, 0.0, std::nextafter(2.0, 0.0)));
    EXPECT_EQ(root, 0.25) << "the root is written where it is refused, too";
    EXPECT_FALSE(bisectRoot(constant, root, 0.0, 1.0, 0, 0.0, 1.0));
    EXPECT_TRUE(bisectRoot(constant, root, 0.0, 1.0, 2, 0.0, kNaN));
    // A value far below zero is no reason to refuse.
    EXPECT_TRUE(bisectRoot([](double) { return -kInfinity; }, root, 0.0, 1.0, 2, 0.0, -1.0));
}

TEST(BisectRoot, AgreesWithTheReferenceForRandomFunctions) {
    int refused = 0;
    for (int i = 0; i < seedCount(10000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double a = rng.uniform(-5.0, 5.0);
        const double b = rng.uniform(-2.0, 2.0);
        const bool isHoled = rng.integer(0, 3) == 0;
        int calls = 0;
        const auto function = [&](double x) {
            ++calls;
            return isHoled && x > b ? kNaN : std::sin(a * x) + b;
        };
        const double low = rng.coin() ? rng.uniform(-2.0, 1.0) : wildNumber(rng);
        const double high = rng.coin() ? rng.uniform(0.0, 3.0) : wildNumber(rng);
        const int iterations = rng.integer(-1, 80);
        const double tolerance = rng.coin() ? 1e-5 : wildNumber(rng);
        const double acceptance = rng.coin() ? rng.uniform(-1.0, 2.0) : wildNumber(rng);
        double expected = 9.0;
        const bool isAccepted =
            referenceBisect(function, expected, low, high, iterations, tolerance, acceptance);
        const int expectedCalls = std::exchange(calls, 0);
        double root = 9.0;
        EXPECT_EQ(bisectRoot(function, root, low, high, iterations, tolerance, acceptance), isAccepted);
        EXPECT_TRUE(sameBits(root, expected));
        EXPECT_EQ(calls, expectedCalls);
        refused += !isAccepted;
    }
    EXPECT_GT(refused, seedCount(1000));
}

TEST(BisectRoot, AgreesWithTheReferenceForSpecialValues) {
    withSpecialArguments<4>({0.0, 1.0, 1e-5, 2.0}, [](const std::array<double, 4>& a) {
        const NotedLine line{0.3};
        double expected = 9.0;
        const bool isAccepted = referenceBisect(line, expected, a[0], a[1], 200, a[2], a[3]);
        const std::size_t calls = line.arguments->size();
        double root = 9.0;
        EXPECT_EQ(bisectRoot(line, root, a[0], a[1], 200, a[2], a[3]), isAccepted);
        EXPECT_TRUE(sameBits(root, expected));
        EXPECT_EQ(line.arguments->size(), 2 * calls);
    });
}

TEST(BisectRoot, ReleasesItsFunctionAndLetsItsExceptionsThrough) {
    const NotedLine line{0.3};
    double root = 0.0;
    (void)bisectRoot(line, root, 0.0, 1.0, 4, 0.0, 1.0);
    EXPECT_EQ(line.arguments.use_count(), 1);
    EXPECT_THROW((void)bisectRoot([](double) -> double { throw 17; }, root, 0.0, 1.0, 4, 0.0, 1.0), int);
}
