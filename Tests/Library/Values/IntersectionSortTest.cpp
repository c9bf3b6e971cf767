#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

// A set whose hits carry their place of insertion as the triangle index.
IntersectionSet setOf(const std::vector<Point3>& points) {
    IntersectionSet set;
    for (const Point3& position : points) {
        Intersection hit;
        hit.point = position;
        hit.triangleIndex = set.count();
        set.add(hit);
    }
    return set;
}

std::vector<int> orderOf(const IntersectionSet& set) {
    std::vector<int> order;
    order.reserve(static_cast<std::size_t>(set.count()));
    for (const Intersection& hit : set) order.push_back(hit.triangleIndex);
    return order;
}

std::vector<int> sortedOrder(const std::vector<Point3>& points, const Point3& from, const Point3& to = {}) {
    IntersectionSet set = setOf(points);
    set.sort(from, to);
    return orderOf(set);
}

// Sorts pairs of distance and place, so that equal distances keep their order.
std::vector<int> expectedOrder(const std::vector<Point3>& points, const Point3& from) {
    std::vector<std::pair<double, int>> keys;
    keys.reserve(points.size());
    for (const Point3& p : points) {
        const reference::Vec3 offset{p[0] - from[0], p[1] - from[1], p[2] - from[2]};
        keys.emplace_back(reference::dot(offset, offset), static_cast<int>(keys.size()));
    }
    std::sort(keys.begin(), keys.end());
    std::vector<int> order;
    order.reserve(keys.size());
    for (const auto& [distance, place] : keys) order.push_back(place);
    return order;
}

}  // namespace

TEST(IntersectionSort, OfNoHitOrOneChangesNothing) {
    IntersectionSet none;
    none.sort({1.0, 2.0, 3.0}, {});
    EXPECT_TRUE(none.empty());
    IntersectionSet one = setOf({{4.0, 5.0, 6.0}});
    one.sort({1.0, 2.0, 3.0}, {});
    ASSERT_EQ(one.count(), 1);
    EXPECT_EQ(one.first().point, Point3(4.0, 5.0, 6.0));
}

TEST(IntersectionSort, EqualDistancesKeepTheirOrder) {
    for (const int count : {2, 16, 17, 32, 33, 1000}) {
        SCOPED_TRACE(count);
        std::vector<Point3> points;
        points.reserve(static_cast<std::size_t>(count));
        std::vector<int> inserted;
        for (int i = 0; i < count; ++i) {
            points.emplace_back(i % 2 == 0 ? 1.0 : -1.0, 0.0, 0.0);
            inserted.push_back(i);
        }
        EXPECT_EQ(sortedOrder(points, {}), inserted);
    }
}

TEST(IntersectionSort, EqualDistancesAmongOthersKeepTheirOrder) {
    for (const int count : {2, 16, 17, 32, 33, 1000})
        for (int i = 0; i < seedCount(20); ++i) {
            Rng rng(i);
            SCOPED_TRACE(i);
            std::vector<Point3> points;
            points.reserve(static_cast<std::size_t>(count));
            for (int k = 0; k < count; ++k) points.push_back(rng.integerPoint(-2, 2));
            EXPECT_EQ(sortedOrder(points, {}), expectedOrder(points, {})) << count;
        }
}

TEST(IntersectionSort, IgnoresItsSecondArgument) {
    const std::vector<Point3> points{{3.0, 0.0, 0.0}, {-1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}, {-4.0, 0.0, 0.0}};
    const std::vector<int> byDistance{1, 2, 0, 3};
    EXPECT_EQ(sortedOrder(points, {}, {1.0, 0.0, 0.0}), byDistance);
    EXPECT_EQ(sortedOrder(points, {}, {-1.0, 0.0, 0.0}), byDistance);
    for (const double special : kSpecialValues)
        EXPECT_EQ(sortedOrder(points, {}, {special, special, special}), byDistance);
}

TEST(IntersectionSort, TakesTheWholeRecordAlong) {
    Intersection far;
    far.point = {9.0, 0.0, 0.0};
    far.hasUV = true;
    far.uv = {0.1, 0.2};
    far.triangleIndex = 3;
    far.normalSign = 1;
    const Intersection near;
    IntersectionSet set(far);
    set.add(near);
    set.sort({}, {});
    EXPECT_EQ(set.first(), near);
    EXPECT_EQ(set.last(), far);
}

TEST(IntersectionSort, IsByTheSquaredDistance) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        std::vector<Point3> points(static_cast<std::size_t>(rng.integer(0, 60)));
        for (Point3& p : points) p = randomPoint(rng, exponents);
        const Point3 from = randomPoint(rng, exponents);
        EXPECT_EQ(sortedOrder(points, from), expectedOrder(points, from));
    }
}

TEST(IntersectionSort, SquaresThatOverflowOrUnderflowAreEqualDistances) {
    EXPECT_EQ(sortedOrder({{1e200, 0.0, 0.0}, {1e160, 0.0, 0.0}, {1.0, 0.0, 0.0}}, {}),
              (std::vector{2, 0, 1}));
    EXPECT_EQ(sortedOrder({{1e-170, 0.0, 0.0}, {1e-200, 0.0, 0.0}, {}}, {}), (std::vector{0, 1, 2}));
}

TEST(IntersectionSort, MayBeQueriedFromOneOfItsOwnHits) {
    // The reference to the hit moves to another hit while the records are exchanged.
    for (const int count : {3, 20, 100}) {
        std::vector<Point3> points;
        points.reserve(static_cast<std::size_t>(count));
        for (int k = 0; k < count; ++k) points.emplace_back(count - k, 0.0, 0.0);
        const Point3 from = points.front();
        IntersectionSet set = setOf(points);
        set.sort(set.last().point, {});
        EXPECT_EQ(orderOf(set), expectedOrder(points, points.back())) << count;
        set = setOf(points);
        set.sort(set.first().point, {});
        EXPECT_EQ(orderOf(set), expectedOrder(points, from)) << count;
    }
}

TEST(IntersectionSort, WithNaNLosesNoHitAndReadsNoOther) {
    for (const int count : {2, 17, 33, 500})
        for (int i = 0; i < seedCount(20); ++i) {
            Rng rng(i);
            SCOPED_TRACE(i);
            std::vector<Point3> points;
            points.reserve(static_cast<std::size_t>(count));
            for (int k = 0; k < count; ++k) {
                const auto special = static_cast<std::size_t>(rng.integer(0, kSpecialValues.size() - 1));
                points.emplace_back(kSpecialValues[special], rng.uniform(-1.0, 1.0), 0.0);
            }
            std::vector<int> order = sortedOrder(points, {});
            std::sort(order.begin(), order.end());
            for (int k = 0; k < count; ++k) EXPECT_EQ(order[static_cast<std::size_t>(k)], k);
        }
}

TEST(IntersectionSort, FromNaNKeepsTheOrder) {
    // Every distance is NaN, which is neither less nor greater than another.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(sortedOrder({{3.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}}, {nan, 0.0, 0.0}),
              (std::vector{0, 1, 2}));
}
