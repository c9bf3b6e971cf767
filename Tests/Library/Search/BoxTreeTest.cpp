#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include <QuarnScreen/Detail/Search/Boxes/BoxTree.h>
#include <QuarnScreen/Detail/Search/Boxes/OccupancyGrid.h>
#include <QuarnScreen/Detail/Search/TriangleBuckets.h>

#include "Support/GeometryBits.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;
using quarn::detail::BoxTree;
using quarn::detail::FloatBox;
using quarn::detail::FloatPosition;

namespace {

// The bounds of two positions, or now and then an empty or an infinite box.
FloatBox anyBox(Rng& rng, bool isLimited) {
    const int kind = isLimited ? 2 : rng.integer(0, 20);
    if (kind == 0) return FloatBox::nowhere();
    if (kind == 1) return FloatBox::everywhere();
    const Point3 from = rng.point(-1.0, 1.0);
    const Point3 size = rng.integer(0, 3) == 0 ? Point3() : rng.point(0.0, 0.3);
    FloatBox box{};
    for (std::size_t i = 0; i < 3; ++i) {
        box.lower[i] = quarn::detail::roundedDown(from[i]);
        box.upper[i] = quarn::detail::roundedUp(from[i] + size[i]);
    }
    return box;
}

std::vector<FloatBox> anyBoxes(Rng& rng) {
    std::vector<FloatBox> boxes;
    const bool isLimited = rng.coin();
    for (int count = rng.integer(0, rng.coin() ? 20 : 300); count > 0; --count)
        boxes.push_back(anyBox(rng, isLimited));
    return boxes;
}

bool contains(const FloatBox& box, const Point3& point) {
    bool isInside = true;
    for (std::size_t i = 0; i < 3; ++i)
        isInside &=
            static_cast<double>(box.lower[i]) <= point[i] && point[i] <= static_cast<double>(box.upper[i]);
    return isInside;
}

double squaredDistance(const FloatBox& box, const Point3& point) {
    Point3 gap;
    for (std::size_t i = 0; i < 3; ++i)
        gap[i] = std::max({0.0, static_cast<double>(box.lower[i]) - point[i],
                           point[i] - static_cast<double>(box.upper[i])});
    return dot(gap, gap);
}

// Any position, or a corner of a box.
Point3 anyQuestion(const std::vector<FloatBox>& boxes, Rng& rng) {
    if (boxes.empty() || rng.coin()) return rng.point(-1.2, 1.2);
    const FloatBox& box = boxes[static_cast<std::size_t>(rng.integer(0, static_cast<int>(boxes.size()) - 1))];
    Point3 corner;
    for (std::size_t i = 0; i < 3; ++i)
        corner[i] = static_cast<double>(rng.coin() ? box.lower[i] : box.upper[i]);
    return corner;
}

// Calls `check(boxes, point)` for many random boxes and positions.
template <class Check>
void forManyBoxes(const Check& check) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const std::vector<FloatBox> boxes = anyBoxes(rng);
        BoxTree tree;
        tree.build(boxes);
        for (int question = 0; question < 20; ++question) check(boxes, tree, anyQuestion(boxes, rng), rng);
    }
}

}  // namespace

TEST(FloatBox, RoundingGoesOutwards) {
    for (int i = 0; i < seedCount(100'000); ++i) {
        Rng rng(i);
        const double number = rng.coin() ? rng.spread(-1074, 1023) : wildNumber(rng);
        if (number != number) continue;
        ASSERT_LE(static_cast<double>(quarn::detail::roundedDown(number)), number);
        ASSERT_GE(static_cast<double>(quarn::detail::roundedUp(number)), number);
    }
}

TEST(BoxTree, VisitsTheBoxesThatContainAPosition) {
    forManyBoxes([](const auto& boxes, const BoxTree& tree, const Point3& point, Rng&) {
        std::multiset<std::size_t> visited;
        tree.visitContaining(FloatPosition(point), [&](std::size_t index) { visited.insert(index); });
        const auto [x, y, z] = FloatPosition(point).coordinates;
        const Point3 rounded(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z));
        for (std::size_t index = 0; index < boxes.size(); ++index) {
            ASSERT_EQ(visited.count(index), contains(boxes[index], rounded) ? 1U : 0U) << index;
            if (contains(boxes[index], point)) {
                ASSERT_EQ(visited.count(index), 1U) << index;
            }
        }
    });
}

TEST(BoxTree, VisitsTheBoxesWithinADistance) {
    forManyBoxes([](const auto& boxes, const BoxTree& tree, const Point3& point, Rng& rng) {
        if (!std::isfinite(point[0]) || !std::isfinite(point[1]) || !std::isfinite(point[2])) return;
        const double limit = rng.coin() ? 0.0 : rng.uniform(0.0, 1.0);
        std::multiset<std::size_t> visited;
        tree.visitNear(point, limit, [&](std::size_t index) { visited.insert(index); });
        for (std::size_t index = 0; index < boxes.size(); ++index)
            ASSERT_EQ(visited.count(index), squaredDistance(boxes[index], point) <= limit ? 1U : 0U) << index;
    });
}

TEST(OccupancyGrid, ExcludesNoPositionInABox) {
    int excluded = 0;
    forManyBoxes([&](const auto& boxes, const BoxTree&, const Point3& point, Rng&) {
        quarn::detail::OccupancyGrid grid;
        grid.build(boxes);
        const bool mayContain = grid.mayContain(FloatPosition(point));
        if (!mayContain) ++excluded;
        for (const FloatBox& box : boxes)
            if (contains(box, point)) {
                ASSERT_TRUE(mayContain);
            }
    });
    EXPECT_GT(excluded, seedCount(500));
}

TEST(TriangleBuckets, ContainEachSlotOnce) {
    for (int count = 1; count < 700; count += 1 + count / 20) {
        SCOPED_TRACE(count);
        Rng rng(count);
        Mesh mesh(static_cast<std::size_t>(count));
        const bool isTied = rng.coin();
        for (Triangle& triangle : mesh) triangle.centroid = isTied ? Point3() : rng.point(-1.0, 1.0);
        quarn::detail::CentroidTree tree;
        quarn::detail::buildOver(tree, mesh);
        quarn::detail::TriangleBuckets buckets;
        buckets.build(tree);
        std::vector<int> counts(mesh.size());
        for (std::size_t bucket = 0; bucket < buckets.size(); ++bucket)
            for (std::size_t group = buckets.groupsOf(bucket).first; group < buckets.groupsOf(bucket).last;
                 ++group)
                for (std::size_t lane = 0; lane < quarn::detail::kLanes; ++lane)
                    if (const auto slot = buckets.slotAt(group, lane);
                        slot != quarn::detail::TriangleBuckets::kNoSlot)
                        ++counts.at(slot);
        EXPECT_EQ(counts, std::vector<int>(mesh.size(), 1));
    }
}
