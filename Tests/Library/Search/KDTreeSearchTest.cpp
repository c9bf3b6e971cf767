#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "Library/Search/KDTreeCases.h"

using namespace quarn::test;

namespace {

constexpr int kCases = 2000;
constexpr int kQuestions = 5;

template <class Dimensions>
class KDTreeSearch : public ::testing::Test {};

template <int N>
struct Dimensions {
    static constexpr int kCount = N;
};
using AllDimensions = ::testing::Types<Dimensions<1>, Dimensions<2>, Dimensions<3>>;
TYPED_TEST_SUITE(KDTreeSearch, AllDimensions, );

// Puts a question to each of many random trees, with the random numbers to go on with.
template <int N, class Ask>
void forManyQuestions(const Ask& ask) {
    for (int i = 0; i < seedCount(kCases); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SpotCase<N> spots(rng);
        for (int j = 0; j < kQuestions; ++j) ask(spots, spots.question(rng), rng);
    }
}

// Distances to infinite places are NaN, and no scan can put those in order.
template <int N>
bool canBeScanned(const SpotCase<N>& spots) {
    return spots.spread != Spread::Infinite;
}

}  // namespace

TYPED_TEST(KDTreeSearch, HasTheShapeOfTheReference) {
    constexpr int N = TypeParam::kCount;
    for (int i = 0; i < seedCount(kCases); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SpotCase<N> spots(rng, 200);
        ASSERT_EQ(spots.tree.size(), spots.plain.nodes.size());
        EXPECT_EQ(spots.tree.depth(), spots.plain.depth);
        for (std::size_t slot = 0; slot < spots.tree.size(); ++slot)
            ASSERT_EQ(spots.tree.valueAt(slot), spots.plain.nodes[slot].value) << slot;
    }
}

TYPED_TEST(KDTreeSearch, NearestIsThatOfTheReferenceAndOfAScan) {
    constexpr int N = TypeParam::kCount;
    forManyQuestions<N>([](const SpotCase<N>& spots, const Point<double, N>& point, Rng&) {
        const Spot<N>* const nearest = spots.tree.findNearest(point);
        ASSERT_EQ(nearest, spots.plain.findNearest(point));
        if (!canBeScanned(spots)) return;
        const double least = spots.squaredDistances(point).front();
        ASSERT_EQ(nearest != nullptr, least < std::numeric_limits<double>::max());
        if (nearest == nullptr) return;
        ASSERT_EQ(ReferenceSpotTree<N>::squaredDistance(point, nearest), least);
    });
}

TYPED_TEST(KDTreeSearch, AcceptIsCalledWithTheSameValuesInTheSameOrder) {
    constexpr int N = TypeParam::kCount;
    forManyQuestions<N>([](const SpotCase<N>& spots, const Point<double, N>& point, Rng& rng) {
        const std::ptrdiff_t step = rng.integer(1, 6);
        const auto isTaken = [&](const Spot<N>* spot) {
            return (spot - spots.spots.data()) % step == step - 1;
        };
        std::vector<const Spot<N>*> asked;
        std::vector<const Spot<N>*> askedByPlain;
        const Spot<N>* const nearest = spots.tree.findNearestIf(point, [&](const Spot<N>* spot) {
            asked.push_back(spot);
            return isTaken(spot);
        });
        const Spot<N>* const expected = spots.plain.findNearestIf(point, [&](const Spot<N>* spot) {
            askedByPlain.push_back(spot);
            return isTaken(spot);
        });
        ASSERT_EQ(nearest, expected);
        ASSERT_EQ(asked, askedByPlain);
        if (!canBeScanned(spots)) return;
        const std::vector<double> taken = spots.squaredDistances(point, isTaken);
        ASSERT_EQ(nearest != nullptr, !taken.empty() && taken.front() < std::numeric_limits<double>::max());
        if (nearest == nullptr) return;
        ASSERT_EQ(ReferenceSpotTree<N>::squaredDistance(point, nearest), taken.front());
    });
}

TYPED_TEST(KDTreeSearch, FindsWhichOfTwoValuesAWalkMeetsFirst) {
    constexpr int N = TypeParam::kCount;
    forManyQuestions<N>([](const SpotCase<N>& spots, const Point<double, N>& point, Rng& rng) {
        std::vector<const Spot<N>*> met;
        const auto refuse = [&met](const Spot<N>* spot) {
            met.push_back(spot);
            return false;
        };
        (void)spots.tree.findNearestIf(point, refuse);
        // A walk leaves out what lies at no distance.
        if (met.size() != spots.tree.size()) return;
        const auto place = [&](std::size_t slot) {
            return std::find(met.begin(), met.end(), spots.tree.valueAt(slot)) - met.begin();
        };
        const auto anySlot = [&] {
            return static_cast<std::size_t>(rng.integer(0, static_cast<int>(met.size()) - 1));
        };
        const std::size_t a = anySlot();
        const std::size_t b = anySlot();
        EXPECT_EQ(spots.tree.isMetBefore(a, b, point), place(a) < place(b));
    });
}

TYPED_TEST(KDTreeSearch, AcceptThatThrowsIsNotCalledAgain) {
    constexpr int N = TypeParam::kCount;
    struct Enough {};
    forManyQuestions<N>([](const SpotCase<N>& spots, const Point<double, N>& point, Rng& rng) {
        const int last = rng.integer(1, 4);
        const auto countCalls = [&](const auto& tree) {
            int asked = 0;
            try {
                (void)tree.findNearestIf(point, [&](const Spot<N>*) -> bool {
                    if (++asked == last) throw Enough();
                    return false;
                });
            } catch (const Enough&) {
                return asked;
            }
            return -asked;
        };
        ASSERT_EQ(countCalls(spots.tree), countCalls(spots.plain));
    });
}

TYPED_TEST(KDTreeSearch, KNearestAreThoseOfTheReferenceAndOfAScan) {
    constexpr int N = TypeParam::kCount;
    forManyQuestions<N>([](const SpotCase<N>& spots, const Point<double, N>& point, Rng& rng) {
        const int count = static_cast<int>(spots.values.size());
        const int k = rng.integer(-1, count + 3);
        const std::vector<const Spot<N>*> nearest = spots.tree.findKNearest(point, k);
        ASSERT_EQ(nearest, spots.plain.findKNearest(point, k));
        if (!canBeScanned(spots)) return;
        const std::vector<double> expected = spots.squaredDistances(point);
        ASSERT_EQ(nearest.size(), static_cast<std::size_t>(std::clamp(k, 0, count)));
        for (std::size_t i = 0; i < nearest.size(); ++i)
            ASSERT_EQ(ReferenceSpotTree<N>::squaredDistance(point, nearest[i]), expected[i]) << i;
    });
}
