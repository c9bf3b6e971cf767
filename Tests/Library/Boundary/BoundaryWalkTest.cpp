#include <QuarnScreen/Detail/Boundary/BoundaryWalk.h>

#include <gmock/gmock.h>

#include <array>
#include <limits>
#include <optional>
#include <vector>

#include "Library/Boundary/BoundaryCases.h"

using namespace quarn::test;
using quarn::detail::BoundaryWalkResult;
using quarn::detail::findBoundary;
using ::testing::ElementsAre;

namespace {

using Position = Point<double, 3>;
using UV = Point<double, 2>;

// A unit square of two triangles whose lower left corner is at (x, 0).
std::vector<Triangle> square(double x) {
    return {triangleOf(cornerOnPlane(x, 0), cornerOnPlane(x + 1, 0), cornerOnPlane(x + 1, 1)),
            triangleOf(cornerOnPlane(x, 0), cornerOnPlane(x + 1, 1), cornerOnPlane(x, 1))};
}

std::vector<Triangle> withoutUV(std::vector<Triangle> triangles) {
    for (Triangle& triangle : triangles)
        for (TriangleVertex& corner : triangle.vertices) corner.uv = kNoUV;
    return triangles;
}

std::vector<Triangle> cube() {
    // The corners of a face go round; bit i of a corner's number is its coordinate i.
    constexpr std::array<std::array<int, 4>, 6> kFaces = {
        {{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}}};
    const auto corner = [](int i) {
        return cornerAt({i % 2 * 1.0, i / 2 % 2 * 1.0, i / 4 * 1.0}, {i / 8.0, 0.5});
    };
    std::vector<Triangle> triangles;
    for (const auto& [a, b, c, d] : kFaces) {
        triangles.push_back(triangleOf(corner(a), corner(b), corner(c)));
        triangles.push_back(triangleOf(corner(a), corner(c), corner(d)));
    }
    return triangles;
}

}  // namespace

TEST(BoundaryWalk, OfOneTriangleIsItsThreeEdgesAndRepeatsTheFirstPoint) {
    const std::vector<Triangle> triangles = {
        triangleOf(cornerOnPlane(0, 0), cornerOnPlane(1, 0), cornerOnPlane(1, 1))};
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_TRUE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, std::nullopt);
    EXPECT_THAT(boundary.points,
                ElementsAre(Position(0, 0, 0), Position(1, 0, 0), Position(1, 1, 0), Position(0, 0, 0)));
    EXPECT_THAT(boundary.uvPoints, ElementsAre(UV(0, 0), UV(1, 0), UV(1, 1), UV(0, 0)));
    EXPECT_THAT(boundary.triangles, ElementsAre(&triangles[0], &triangles[0], &triangles[0], &triangles[0]));
}

TEST(BoundaryWalk, OfTwoTrianglesLeavesOutTheEdgeThatTheyShare) {
    const std::vector<Triangle> triangles = square(0);
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_TRUE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, std::nullopt);
    // Of the two edges at the least corner the one that was seen first leads on.
    EXPECT_THAT(boundary.points, ElementsAre(Position(0, 0, 0), Position(1, 0, 0), Position(1, 1, 0),
                                             Position(0, 1, 0), Position(0, 0, 0)));
    EXPECT_THAT(boundary.triangles,
                ElementsAre(&triangles[0], &triangles[0], &triangles[0], &triangles[1], &triangles[1]));
}

TEST(BoundaryWalk, HasASeamInUVTwiceAndEndsAtTheFirstClosing) {
    std::vector<Triangle> triangles = square(0);
    for (TriangleVertex& corner : triangles[1].vertices) corner.uv = corner.uv + UV(2, 2);
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_FALSE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, 3U);
    EXPECT_THAT(boundary.uvPoints, ElementsAre(UV(0, 0), UV(1, 0), UV(1, 1), UV(0, 0)));
}

TEST(BoundaryWalk, OfAClosedCubeIsEmpty) {
    Boundary boundary;
    EXPECT_TRUE(quarn::detail::findBoundary(square(0), boundary).isSingleWithUV);
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(cube(), boundary);
    EXPECT_FALSE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, std::nullopt);
    EXPECT_TRUE(boundary.points.empty());
    EXPECT_TRUE(boundary.uvPoints.empty());
    EXPECT_TRUE(boundary.triangles.empty());
}

TEST(BoundaryWalk, OfNoTriangleIsEmpty) {
    Boundary boundary;
    EXPECT_FALSE(quarn::detail::findBoundary({}, boundary).isSingleWithUV);
    EXPECT_TRUE(boundary.points.empty());
}

TEST(BoundaryWalk, OfTwoSquaresIsThatOfTheFirstAndLeavesFourEdges) {
    std::vector<Triangle> triangles = square(5);
    const std::vector<Triangle> other = square(0);
    triangles.insert(triangles.end(), other.begin(), other.end());
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_FALSE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, 4U);
    EXPECT_THAT(boundary.points, ElementsAre(Position(0, 0, 0), Position(1, 0, 0), Position(1, 1, 0),
                                             Position(0, 1, 0), Position(0, 0, 0)));
}

TEST(BoundaryWalk, WithoutUVsIsFullYetNotGood) {
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result =
        quarn::detail::findBoundary(withoutUV(square(0)), boundary);
    EXPECT_FALSE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, std::nullopt);
    EXPECT_EQ(boundary.points.size(), 5U);
    EXPECT_THAT(boundary.uvPoints, ElementsAre(kNoUV, kNoUV, kNoUV, kNoUV, kNoUV));
}

TEST(BoundaryWalk, NeedsAUVAtEachPointAndTakesOneCoordinateOfDifferenceForOne) {
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        std::vector<Triangle> triangles = {
            triangleOf(cornerOnPlane(0, 0), cornerOnPlane(1, 0), cornerOnPlane(1, 1))};
        Boundary boundary;
        for (const UV uv : {UV(-999.0, 0.5), UV(0.5, -999.0)}) {
            triangles[0].vertices[i].uv = uv;
            EXPECT_TRUE(quarn::detail::findBoundary(triangles, boundary).isSingleWithUV);
        }
        triangles[0].vertices[i].uv = kNoUV;
        EXPECT_FALSE(quarn::detail::findBoundary(triangles, boundary).isSingleWithUV);
    }
}

TEST(BoundaryWalk, HasAnEdgeOfThreeTrianglesForTheLastOfThem) {
    std::vector<Triangle> triangles = square(0);
    // A fin on the diagonal, which the two triangles of the square had cancelled.
    triangles.push_back(triangleOf(cornerOnPlane(1, 1), cornerOnPlane(0, 0), cornerAt({0, 0, 9}, {7, 7})));
    Boundary boundary;
    EXPECT_EQ(quarn::detail::findBoundary(triangles, boundary).edgesLeft, 3U);
    EXPECT_THAT(boundary.points, ElementsAre(Position(0, 0, 0), Position(1, 0, 0), Position(1, 1, 0),
                                             Position(0, 1, 0), Position(0, 0, 0)));

    // A second fin cancels the diagonal again, and now the edge with two triangles is that of the
    // fins.
    triangles.push_back(triangleOf(cornerOnPlane(0, 0), cornerOnPlane(1, 1), cornerAt({0, 0, 9}, {7, 7})));
    EXPECT_TRUE(quarn::detail::findBoundary(triangles, boundary).isSingleWithUV);
}

TEST(BoundaryWalk, OfTheSameTriangleThreeTimesIsThatOfTheThird) {
    const Triangle one = triangleOf(cornerOnPlane(0, 0), cornerOnPlane(1, 0), cornerOnPlane(1, 1));
    const std::vector<Triangle> triangles = {one, one, one};
    Boundary boundary;
    EXPECT_TRUE(quarn::detail::findBoundary(triangles, boundary).isSingleWithUV);
    EXPECT_THAT(boundary.triangles, ElementsAre(&triangles[2], &triangles[2], &triangles[2], &triangles[2]));
}

TEST(BoundaryWalk, OfATriangleWithEqualCornersIsAnEdgeFromACornerToItself) {
    const std::vector<Triangle> triangles = {
        triangleOf(cornerOnPlane(0, 0), cornerOnPlane(0, 0), cornerOnPlane(1, 1))};
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_TRUE(result.isSingleWithUV);
    EXPECT_THAT(boundary.points, ElementsAre(Position(0, 0, 0), Position(0, 0, 0)));
}

TEST(BoundaryWalk, EndsWhereItTurnsRoundAtThePositionOfItsStartWhateverTheUV) {
    // Corners a and c are at one place; in UV they are the two ends of a diagonal.
    const TriangleVertex a = cornerAt({0, 0, 0}, {0, 0});
    const TriangleVertex b = cornerAt({1, 0, 0}, {1, 0});
    const TriangleVertex c = cornerAt({0, 0, 0}, {1, 1});
    const TriangleVertex d = cornerAt({1, 1, 0}, {0, 1});
    Boundary boundary;
    EXPECT_EQ(quarn::detail::findBoundary({triangleOf(a, b, c), triangleOf(a, c, d)}, boundary).edgesLeft,
              2U);
    EXPECT_THAT(boundary.uvPoints, ElementsAre(a.uv, b.uv, c.uv));

    // It passes through that place where it need not turn round.
    EXPECT_TRUE(quarn::detail::findBoundary({triangleOf(a, b, c)}, boundary).isSingleWithUV);
    EXPECT_THAT(boundary.uvPoints, ElementsAre(a.uv, b.uv, c.uv, a.uv));
}

TEST(BoundaryWalk, IsWrittenIntoTheMemoryOfTheOneBefore) {
    Boundary boundary;
    EXPECT_TRUE(quarn::detail::findBoundary(gridAt(0.0, 10, 10), boundary).isSingleWithUV);
    const Point<double, 3>* const memory = boundary.points.data();
    EXPECT_EQ(boundary.points.size(), 41U);
    EXPECT_TRUE(quarn::detail::findBoundary(gridAt(0.0, 9, 9), boundary).isSingleWithUV);
    EXPECT_EQ(boundary.points.data(), memory);
    EXPECT_EQ(boundary.points.size(), 37U);
}

TEST(BoundaryWalk, OfACornerWithNaNTakesNoEdgeOfAnotherCorner) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Triangle> triangles = {
        triangleOf(cornerAt({2, 0, 1}), cornerAt({1, 0, 1}), cornerAt({0, 0, 0})),
        triangleOf(cornerAt({2, 0, 1}), cornerAt({1, kNaN, 0}), cornerAt({0, 0, 1}))};
    Boundary boundary;
    const quarn::detail::BoundaryWalkResult result = quarn::detail::findBoundary(triangles, boundary);
    EXPECT_FALSE(result.isSingleWithUV);
    EXPECT_EQ(result.edgesLeft, 3U);
    EXPECT_THAT(boundary.points,
                ElementsAre(Position(0, 0, 0), Position(1, 0, 1), Position(2, 0, 1), Position(0, 0, 0)));
}
