#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "Kit/Check/CheckCases.h"

using namespace quarn;
using namespace quarn::test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

// A band of one row whose ends are joined, with half a turn or without.
Mesh band(bool isTwisted) {
    constexpr int kColumns = 30;
    const auto corner = [&](int column, double across) {
        const double angle = 6.283185307179586 * column / kColumns;
        const double tilt = isTwisted ? angle / 2.0 : 0.0;
        const double radius = 5.0 + across * std::sin(tilt);
        return Point<double, 3>(radius * std::sin(angle), radius * std::cos(angle), across * std::cos(tilt));
    };
    Mesh mesh;
    const std::array<Point<double, 3>, 2> first = {corner(0, 1.0), corner(0, -1.0)};
    std::array<Point<double, 3>, 2> left = first;
    for (int column = 1; column <= kColumns; ++column) {
        std::array<Point<double, 3>, 2> right = {corner(column, 1.0), corner(column, -1.0)};
        if (column == kColumns) right = isTwisted ? std::array{first[1], first[0]} : first;
        mesh.push_back(wholeTriangle(left[0], left[1], right[1]));
        mesh.push_back(wholeTriangle(left[0], right[1], right[0]));
        left = right;
    }
    stripUV(mesh);
    return mesh;
}

}  // namespace

TEST(SurfaceCheck, OneFlippedTriangleIsOneFinding) {
    for (const std::size_t place : {0U, 7U, 17U}) {
        Mesh mesh = flatGrid({3, 3});
        flipWinding(mesh[place]);
        const auto findings = check(mesh);
        ASSERT_THAT(namesOf(findings), ElementsAre("flipped-triangle")) << place;
        EXPECT_EQ(findings[0].count, 1U);
        EXPECT_THAT(trianglesOf(findings[0]), ElementsAre(place + 1));
        EXPECT_EQ(findings[0].places[0].line, lineOfTriangle(place + 1));
    }
}

TEST(SurfaceCheck, RandomFlippedTrianglesAreTheMinorityOfTheirComponent) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = separatePieces(3, {4, 4});  // 32 triangles a piece
        std::vector<bool> isFlipped(mesh.size());
        for (int k = 0; k < 15; ++k) {
            const auto place = static_cast<std::size_t>(rng.integer(0, 95));
            if (isFlipped[place]) continue;
            isFlipped[place] = true;
            flipWinding(mesh[place]);
        }
        std::uint64_t expected = 0;
        for (std::size_t piece = 0; piece < 3; ++piece) {
            const auto first = isFlipped.begin() + static_cast<std::ptrdiff_t>(32 * piece);
            const auto turned = std::count(first, first + 32, true);
            EXPECT_LT(turned, 16);
            expected += static_cast<std::uint64_t>(turned);
        }
        EXPECT_EQ(findingNamed("flipped-triangle", check(mesh)).count, expected);
    }
}

TEST(SurfaceCheck, MeshThatIsFlippedAsAWholeHasNoFinding) {
    Mesh mesh = flatGrid({3, 3});
    for (Triangle& triangle : mesh) flipWinding(triangle);
    EXPECT_THAT(namesOf(check(mesh)), IsEmpty());
}

TEST(SurfaceCheck, NonOrientableSurfaceHasNoWinding) {
    EXPECT_THAT(namesOf(check(band(true))), Contains("non-orientable-surface"));
    EXPECT_THAT(namesOf(check(band(false))), Not(Contains("non-orientable-surface")));
    EXPECT_EQ(findingNamed("non-orientable-surface", check(band(true))).count, 1U);
}

TEST(SurfaceCheck, EdgeOfThreeTrianglesIsNonManifold) {
    Mesh mesh = flatGrid({3, 3});
    Triangle fin = mesh[8];
    fin.vertices[1].position[1] = 1.0;
    fin.vertices[1].uv = {0.0, 2.0};
    computeFields(fin);
    mesh.push_back(fin);
    const Finding finding = findingNamed("non-manifold-edge", check(mesh));
    EXPECT_EQ(finding.count, 1U);
    EXPECT_THAT(trianglesOf(finding), ElementsAre(19));
}

TEST(SurfaceCheck, ComponentsAreCountedAndTheirFirstTrianglesReported) {
    const auto findings = check(separatePieces(4, {2, 3}));
    ASSERT_THAT(namesOf(findings), ElementsAre("disconnected-components"));
    EXPECT_EQ(findings[0].count, 4U);
    EXPECT_THAT(trianglesOf(findings[0]), ElementsAre(13, 25, 37));
}

TEST(SurfaceCheck, TrianglesThatTouchInACornerAreTwoComponents) {
    Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}),
                 wholeTriangle({0.0, 0.0, 0.0}, {-1.0, 0.0, 0.0}, {0.0, 0.0, -1.0})};
    EXPECT_EQ(findingNamed("disconnected-components", check(mesh)).count, 2U);
}

TEST(SurfaceCheck, ZeroAndItsNegativeAreOnePlace) {
    Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}),
                 wholeTriangle({-0.0, 0.0, 0.0}, {0.0, -0.0, 1.0}, {-1.0, 0.0, 0.0})};
    EXPECT_EQ(findingNamed("disconnected-components", check(mesh)).count, 0U);
}

// Shares edges by comparing each pair of triangles.
TEST(SurfaceCheck, PiecesOfRandomTrianglesAreThoseOfTheReference) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh;
        for (int k = rng.integer(1, 30); k > 0; --k) {
            const Triangle triangle =
                wholeTriangle(rng.integerPoint(0, 2), rng.integerPoint(0, 2), rng.integerPoint(0, 2));
            const auto& [a, b, c] = triangle.vertices;
            if (a.position != b.position && b.position != c.position && c.position != a.position)
                mesh.push_back(triangle);
        }
        const auto shared = [](const Triangle& a, const Triangle& b) {
            int corners = 0;
            for (const TriangleVertex& x : a.vertices)
                for (const TriangleVertex& y : b.vertices) corners += x.position == y.position ? 1 : 0;
            return corners;
        };
        std::vector<int> piece(mesh.size());
        for (std::size_t k = 0; k < piece.size(); ++k) piece[k] = static_cast<int>(k);
        for (std::size_t a = 0; a < mesh.size(); ++a)
            for (std::size_t b = 0; b < a; ++b)
                if (shared(mesh[a], mesh[b]) >= 2) {
                    const int from = piece[a];
                    const int to = piece[b];
                    for (int& each : piece)
                        if (each == from) each = to;
                }
        std::sort(piece.begin(), piece.end());
        const auto count =
            static_cast<std::uint64_t>(std::unique(piece.begin(), piece.end()) - piece.begin());
        EXPECT_EQ(findingNamed("disconnected-components", check(mesh)).count, count > 1 ? count : 0U);
    }
}
