#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>

#include "Support/Conversions.h"

using namespace quarn::test;

namespace {

Intersection hitWithIndex(int index) {
    Intersection hit;
    hit.point = {1.0 * index, 2.0, 3.0};
    hit.hasUV = true;
    hit.uv = {0.25, 0.5};
    hit.triangleIndex = index;
    hit.normalSign = -1;
    return hit;
}

IntersectionSet setOf(int count) {
    IntersectionSet set;
    for (int i = 0; i < count; ++i) set.add(hitWithIndex(i));
    return set;
}

void expectSetOf(const IntersectionSet& set, int count) {
    EXPECT_EQ(set.empty(), count == 0);
    ASSERT_EQ(set.count(), count);
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(set.get(i).triangleIndex, i);
        EXPECT_EQ(set.get(i).point, hitWithIndex(i).point);
    }
}

}  // namespace

TEST(IntersectionSet, IsEmptyByDefault) {
    const IntersectionSet set;
    EXPECT_TRUE(set.empty());
    EXPECT_EQ(set.count(), 0);
    EXPECT_EQ(set.begin(), set.end());
}

TEST(IntersectionSet, OfAPointKnowsNothingElse) {
    const IntersectionSet set(Point3(1.0, 2.0, 3.0));
    ASSERT_EQ(set.count(), 1);
    EXPECT_EQ(set.first().point, Point3(1.0, 2.0, 3.0));
    EXPECT_EQ(set.first().triangleIndex, -1);
    EXPECT_EQ(set.first().normalSign, 0);
    EXPECT_FALSE(set.first().hasUV);
    EXPECT_EQ(set.first().uv, Point2());
}

TEST(IntersectionSet, OfAHitHoldsACopyOfIt) {
    Intersection hit = hitWithIndex(4);
    const IntersectionSet set(hit);
    hit.triangleIndex = 5;
    ASSERT_EQ(set.count(), 1);
    EXPECT_EQ(set.first().triangleIndex, 4);
    EXPECT_EQ(set.first().point, Point3(4.0, 2.0, 3.0));
    EXPECT_EQ(set.first().uv, Point2(0.25, 0.5));
    EXPECT_TRUE(set.first().hasUV);
    EXPECT_EQ(set.first().normalSign, -1);
}

TEST(IntersectionSet, IsMadeFromAHitOrAPointWithoutAskingForIt) {
    const auto count = [](const IntersectionSet& set) { return set.count(); };
    EXPECT_EQ(count(hitWithIndex(0)), 1);
    EXPECT_EQ(count(Point3(1.0, 2.0, 3.0)), 1);
}

TEST(IntersectionSet, KeepsInsertionOrderAndDuplicates) {
    IntersectionSet set = setOf(3);
    set.add(hitWithIndex(0));
    ASSERT_EQ(set.count(), 4);
    EXPECT_EQ(set.first().triangleIndex, 0);
    EXPECT_EQ(set.get(1).triangleIndex, 1);
    EXPECT_EQ(set.get(2).triangleIndex, 2);
    EXPECT_EQ(set.last().triangleIndex, 0);
    EXPECT_EQ(&set.first(), &set.get(0));
    EXPECT_EQ(&set.last(), &set.get(3));
}

TEST(IntersectionSet, MayAddItsOwnHit) {
    IntersectionSet set = setOf(1);
    for (int i = 0; i < 100; ++i) set.add(set.first());
    ASSERT_EQ(set.count(), 101);
    for (const Intersection& hit : set) EXPECT_EQ(hit, hitWithIndex(0));
}

TEST(IntersectionSet, IteratesInOrder) {
    const IntersectionSet set = setOf(5);
    std::vector<int> indices;
    for (const Intersection& hit : set) indices.push_back(hit.triangleIndex);
    EXPECT_EQ(indices, (std::vector{0, 1, 2, 3, 4}));
    EXPECT_EQ(&*set.begin(), &set.first());
    EXPECT_EQ(set.end() - set.begin(), 5);
}

TEST(IntersectionSet, CopyIsIndependent) {
    IntersectionSet original = setOf(3);
    const IntersectionSet copy(original);
    IntersectionSet assigned = setOf(7);
    assigned = original;
    original.add(hitWithIndex(3));
    expectSetOf(original, 4);
    expectSetOf(copy, 3);
    expectSetOf(assigned, 3);
}

// The state after a move is promised.
// NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
TEST(IntersectionSet, MoveTakesTheStorageAndLeavesTheSourceEmpty) {
    IntersectionSet source = setOf(3);
    const Intersection* const storage = &source.first();
    IntersectionSet target(std::move(source));
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(source.count(), 0);
    EXPECT_EQ(&target.first(), storage);
    expectSetOf(target, 3);
    source.add(hitWithIndex(0));
    expectSetOf(source, 1);
}

TEST(IntersectionSet, MoveAssignmentReplacesTheTargetAndLeavesTheSourceEmpty) {
    IntersectionSet source = setOf(3);
    const Intersection* const storage = &source.first();
    IntersectionSet target = setOf(7);
    target = std::move(source);
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(&target.first(), storage);
    expectSetOf(target, 3);
}

// NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)

TEST(IntersectionSet, AssignmentToItselfDoesNothing) {
    IntersectionSet set = setOf(3);
    IntersectionSet& alias = set;
    const Intersection* const storage = &set.first();
    set = alias;
    expectSetOf(set, 3);
    EXPECT_EQ(&set.first(), storage);
    set = std::move(alias);
    expectSetOf(set, 3);
    EXPECT_EQ(&set.first(), storage);
}

TEST(IntersectionSet, AssignmentAnswersTheTarget) {
    IntersectionSet a;
    IntersectionSet b = setOf(1);
    EXPECT_EQ(&(a = b), &a);
    EXPECT_EQ(&(a = std::move(b)), &a);
}
