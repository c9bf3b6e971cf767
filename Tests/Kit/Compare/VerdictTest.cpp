#include <QuarnKit/Compare/Verdict.h>

#include <gtest/gtest.h>

#include <limits>

namespace quarn::test {
namespace {

constexpr DistanceRange kRange{.min = 1.0, .max = 2.0, .accuracy = 0.5};

TEST(Verdict, MaximumDecidesOnlyOutsideOfTheBounds) {
    EXPECT_EQ(verdictOf(kRange, {.accuracy = {}, .max = 0.5}), Verdict::No);
    EXPECT_EQ(verdictOf(kRange, {.accuracy = {}, .max = 1.0}), Verdict::Undecided);
    EXPECT_EQ(verdictOf(kRange, {.accuracy = {}, .max = 1.5}), Verdict::Undecided);
    EXPECT_EQ(verdictOf(kRange, {.accuracy = {}, .max = 2.0}), Verdict::Yes);
}

TEST(Verdict, AccuracyThatIsNotReachedIsUndecided) {
    EXPECT_EQ(verdictOf(kRange, {.accuracy = 0.4, .max = {}}), Verdict::Undecided);
    EXPECT_EQ(verdictOf(kRange, {.accuracy = 0.5, .max = {}}), Verdict::Yes);
}

TEST(Verdict, AllRequirementsAreNeededForYesAndOneForNo) {
    EXPECT_EQ(verdictOf(kRange, {.accuracy = 0.4, .max = 3.0}), Verdict::Undecided);
    EXPECT_EQ(verdictOf(kRange, {.accuracy = 0.4, .max = 0.5}), Verdict::No);
    EXPECT_EQ(verdictOf(kRange, {.accuracy = 0.6, .max = 3.0}), Verdict::Yes);
}

TEST(Verdict, BoundThatIsNoNumberDecidesNothing) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(verdictOf({.min = kNaN, .max = kNaN, .accuracy = kNaN}, {.accuracy = {}, .max = 1.0}),
              Verdict::Undecided);
    EXPECT_EQ(verdictOf({.min = kNaN, .max = kNaN, .accuracy = kNaN}, {.accuracy = 1.0, .max = {}}),
              Verdict::Undecided);
}

TEST(Verdict, HasAWord) {
    EXPECT_EQ(nameOf(Verdict::Yes), "yes");
    EXPECT_EQ(nameOf(Verdict::No), "no");
    EXPECT_EQ(nameOf(Verdict::Undecided), "undecided");
}

}  // namespace
}  // namespace quarn::test
