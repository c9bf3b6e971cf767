#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/Sheets.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

TEST(MeshScreenRays, EndInFrontOfTheMeshDoesNotEndTheRay) {
    const TriangleScreen screen(sheetsAt({5.0}));
    const IntersectionSet hits = screen.intersect(onRay(0.0), onRay(1.0));
    ASSERT_EQ(hits.count(), 1);
    EXPECT_NEAR(hits.first().point[1], 5.0, 1e-6);
}

TEST(MeshScreenRays, HitsBehindTheStartAreNotFound) {
    const TriangleScreen screen(sheetsAt({1.0, -1.0}));
    EXPECT_EQ(placesOf(screen.intersect(onRay(0.0), onRay(1.0))), std::vector<double>{1.0});
    EXPECT_EQ(placesOf(screen.intersect(onRay(0.0), onRay(-1.0))), std::vector<double>{-1.0});
    EXPECT_TRUE(screen.intersect(onRay(2.0), onRay(3.0)).empty());
}

TEST(MeshScreenRays, TwelveLayersYieldTheNearestTen) {
    const TriangleScreen screen(sheetsAt({11.0, 9.0, 7.0, 5.0, 3.0, 1.0, 0.0, 2.0, 4.0, 6.0, 8.0, 10.0}));
    EXPECT_EQ(placesOf(screen.intersect(onRay(-1.0), onRay(0.0))),
              (std::vector<double>{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0}));
    EXPECT_EQ(placesOf(screen.intersect(onRay(12.0), onRay(0.0))),
              (std::vector<double>{11.0, 10.0, 9.0, 8.0, 7.0, 6.0, 5.0, 4.0, 3.0, 2.0}));
    EXPECT_EQ(screen.intersect(onRay(1.5), onRay(9.0)).count(), 10);
    EXPECT_EQ(screen.intersect(onRay(2.5), onRay(9.0)).count(), 9);
}

TEST(MeshScreenRays, FoldedSheetOfTwelveLayersYieldsTen) {
    const TriangleScreen screen(foldedSheet(12, 0.5, 3));
    const IntersectionSet hits = screen.intersect(onRay(-1.0), onRay(1.0));
    ASSERT_EQ(hits.count(), 10);
    for (int i = 0; i < 10; ++i) EXPECT_NEAR(hits.get(i).point[1], 0.5 * i, 1e-6);
}

TEST(MeshScreenRays, LayerCloserThanAThousandthOfTheDirectionIsPassedOver) {
    const TriangleScreen screen(sheetsAt({0.0, 0.01}));
    // The gap is 0.99 and 1.01 thousandths of the direction.
    EXPECT_EQ(screen.intersect(onRay(-1.0), onRay(-1.0 + 0.01 / 0.99e-3)).count(), 1);
    EXPECT_EQ(screen.intersect(onRay(-1.0), onRay(-1.0 + 0.01 / 1.01e-3)).count(), 2);
    EXPECT_EQ(screen.intersect(onRay(-1.0), onRay(0.0)).count(), 2);
    EXPECT_EQ(screen.intersect(onRay(-1.0), onRay(1000.0)).count(), 1);
}

// Far along a ray a thousandth is less than the distance's own rounding, and the step must be
// rounded like it.
TEST(MeshScreenRays, StepBehindAHitIsMadeInSinglePrecision) {
    const TriangleScreen screen(sheetsAt({0.0, 2.0}));
    // 100,000 lengths away neighboring numbers lie 1/128 apart: the step comes to nothing, and the
    // sheet at the same distance is found over and over.
    const IntersectionSet hits = screen.intersect(onRay(-131072.0), onRay(-131071.0));
    EXPECT_EQ(static_cast<float>(131072.0F + 0.001F), 131072.0F);
    EXPECT_GE(hits.count(), 2);
    EXPECT_LE(hits.count(), 10);
    for (const Intersection& hit : hits) EXPECT_TRUE(hit.point[1] == 0.0 || hit.point[1] == 2.0);
}

// Layers so close that their hits, each rounded on its own, may change places.
TEST(MeshScreenRays, HitsAreInTheOrderOfTheirRoundedPositions) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh;
        for (int layer = 0; layer < 30; ++layer) {
            const double y = 1.0 + layer * 1e-7;
            mesh.push_back(wholeTriangle({rng.uniform(-9.0, -3.0), y, -5.0}, {rng.uniform(3.0, 9.0), y, -5.0},
                                         {rng.uniform(-1.0, 1.0), y, rng.uniform(6.0, 9.0)}));
        }
        const TriangleScreen screen(mesh);
        const Point3 start(0.1, 0.0, 0.2);
        const IntersectionSet hits =
            screen.intersect(start, start + 1e-4 * Point3(rng.uniform(-1.0, 1.0), 1.0, 0.3));
        ASSERT_GE(hits.count(), 1);
        for (int k = 1; k < hits.count(); ++k) {
            const Point3 nearer = hits.get(k - 1).point - start;
            const Point3 farther = hits.get(k).point - start;
            EXPECT_LE(dot(nearer, nearer), dot(farther, farther));
        }
    }
}

TEST(MeshScreenRays, NormalSignIsThatOfTheDirectionAlongTheStoredNormal) {
    Mesh mesh = sheetsAt({0.0});
    const auto signOfHit = [&](double from, double to) {
        const TriangleScreen screen(mesh);
        const IntersectionSet hits = screen.intersect(onRay(from), onRay(to));
        return hits.count() == 1 ? hits.first().normalSign : -99;
    };
    EXPECT_EQ(signOfHit(-1.0, 1.0), -1);
    EXPECT_EQ(signOfHit(1.0, -1.0), 1);
    for (Triangle& triangle : mesh) triangle.normal = triangle.normal * -1e-12;
    EXPECT_EQ(signOfHit(-1.0, 1.0), 1);
    for (Triangle& triangle : mesh) triangle.normal = {1.0, 0.0, 1.0};
    EXPECT_EQ(signOfHit(-1.0, 1.0), 0);
    for (Triangle& triangle : mesh) triangle.normal = {std::nan(""), 0.0, 0.0};
    EXPECT_EQ(signOfHit(-1.0, 1.0), 0);
}

TEST(MeshScreenRays, UVOfAHitIsThatOfItsTriangle) {
    const TriangleScreen screen(flatGrid({4, 4}, {4.0, 4.0}));
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double u = rng.uniform(0.0, 1.0);
        const double v = rng.uniform(0.0, 1.0);
        const Point3 target(4.0 * u - 2.0, 0.0, 2.0 - 4.0 * v);
        const IntersectionSet hits = screen.intersect({0.0, -3.0, 0.0}, target);
        ASSERT_EQ(hits.count(), 1);
        EXPECT_TRUE(hits.first().hasUV);
        EXPECT_NEAR(hits.first().uv[0], u, 1e-6);
        EXPECT_NEAR(hits.first().uv[1], v, 1e-6);
        EXPECT_LT(length(hits.first().point - target), 1e-6);
    }
}

TEST(MeshScreenRays, HitOfAMeshWithoutUVsHasAUVThatMeansNothing) {
    Mesh mesh = sheetsAt({0.0});
    stripUV(mesh);
    TriangleScreen screen(mesh);
    screen.parameterized = false;
    const IntersectionSet hits = screen.intersect(onRay(-1.0), onRay(1.0));
    ASSERT_EQ(hits.count(), 1);
    EXPECT_TRUE(hits.first().hasUV);
    EXPECT_TRUE(sameBits(hits.first().uv, kNoUV));
}

TEST(MeshScreenRays, RayFromThePositionOfTheMeshIsNotMovedOffIt) {
    const TriangleScreen screen(sheetsAt({0.0, 3.0}));
    const IntersectionSet hits = screen.intersect(onRay(0.0), onRay(1.0));
    ASSERT_GE(hits.count(), 1);
    EXPECT_EQ(placesOf(hits).back(), 3.0);
    EXPECT_TRUE(hits.count() == 1 || placesOf(hits).front() == 0.0);
    // Along the sheet itself any answer is on it.
    for (const Intersection& hit : screen.intersect({-1.0, 0.0, 0.1}, {1.0, 0.0, 0.2}))
        EXPECT_EQ(hit.point[1], 0.0);
}

TEST(MeshScreenRays, MeshPartlyWithoutAreaIsHitWhereItHasSome) {
    Mesh mesh = sheetsAt({0.0});
    const Point3 spot = onRay(-0.5);
    mesh.push_back(wholeTriangle(spot, spot, spot));
    mesh.push_back(wholeTriangle(spot, spot + Point3(1.0, 0.0, 0.0), spot + Point3(2.0, 0.0, 0.0)));
    const TriangleScreen screen(mesh);
    const IntersectionSet hits = screen.intersect(onRay(-1.0), onRay(1.0));
    ASSERT_GE(hits.count(), 1);
    EXPECT_EQ(hits.last().point[1], 0.0);
}
