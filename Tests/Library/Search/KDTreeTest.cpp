#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include <Common/ZelmoreException.h>

#include "Library/Search/KDTreeCases.h"

using namespace quarn::test;

namespace {

using Line = SpotCase<1>;
using Plane = SpotCase<2>;
using Tree = SpotTree<2>;

constexpr auto kTakeAll = [](const Spot<2>*) { return true; };

std::vector<Spot<2>> row(std::size_t count) {
    std::vector<Spot<2>> spots(count);
    for (std::size_t i = 0; i < count; ++i) spots[i].key = {static_cast<double>(i), 0.0};
    return spots;
}

void buildOver(Tree& tree, const std::vector<Spot<2>>& spots, std::size_t count) {
    std::vector<const Spot<2>*> values;
    for (std::size_t i = 0; i < count; ++i) values.push_back(&spots[i]);
    tree.build(values.begin(), values.end());
}

template <class Search>
void expectNoValues(int line, const Search& search) {
    try {
        search();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ZelmoreException& problem) {
        EXPECT_EQ(problem.message(), L"There are no values in the KDTree");
        EXPECT_EQ(problem.file(), "Framework/CXX/Common/PointKDTree");
        EXPECT_EQ(problem.line(), line);
    }
}

}  // namespace

TEST(KDTree, NearestOfNoValuesIsAnError) {
    const Tree tree;
    expectNoValues(668, [&] { (void)tree.findNearest({0.0, 0.0}); });
    expectNoValues(692, [&] {
        (void)tree.findNearestIf({0.0, 0.0},
                                 [](const Spot<2>*) -> bool { throw std::logic_error("called"); });
    });
}

TEST(KDTree, BuildOverNothingEmptiesIt) {
    const auto spots = row(3);
    Tree tree;
    buildOver(tree, spots, 3);
    buildOver(tree, spots, 0);
    EXPECT_EQ(tree.size(), 0U);
    EXPECT_THROW((void)tree.findNearest({0.0, 0.0}), ZelmoreException);
}

TEST(KDTree, OtherSearchesAmongNoValuesYieldNothing) {
    const Tree tree;
    EXPECT_TRUE(tree.findKNearest({0.0, 0.0}, 3).empty());
    Tree::NearestIterator walk(tree, {0.0, 0.0});
    EXPECT_TRUE(walk.done());
    walk.advance();
    EXPECT_TRUE(walk.done());
}

TEST(KDTree, DepthIsTheFloorOfTheBinaryLogarithm) {
    const std::array expected = {0, 0, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3, 4};
    const auto spots = row(expected.size());
    for (std::size_t count = 0; count < expected.size(); ++count) {
        Tree tree;
        buildOver(tree, spots, count);
        EXPECT_EQ(tree.depth(), expected[count]) << count;
    }
}

TEST(KDTree, DepthDoesNotFallWhenRebuiltOverFewerValues) {
    const auto spots = row(9);
    Tree tree;
    buildOver(tree, spots, 5);
    EXPECT_EQ(tree.depth(), 2);
    buildOver(tree, spots, 1);
    EXPECT_EQ(tree.depth(), 2);
    buildOver(tree, spots, 0);
    EXPECT_EQ(tree.depth(), 2);
    buildOver(tree, spots, 9);
    EXPECT_EQ(tree.depth(), 3);
}

// The second of two values is their median, and its partner hangs on the left of it. A tie looks
// right first.
TEST(KDTree, NearestOfTwoEqualKeysIsTheOneMetFirst) {
    const Line pair({Point<double, 1>(2.0), Point<double, 1>(2.0)});
    for (const double at : {2.0, 1.0, 3.0}) {
        const Point<double, 1> point(at);
        std::vector<const Spot<1>*> asked;
        (void)pair.tree.findNearestIf(point, [&](const Spot<1>* spot) {
            asked.push_back(spot);
            return false;
        });
        ASSERT_EQ(asked.size(), 2U) << at;
        EXPECT_NE(asked[0], asked[1]);
        EXPECT_EQ(pair.tree.findNearest(point), asked[0]) << at;
    }
}

TEST(KDTree, EqualKeysOnTheRightOfTheirMedianAreReached) {
    const Line three({Point<double, 1>(2.0), Point<double, 1>(2.0), Point<double, 1>(2.0)});
    const Point<double, 1> point(2.0);
    // Preorder: the median, its left, its right.
    EXPECT_EQ(three.tree.findNearest(point), three.tree.valueAt(2));
    for (const Spot<1>* wanted : three.values)
        EXPECT_EQ(three.tree.findNearestIf(point, [=](const Spot<1>* spot) { return spot == wanted; }),
                  wanted);
    EXPECT_THAT(three.tree.findKNearest(point, 3), ::testing::UnorderedElementsAreArray(three.values));
}

TEST(KDTree, ValuesFartherThanTheLargestNumberHaveNoNearest) {
    const Plane far({{1e200, 0.0}});
    EXPECT_EQ(far.tree.findNearest({0.0, 0.0}), nullptr);
    EXPECT_EQ(far.tree.findNearestIf({0.0, 0.0}, kTakeAll), nullptr);
    EXPECT_EQ(far.tree.findKNearest({0.0, 0.0}, 2).size(), 1U);
}

TEST(KDTree, WhatAcceptThrowsEndsTheSearch) {
    const Plane spots({{0.0, 0.0}, {1.0, 0.0}, {2.0, 0.0}});
    int asked = 0;
    const auto accept = [&](const Spot<2>*) -> bool {
        if (++asked == 2) throw std::runtime_error("enough");
        return false;
    };
    EXPECT_THROW((void)spots.tree.findNearestIf({1.0, 0.0}, accept), std::runtime_error);
    EXPECT_EQ(asked, 2);
}

TEST(KDTree, KOfZeroOrLessFindsNothing) {
    const Plane spots({{0.0, 0.0}, {1.0, 0.0}});
    EXPECT_TRUE(spots.tree.findKNearest({0.0, 0.0}, 0).empty());
    EXPECT_TRUE(spots.tree.findKNearest({0.0, 0.0}, -1).empty());
}

TEST(KDTree, HugeKReservesNoMoreThanThereIs) {
    const Plane spots({{0.0, 0.0}, {1.0, 0.0}});
    EXPECT_EQ(spots.tree.findKNearest({0.9, 0.0}, 0x7FFFFFFF),
              (std::vector{spots.values[1], spots.values[0]}));
}

TEST(KDTree, SkippedSubtreeIsNotVisited) {
    const auto spots = row(7);
    Tree tree;
    buildOver(tree, spots, 7);
    // In preorder the right half of seven begins at slot 4.
    const auto skip = [](std::size_t slot) { return slot == 4; };
    const Spot<2>* const nearest = tree.findNearestIf({6.0, 0.0}, kTakeAll, skip);
    EXPECT_EQ(nearest, &spots[3]);
    EXPECT_EQ(tree.findNearestIf({6.0, 0.0}, kTakeAll, [](std::size_t) { return true; }), nullptr);
}

// From beyond the end of a line every far side is farther than the first leaf: one node for each
// level.
TEST(KDTree, SearchLeavesOutWhatCannotBeNearer) {
    std::vector<Point<double, 1>> keys;
    for (int i = 0; i < 1023; ++i) keys.emplace_back(static_cast<double>(i));
    const Line line(keys);
    int visited = 0;
    const auto countVisit = [&](std::size_t) {
        ++visited;
        return false;
    };
    const auto takeAll = [](const Spot<1>*) { return true; };
    EXPECT_EQ(line.tree.findNearestIf(Point<double, 1>(-1.0), takeAll, countVisit), line.values[0]);
    EXPECT_EQ(visited, line.tree.depth() + 1);
}

TEST(KDTree, CopyHoldsTheSameValues) {
    static_assert(std::is_default_constructible_v<Tree>);
    const auto spots = row(5);
    Tree tree;
    buildOver(tree, spots, 5);
    const Tree copy = tree;
    tree.build(static_cast<const Spot<2>**>(nullptr), static_cast<const Spot<2>**>(nullptr));
    EXPECT_EQ(copy.findNearest({3.2, 1.0}), &spots[3]);
}
