#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>

#include "Support/Bits.h"
#include "Support/Conversions.h"
#include "Support/SpecialArguments.h"

using namespace quarn::test;

namespace {

TriangleVertex vertexOf(const Point3& position, const Point3& normal, const Point2& uv) {
    TriangleVertex vertex;
    vertex.position = position;
    vertex.normal = normal;
    vertex.uv = uv;
    return vertex;
}

TriangleVertex randomVertex(Rng& rng, const Exponents& exponents) {
    const Point3 position = randomPoint(rng, exponents);
    const Point3 normal = randomPoint(rng, exponents);
    const double u = rng.spread(exponents.low, exponents.high);
    return vertexOf(position, normal, {u, rng.spread(exponents.low, exponents.high)});
}

void expectMidpoint(const TriangleVertex& a, const TriangleVertex& b) {
    const TriangleVertex middle = TriangleVertex::midpoint(a, b);
    reference::Vec3 sum{};
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_TRUE(sameBits(middle.position[k], (a.position[k] + b.position[k]) * 0.5));
        sum[k] = a.normal[k] + b.normal[k];
    }
    EXPECT_TRUE(sameBits(middle.normal, point(reference::normalized(sum))));
    for (std::size_t k = 0; k < 2; ++k) EXPECT_TRUE(sameBits(middle.uv[k], (a.uv[k] + b.uv[k]) * 0.5));
}

}  // namespace

TEST(TriangleVertex, MidpointIsTheMeanAndTheNormalisedSum) {
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Exponents exponents = randomExponents(rng);
        const TriangleVertex a = randomVertex(rng, exponents);
        expectMidpoint(a, randomVertex(rng, exponents));
    }
}

TEST(TriangleVertex, MidpointOfSpecialValuesIsTheDocumentedOne) {
    withSpecialArguments<8>({1.0, -2.0, 3.0, 0.5, 0.25, -1.0, 0.1, 0.7}, [](const std::array<double, 8>& x) {
        const TriangleVertex special = vertexOf({x[0], x[1], x[2]}, {x[3], x[4], x[5]}, {x[6], x[7]});
        const TriangleVertex usual = vertexOf({4.0, 5.0, 6.0}, {0.0, 0.6, 0.8}, {0.25, 0.5});
        expectMidpoint(special, usual);
        expectMidpoint(usual, special);
        expectMidpoint(special, special);
    });
}

TEST(TriangleVertex, MidpointDoesNotDependOnTheOrder) {
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleVertex a = randomVertex(rng, {-3, 3});
        const TriangleVertex b = randomVertex(rng, {-3, 3});
        const TriangleVertex ab = TriangleVertex::midpoint(a, b);
        const TriangleVertex ba = TriangleVertex::midpoint(b, a);
        EXPECT_TRUE(sameBits(ab.position, ba.position));
        EXPECT_TRUE(sameBits(ab.normal, ba.normal));
        EXPECT_TRUE(sameBits(ab.uv, ba.uv));
    }
}

TEST(TriangleVertex, MidpointOfOppositeNormalsHasANaNNormal) {
    const TriangleVertex a = vertexOf({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, {0.0, 0.0});
    const TriangleVertex b = vertexOf({2.0, 4.0, 6.0}, {0.0, 0.0, -1.0}, {1.0, 0.5});
    const TriangleVertex middle = TriangleVertex::midpoint(a, b);
    EXPECT_EQ(middle.position, Point3(1.0, 2.0, 3.0));
    EXPECT_EQ(middle.uv, Point2(0.5, 0.25));
    for (std::size_t k = 0; k < 3; ++k) EXPECT_TRUE(std::isnan(middle.normal[k]));
}

TEST(TriangleVertex, MidpointWithoutUVHasNone) {
    EXPECT_EQ(TriangleVertex::midpoint(TriangleVertex(), TriangleVertex()).uv, kNoUV);
}
