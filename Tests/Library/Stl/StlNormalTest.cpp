#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Library/Stl/StlFiles.h"

using namespace quarn::test;

namespace {

const Point3 kUp = {0.0, 0.0, 1.0};

Triangle loaded(const Facet& facet) {
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, binaryStl({facet})), "");
    EXPECT_EQ(screen.triangles.size(), 1U);
    return screen.triangles.at(0);
}

void expectNormal(const Triangle& triangle, const Point3& normal) {
    EXPECT_TRUE(sameBits(triangle.normal, normal));
    for (const TriangleVertex& corner : triangle.vertices) EXPECT_TRUE(sameBits(corner.normal, normal));
}

// The triangle has the normal of its winding, and edges.
void expectComputed(float x, float y, float z) {
    SCOPED_TRACE(::testing::Message() << x << " " << y << " " << z);
    const Triangle triangle = loaded(facetWithNormal(x, y, z));
    expectNormal(triangle, kUp);
    EXPECT_TRUE(sameBits(triangle.edge1, Point3{2.0, 0.0, 0.0}));
    EXPECT_TRUE(sameBits(triangle.edge2, Point3{0.0, 2.0, 0.0}));
}

// The triangle has the normal of the file, and no edges.
void expectGiven(float x, float y, float z) {
    SCOPED_TRACE(::testing::Message() << x << " " << y << " " << z);
    const Triangle triangle = loaded(facetWithNormal(x, y, z));
    expectNormal(triangle, {x, y, z});
    const Triangle fresh;
    EXPECT_TRUE(sameBits(triangle.edge1, fresh.edge1));
    EXPECT_TRUE(sameBits(triangle.edge2, fresh.edge2));
    EXPECT_TRUE(sameBits(triangle.uvEdge1, fresh.uvEdge1));
    EXPECT_TRUE(sameBits(triangle.uvEdge2, fresh.uvEdge2));
    EXPECT_TRUE(sameBits(triangle.uvDeterminant, fresh.uvDeterminant));
}

}  // namespace

TEST(StlNormal, ZeroIsReplacedByThatOfTheWinding) {
    expectComputed(0.0F, 0.0F, 0.0F);
    expectComputed(-0.0F, 0.0F, -0.0F);
}

TEST(StlNormal, WhoseComponentsCancelIsReplacedToo) {
    const float half = std::sqrt(0.5F);
    expectComputed(half, -half, 0.0F);
    expectComputed(-half, half, 0.0F);
    expectComputed(1.0F, 1.0F, -2.0F);
}

TEST(StlNormal, IsKeptWhateverTheWindingAndTheLength) {
    expectGiven(0.0F, 0.0F, 1.0F);
    expectGiven(0.0F, 0.0F, -1.0F);
    expectGiven(1.0F, 0.0F, 0.0F);
    expectGiven(0.0F, 0.0F, -250.0F);
    expectGiven(0.0F, 1e-3F, 0.0F);
    expectGiven(-3.0F, -4.0F, 0.5F);
}

// The float next to 1e-6 is less than it.
TEST(StlNormal, LeastSumIsOneMillionthInDoubles) {
    const float below = 1e-6F;
    const float above = std::nextafter(below, 1.0F);
    ASSERT_LT(static_cast<double>(below), 1e-6);
    expectComputed(below, 0.0F, 0.0F);
    expectComputed(0.0F, -below, 0.0F);
    expectGiven(above, 0.0F, 0.0F);
    expectGiven(0.0F, 0.0F, -above);
}

TEST(StlNormal, SumIsTakenInFloatsFromXOn) {
    expectComputed(1e8F, 1.0F, -1e8F);
    expectGiven(1e8F, -1e8F, 1.0F);
}

TEST(StlNormal, ThatIsNoNumberCountsAsGiven) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Triangle triangle = loaded(facetWithNormal(nan, 0.0F, 0.0F));
    EXPECT_TRUE(std::isnan(triangle.normal[0]));
    EXPECT_TRUE(sameBits(triangle.edge1, Point3()));
}

TEST(StlNormal, OfATriangleWithoutAreaIsZero) {
    Facet facet = facetWithNormal(0.0F, 0.0F, 0.0F);
    facet.numbers[9] = 4.0F;
    facet.numbers[10] = 0.0F;
    expectNormal(loaded(facet), Point3());
}

TEST(StlNormal, CornersHaveNoUV) {
    for (const float z : {0.0F, 1.0F})
        for (const TriangleVertex& corner : loaded(facetWithNormal(0.0F, 0.0F, z)).vertices)
            EXPECT_TRUE(sameBits(corner.uv, kNoUV));
}
