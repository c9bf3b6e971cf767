#include <gtest/gtest.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Sheets.h"

// The ray tracer keeps the triangles of the last load that gave some.

using namespace quarn::test;

namespace {

std::vector<double> placesHit(const OBJScreen& screen) {
    return placesOf(screen.intersect(kRayFrom, kRayTo));
}

// Two triangles at y = 5, then a face without a vertex.
const std::string kTwoThenBad = squareAt('5') + "f 9/1/1 1/1/1 1/1/1\n";

}  // namespace

TEST(ObjScreenStaleScene, FailedLoadHitsTheOldPlaces) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, squareAt('2')), kLoaded);
    EXPECT_EQ(loadInto(screen, kTwoThenBad), kBadVertex);
    EXPECT_EQ(screen.mesh().size(), 2U);
    EXPECT_EQ(placesHit(screen), std::vector<double>{2.0});
}

TEST(ObjScreenStaleScene, HitOnATriangleThatWentIsNone) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, squareAt('2')), kLoaded);
    EXPECT_EQ(loadInto(screen, kCorners + kUVs + kNormal + "f 1/1/1 4/4/1 3/3/1\nf 9/1/1 1/1/1 1/1/1\n"),
              kBadVertex);
    EXPECT_EQ(screen.mesh().size(), 1U);
    // The ray goes through the lower right triangle, the first one; the upper left is gone.
    const std::vector<double> lower = placesOf(screen.intersect({0.4, -1.0, 0.2}, {0.4, 0.0, 0.2}));
    const std::vector<double> upper = placesOf(screen.intersect({0.8, -1.0, 0.6}, {0.8, 0.0, 0.6}));
    EXPECT_EQ(lower, std::vector<double>{2.0});
    EXPECT_TRUE(upper.empty());
}

TEST(ObjScreenStaleScene, LoadWithoutTrianglesLeavesTheSceneForTheNextOne) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, squareAt('2')), kLoaded);
    EXPECT_EQ(loadInto(screen, kCorners + kUVs + kNormal), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusBadBoundary);
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(placesHit(screen).empty());
    EXPECT_EQ(loadInto(screen, ""), kLoaded);
    EXPECT_TRUE(placesHit(screen).empty());
    // With triangles that never reached the tracer, the old places show again.
    EXPECT_EQ(loadInto(screen, kTwoThenBad), kBadVertex);
    EXPECT_EQ(placesHit(screen), std::vector<double>{2.0});
    EXPECT_EQ(loadInto(screen, squareAt('4')), kLoaded);
    EXPECT_EQ(placesHit(screen), std::vector<double>{4.0});
}

TEST(ObjScreenStaleScene, UnclosedFaceLineLeavesNoTriangleToHit) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, squareAt('2')), kLoaded);
    EXPECT_EQ(loadInto(screen, squareAt('3') + "f 1"), kOutOfMemory);
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_TRUE(placesHit(screen).empty());
}
