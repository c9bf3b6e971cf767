#include <QuarnScreen/Detail/Mesh/MeshBounds.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <vector>

#include "Library/Boundary/BoundaryCases.h"

using namespace quarn::test;
using quarn::detail::hasVaryingUV;

namespace {

std::vector<Triangle> trianglesWithUV(const Point<double, 2>& uv) {
    const TriangleVertex corner = cornerAt({0, 0, 0}, uv);
    return std::vector<Triangle>(3, triangleOf(corner, corner, corner));
}

}  // namespace

TEST(VaryingUV, IsNotThatOfAnEmptyList) {
    EXPECT_FALSE(quarn::detail::hasVaryingUV({}));
}

TEST(VaryingUV, IsNotThatOfEqualUVs) {
    EXPECT_FALSE(quarn::detail::hasVaryingUV(trianglesWithUV(kNoUV)));
    EXPECT_FALSE(quarn::detail::hasVaryingUV(trianglesWithUV({0.25, 0.75})));
    EXPECT_FALSE(quarn::detail::hasVaryingUV(trianglesWithUV({0.0, 0.0})));
}

TEST(VaryingUV, IsThatOfOneCornerThatDiffersInOneCoordinate) {
    for (std::size_t triangle = 0; triangle < 3; ++triangle) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            for (std::size_t i = 0; i < 2; ++i) {
                SCOPED_TRACE(triangle);
                SCOPED_TRACE(corner);
                std::vector<Triangle> triangles = trianglesWithUV({0.25, 0.75});
                triangles[triangle].vertices[corner].uv[i] = 0.5;
                EXPECT_TRUE(quarn::detail::hasVaryingUV(triangles));
            }
        }
    }
}

TEST(VaryingUV, TakesBothZerosForOneNumberAndNaNForNone) {
    std::vector<Triangle> triangles = trianglesWithUV({0.0, 0.0});
    triangles[1].vertices[1].uv = {-0.0, -0.0};
    EXPECT_FALSE(quarn::detail::hasVaryingUV(triangles));
    EXPECT_TRUE(
        quarn::detail::hasVaryingUV(trianglesWithUV({std::numeric_limits<double>::quiet_NaN(), 0.0})));
}
