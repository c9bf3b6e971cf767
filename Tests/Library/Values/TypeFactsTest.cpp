#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Ray.h>

#include "Support/Conversions.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

template <class T, std::size_t N>
constexpr bool kIsPlainArray =
    std::is_trivially_copyable_v<Point<T, N>>&& std::is_standard_layout_v<Point<T, N>> &&
    sizeof(Point<T, N>) == N * sizeof(T) && alignof(Point<T, N>) == alignof(T);

// Usable in a constant expression, which only a literal type is.
constexpr double sumOfConstants() {
    Point<double, 3> p(1.0, 2.0, 3.0);
    p[1] = 5.0;
    return dot(p, Point<double, 3>(1.0, 1.0, 1.0));
}

}  // namespace

TEST(Point, IsNothingButItsCoordinates) {
    static_assert(kIsPlainArray<double, 3> && kIsPlainArray<double, 2> && kIsPlainArray<int, 2>);
    static_assert(kIsPlainArray<float, 3>);
    static_assert(!std::is_polymorphic_v<Point<double, 3>>);
    const Point<double, 3> p(1.0, 2.0, 3.0);
    EXPECT_EQ(&p[2] - &p[0], 2);
    EXPECT_EQ(static_cast<const void*>(&p[0]), static_cast<const void*>(&p));
}

TEST(Point, IsALiteralType) {
    static_assert(sumOfConstants() == 9.0);
    static_assert(Point<double, 3>()[2] == 0.0);
    static_assert(Point<int, 2>(1, 2) < Point<int, 2>(1, 3));
    static_assert(cross(Point<double, 3>(1, 0, 0), Point<double, 3>(0, 1, 0)) == Point<double, 3>(0, 0, 1));
    SUCCEED();
}

TEST(Point, ConstructorTakesExactlyAsManyNumbersAsThereAreCoordinates) {
    using P3 = Point<double, 3>;
    static_assert(std::is_constructible_v<P3, double, double, double>);
    static_assert(!std::is_constructible_v<P3, double>);
    static_assert(!std::is_constructible_v<P3, double, double>);
    static_assert(!std::is_constructible_v<P3, double, double, double, double>);
    static_assert(std::is_constructible_v<Point<int, 2>, int, int>);
    static_assert(!std::is_constructible_v<Point<int, 2>, int, int, int>);
    SUCCEED();
}

TEST(Point, ThirdParameterIsTheSequenceOfIndices) {
    using Indices = std::integer_sequence<std::uint64_t, 0, 1, 2>;
    static_assert(std::is_same_v<Point<double, 3>, Point<double, 3, Indices>>);
    SUCCEED();
}

TEST(NoUV, IsAConstantOfTheProgram) {
    static_assert(kNoUV == Point<double, 2>(-999.0, -999.0));
    static_assert(std::is_same_v<decltype(kNoUV), const Point<double, 2>>);
    SUCCEED();
}

TEST(Point, IsAKeyOfAMap) {
    std::map<Point<int, 2>, int> cells;
    for (int column = 0; column < 5; ++column)
        for (int row = 0; row < 4; ++row) cells[{column, row}] = 10 * column + row;
    ASSERT_EQ(cells.size(), 20U);
    // The column decides, the row only among equal columns.
    int position = 0;
    for (const auto& [key, value] : cells) {
        EXPECT_EQ(key, (Point<int, 2>(position / 4, position % 4)));
        EXPECT_EQ(value, 10 * (position / 4) + position % 4);
        ++position;
    }
    EXPECT_FALSE(cells.contains({5, 0}));
}

TEST(Ray, HoldsOriginThenTarget) {
    const Ray ray{{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}};
    EXPECT_EQ(ray.origin, (Point3(1.0, 2.0, 3.0)));
    EXPECT_EQ(ray.target, (Point3(4.0, 5.0, 6.0)));
    EXPECT_EQ(Ray{}.origin, Point3());
    EXPECT_EQ(Ray{}.target, Point3());
    static_assert(sizeof(Ray) == 2 * sizeof(Point3) && std::is_trivially_copyable_v<Ray>);
}

TEST(TriangleVertex, HoldsPositionThenNormalThenUV) {
    static_assert(offsetof(TriangleVertex, position) < offsetof(TriangleVertex, normal));
    static_assert(offsetof(TriangleVertex, normal) < offsetof(TriangleVertex, uv));
    static_assert(std::is_trivially_copyable_v<TriangleVertex> && !std::is_polymorphic_v<TriangleVertex>);
    const TriangleVertex vertex;
    EXPECT_EQ(vertex.position, Point3());
    EXPECT_EQ(vertex.normal, Point3());
    EXPECT_EQ(vertex.uv, kNoUV);
}

TEST(Triangle, HoldsItsFieldsInTheirOrder) {
    constexpr std::size_t kOffsets[] = {
        offsetof(Triangle, vertices),      offsetof(Triangle, normal),   offsetof(Triangle, edge1),
        offsetof(Triangle, edge2),         offsetof(Triangle, uvEdge1),  offsetof(Triangle, uvEdge2),
        offsetof(Triangle, uvDeterminant), offsetof(Triangle, centroid), offsetof(Triangle, uvCentroid)};
    EXPECT_EQ(kOffsets[0], 0U);
    for (std::size_t i = 1; i < std::size(kOffsets); ++i) EXPECT_LT(kOffsets[i - 1], kOffsets[i]) << i;
    static_assert(std::is_trivially_copyable_v<Triangle> && !std::is_polymorphic_v<Triangle>);
}

TEST(Intersection, HoldsItsFieldsInTheirOrder) {
    const Intersection hit{{1.0, 2.0, 3.0}, true, {0.25, 0.75}, 7, -1};
    EXPECT_EQ(hit.point, (Point3(1.0, 2.0, 3.0)));
    EXPECT_TRUE(hit.hasUV);
    EXPECT_EQ(hit.uv, (Point2(0.25, 0.75)));
    EXPECT_EQ(hit.triangleIndex, 7);
    EXPECT_EQ(hit.normalSign, -1);
    static_assert(std::is_trivially_copyable_v<Intersection>);
}

TEST(IntersectionSet, IteratesAsAConstantVector) {
    using Iterator = std::vector<Intersection>::const_iterator;
    static_assert(std::is_same_v<decltype(std::declval<IntersectionSet&>().begin()), Iterator>);
    static_assert(std::is_same_v<decltype(std::declval<const IntersectionSet&>().end()), Iterator>);
    static_assert(std::is_nothrow_move_constructible_v<IntersectionSet>);
    static_assert(std::is_nothrow_move_assignable_v<IntersectionSet>);
    static_assert(sizeof(IntersectionSet) == sizeof(std::vector<Intersection>));
    SUCCEED();
}

TEST(Matrix, IsNothingButItsElements) {
    static_assert(sizeof(Matrix4) == 16 * sizeof(float) && std::is_trivially_copyable_v<Matrix4>);
    SUCCEED();
}
