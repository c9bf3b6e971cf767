#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <vector>

#include "Library/Search/KDTreeCases.h"

using namespace quarn::test;

namespace {

template <int N>
using Walk = typename SpotTree<N>::NearestIterator;
template <int N>
using ReferenceWalk = ReferenceNearestWalk<const Spot<N>*, N, SpotKey<N>>;

// Walks over both trees, and says where they part. A walk need not end where distances are NaN.
template <int N>
void expectSameSteps(const SpotCase<N>& spots, const Point<double, N>& point) {
    Walk<N> walk(spots.tree, point);
    ReferenceWalk<N> plain(spots.plain, point);
    for (std::size_t step = 0; step < 2 * spots.values.size() + 2; ++step) {
        ASSERT_EQ(walk.done(), plain.done()) << step;
        if (!walk.done()) {
            ASSERT_EQ(walk.value(), plain.value()) << step;
        }
        walk.advance();
        plain.advance();
    }
}

// Squared distances in the order of the walk.
template <int N>
std::vector<double> walkedDistances(const SpotCase<N>& spots, const Point<double, N>& point) {
    std::vector<double> squared;
    for (Walk<N> walk(spots.tree, point); !walk.done(); walk.advance())
        squared.push_back(ReferenceSpotTree<N>::squaredDistance(point, walk.value()));
    return squared;
}

template <int N>
void expectCompleteFromTheNearestOn(const SpotCase<N>& spots, const Point<double, N>& point) {
    std::multiset<const Spot<N>*> met;
    for (Walk<N> walk(spots.tree, point); !walk.done(); walk.advance()) met.insert(walk.value());
    EXPECT_TRUE(std::equal(met.begin(), met.end(), spots.values.begin(), spots.values.end()));
    EXPECT_EQ(walkedDistances<N>(spots, point).front(), spots.squaredDistances(point).front());
}

template <int N>
void walkManyTrees() {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SpotCase<N> spots(rng, 150);
        for (int j = 0; j < 4; ++j) {
            const Point<double, N> point = spots.question(rng);
            expectSameSteps<N>(spots, point);
            // Distances to infinite places are NaN and have no order.
            if (spots.spread != Spread::Infinite) expectCompleteFromTheNearestOn<N>(spots, point);
            if (::testing::Test::HasFatalFailure()) return;
        }
    }
}

}  // namespace

TEST(KDTreeWalk, StepsOverALineAreThoseOfTheReference) {
    walkManyTrees<1>();
}

TEST(KDTreeWalk, StepsOverAPlaneAreThoseOfTheReference) {
    walkManyTrees<2>();
}

TEST(KDTreeWalk, StepsInSpaceAreThoseOfTheReference) {
    walkManyTrees<3>();
}

TEST(KDTreeWalk, GoesOutwardOnALine) {
    const SpotCase<1> spots({Point<double, 1>(0.0), Point<double, 1>(1.0), Point<double, 1>(2.0),
                             Point<double, 1>(3.0), Point<double, 1>(4.0)});
    std::vector<double> met;
    for (Walk<1> walk(spots.tree, Point<double, 1>(2.9)); !walk.done(); walk.advance())
        met.push_back(walk.value()->key[0]);
    EXPECT_EQ(met, (std::vector{3.0, 2.0, 4.0, 1.0, 0.0}));
}

TEST(KDTreeWalk, AdvancingPastTheEndDoesNothing) {
    const SpotCase<1> spots({Point<double, 1>(0.0)});
    Walk<1> walk(spots.tree, Point<double, 1>(0.0));
    walk.advance();
    EXPECT_TRUE(walk.done());
    walk.advance();
    EXPECT_TRUE(walk.done());
}

// Once nothing more is found, one waiting subtree is looked at and no other, however near that may
// be.
TEST(KDTreeWalk, NearerValueMayComeLater) {
    int outOfOrder = 0;
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        const SpotCase<1> spots(rng, 150);
        if (spots.spread == Spread::Infinite) continue;
        const std::vector<double> squared = walkedDistances<1>(spots, spots.question(rng));
        if (!std::is_sorted(squared.begin(), squared.end())) ++outOfOrder;
    }
    EXPECT_GT(outOfOrder, 0);
    EXPECT_LT(outOfOrder, 200);
}

// A subtree waits until it is expanded, and what leaves the queue then is the nearest entry, which
// the expansion itself may have added. Only a NaN lets an addition be the nearer one.
TEST(KDTreeWalk, ValuesComeAgainWhereADistanceIsNaN) {
    bool cameAgain = false;
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SpotCase<3> spots(rng, 150);
        Point<double, 3> point = spots.question(rng);
        point[static_cast<std::size_t>(rng.integer(0, 2))] = std::nan("");
        expectSameSteps<3>(spots, point);

        std::set<const Spot<3>*> met;
        Walk<3> walk(spots.tree, point);
        for (std::size_t step = 0; step < spots.values.size() && !walk.done(); ++step) {
            if (!met.insert(walk.value()).second) cameAgain = true;
            walk.advance();
        }
    }
    EXPECT_TRUE(cameAgain);
}
