#include <gtest/gtest.h>

#include <vector>

#include "Support/Mesh/Sheets.h"
#include "Support/Mesh/TriangleScreen.h"

// The ray tracer keeps the triangles of the last load until the next one.

using namespace quarn::test;

namespace {

const Point3 kFront = onRay(-1.0);
const Point3 kBehind = onRay(9.0);

}  // namespace

TEST(StaleScene, RaysHitOldPositionsAndReadNewTriangles) {
    TriangleScreen screen(sheetsAt({0.0}));
    Mesh moved = sheetsAt({2.0});
    for (Triangle& triangle : moved) {
        for (TriangleVertex& vertex : triangle.vertices) vertex.uv = {7.0, 8.0};
        std::swap(triangle.vertices[1], triangle.vertices[2]);
        computeFields(triangle);
    }
    screen.reindex(moved);

    const IntersectionSet hits = screen.intersect(kFront, kBehind);
    ASSERT_EQ(hits.count(), 1);
    EXPECT_EQ(hits.first().point[1], 0.0);
    EXPECT_TRUE(sameBits(hits.first().uv, Point2(7.0, 8.0)));
    EXPECT_EQ(hits.first().normalSign, 1);
    EXPECT_FALSE(screen.isOnScreenSection({0.3, 0.0, 0.1}));
    EXPECT_TRUE(screen.isOnScreenSection({0.3, 2.0, 0.1}));

    screen.addScreenToScene();
    EXPECT_EQ(placesOf(screen.intersect(kFront, kBehind)), std::vector<double>{2.0});
}

TEST(StaleScene, IndexPastTheEndOfTheTrianglesEndsTheSearch) {
    TriangleScreen screen(sheetsAt({0.0, 1.0, 2.0}));
    screen.reindex(sheetsAt({0.0, 1.0}));
    EXPECT_EQ(placesOf(screen.intersect(kFront, kBehind)), (std::vector<double>{0.0, 1.0}));
    // From behind, the sheet that is gone comes first.
    EXPECT_TRUE(screen.intersect(kBehind, kFront).empty());
    screen.reindex(Mesh());
    EXPECT_TRUE(screen.intersect(kFront, kBehind).empty());
    screen.reindex({sheetsAt({0.0}).front()});
    EXPECT_LE(screen.intersect(kFront, kBehind).count(), 1);
}

TEST(StaleScene, EmptyTrianglesKeepTheOldGeometry) {
    TriangleScreen screen(sheetsAt({0.0}));
    screen.load(Mesh());
    EXPECT_TRUE(screen.intersect(kFront, kBehind).empty());
    // It shows as soon as there are triangles again.
    screen.reindex(sheetsAt({5.0}));
    EXPECT_EQ(placesOf(screen.intersect(kFront, kBehind)), std::vector<double>{0.0});
}

TEST(StaleScene, SecondLoadReplacesTheGeometry) {
    TriangleScreen screen;
    for (int load = 1; load <= 20; ++load) {
        SCOPED_TRACE(load);
        const double place = load;
        const std::vector<double> places = load % 2 == 0 ? std::vector{0.5, place} : std::vector{place};
        screen.load(sheetsAt(places));
        EXPECT_EQ(placesOf(screen.intersect(kFront, kBehind)), places);
    }
}

TEST(StaleScene, ScreenBuiltWithoutTheTracerIsHitByNothing) {
    TriangleScreen screen;
    screen.reindex(sheetsAt({0.0}));
    EXPECT_TRUE(screen.isOnScreenSection({0.3, 0.0, 0.1}));
    EXPECT_TRUE(screen.intersect(kFront, kBehind).empty());
}
