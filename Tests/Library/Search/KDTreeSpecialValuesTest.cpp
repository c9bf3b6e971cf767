#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

#include "Library/Search/KDTreeCases.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

Point<double, 3> specialPoint(Rng& rng) {
    const auto pick = [&] {
        return kSpecialValues[static_cast<std::size_t>(
            rng.integer(0, static_cast<int>(kSpecialValues.size()) - 1))];
    };
    const double x = pick();
    const double y = pick();
    return {x, y, pick()};
}

// A NaN has no place in an order, so nothing but the end of each search can be expected.
void searchAll(const SpotCase<3>& spots, const Point<double, 3>& point) {
    const std::size_t count = spots.values.size();
    (void)spots.tree.findNearest(point);
    (void)spots.tree.findNearestIf(point, [](const Spot<3>*) { return false; });
    EXPECT_LE(spots.tree.findKNearest(point, 5).size(), 5U);
    EXPECT_LE(spots.tree.findKNearest(point, static_cast<int>(count) + 1).size(), count);
    SpotTree<3>::NearestIterator walk(spots.tree, point);
    for (std::size_t step = 0; step < 2 * count && !walk.done(); ++step) {
        EXPECT_NE(walk.value(), nullptr);
        walk.advance();
    }
}

}  // namespace

TEST(KDTreeWithNaN, SearchesFromAnyPointAreThoseOfTheReference) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SpotCase<3> spots(rng, 100);
        const Point<double, 3> point = specialPoint(rng);
        ASSERT_EQ(spots.tree.findNearest(point), spots.plain.findNearest(point));
        const int k = rng.integer(1, 9);
        ASSERT_EQ(spots.tree.findKNearest(point, k), spots.plain.findKNearest(point, k));
    }
}

TEST(KDTreeWithNaN, KeysOfAnyValueAreSearchedToTheEnd) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<Point<double, 3>> keys(static_cast<std::size_t>(rng.integer(1, 100)));
        for (Point<double, 3>& key : keys) key = rng.coin() ? specialPoint(rng) : rng.point(-1.0, 1.0);
        const SpotCase<3> spots(keys);
        searchAll(spots, specialPoint(rng));
        searchAll(spots, rng.point(-1.0, 1.0));
    }
}

TEST(KDTreeWithNaN, TreeOfNothingButNaNHasNoNearest) {
    const std::vector<Point<double, 3>> keys(40, Point<double, 3>(NAN, NAN, NAN));
    const SpotCase<3> spots(keys);
    EXPECT_EQ(spots.tree.findNearest({0.0, 0.0, 0.0}), nullptr);
    searchAll(spots, {0.0, 0.0, 0.0});
}
