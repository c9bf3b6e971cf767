#include <gtest/gtest.h>

#include <sstream>

#include <Common/ZelmoreException.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/LogCapture.h"

// What a load that stops leaves behind.

using namespace quarn::test;
using namespace std::string_literals;

namespace {

struct FailingText {
    std::string text;
    LoadEnd end;
    int status;  ///< -1 for that of before.
    std::size_t triangles;
};

const std::string kTwo = "f 1/1/1 4/4/1 3/3/1\nf 1/1/1 3/3/1 2/2/1\n";

std::vector<FailingText> failingTexts() {
    const std::string mesh = kCorners + kUVs + kNormal;
    return {
        {kUVs + kNormal + kFace, kNoVertices, 3, 0},
        {kUVs + kFace, kNoVertices, 3, 0},
        {kCorners + kUVs + kFace, kNoNormals, 2, 0},
        {mesh + kTwo + "f 1/1/1 2/2/1 5/3/1\n", kBadVertex, 3, 2},
        {mesh + kTwo + "f 1/1/1 2/2/2 3/3/1\n", kBadNormal, 2, 2},
        {mesh + "f 1/1/1 2/2 3/3/1\n" + kTwo, kBadNormal, 2, 0},
        {mesh + "f -4/-4/-1 -3/-3/-1 -2/-2/-1\n", kBadVertex, 3, 0},
        {mesh + kTwo + "f 1/1/1 4/4/1 3/3/1 # note\n", kBadVertex, 3, 3},
        {mesh + kTwo + "f 1/1/1 9/2/9 3/3/1\n", kBadVertex, 3, 2},
        {mesh + kTwo + "f 1/1/9 9/2/1 3/3/1\n", kBadNormal, 2, 2},
        {mesh + "vt 9 9\nf 1/5/1 2/2/1 3/3/1\nf 1//9 2//1 3//1\n", kBadNormal, 2, 1},
        {kSquare + "f 1/1/1 4/4/1 3/3/1", kOutOfMemory, -1, 0},
        {kNormal + "f 1", kOutOfMemory, -1, 0},
        {kSquare + "f 1/1/1 4/4/1 3/3/1\0\n"s, kOutOfMemory, -1, 0},
    };
}

// Calls all queries that read an index. None may access a removed triangle.
void expectNothingFound(const OpenObjScreen& screen) {
    EXPECT_TRUE(screen.outline().points.empty());
    EXPECT_TRUE(screen.outline().uvPoints.empty());
    EXPECT_TRUE(screen.outline().triangles.empty());
    EXPECT_TRUE(sameBits(screen.getScreenNormal(kRayTo), Point3()));
    EXPECT_FALSE(screen.isOnScreenSection(kRayTo));
    EXPECT_THROW((void)screen.getClosestPoint(kRayTo), ZelmoreException);
    EXPECT_THROW((void)screen.getShortestDistance(kRayTo), ZelmoreException);
    EXPECT_TRUE(sameBits(screen.mapInto2D(kRayTo, false), kNoUV));
    Point3 point;
    EXPECT_FALSE(screen.mapInto3D({0.123, 0.456}, point, false));
    std::vector<std::vector<Point3>> lines;
    screen.sampleBoundary(lines);
    EXPECT_TRUE(lines.empty());
    std::vector<Point2> outline{kNoUV};
    screen.sampleBoundaryUV(outline);
    EXPECT_TRUE(outline.empty());
    const IntersectionSet beyond =
        screen.intersectExtrapolatedWithSpecifiedNormal({9.0, -1.0, 9.0}, {9.0, 0.0, 9.0}, 0);
    ASSERT_EQ(beyond.count(), 1);
    EXPECT_TRUE(sameBits(beyond.first().point, Point3()));
    EXPECT_TRUE(sameBits(screen.getPointOnMeshEdge(kRayTo), kRayTo));
}

// These may find what triangles and scene hold; they have to come back.
void askTheRest(const OpenObjScreen& screen) {
    std::vector<std::vector<Point3>> grid;
    screen.sampleGrid(grid, 4);
    (void)screen.getDefaultCalibrationPoints(3, 3);
    (void)screen.getCenterOfScreenHeading();
    (void)screen.getMaxAngleFromHeading();
    Point3 viewPoint;
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
    screen.generateGeometry(viewPoint, indices, vertices, normals);
    EXPECT_EQ(indices.size(), 3 * screen.mesh().size());
    std::vector<Triangle> copy;
    screen.getTesselation(copy);
    EXPECT_EQ(copy.size(), screen.mesh().size());
    EXPECT_EQ(screen.hasTesselation(), !copy.empty());
}

}  // namespace

TEST(ObjScreenFailure, NewScreenKeepsTextStatusAndTrianglesOfAFailedLoad) {
    for (const FailingText& failing : failingTexts()) {
        SCOPED_TRACE(failing.text);
        OpenObjScreen screen;
        EXPECT_EQ(loadInto(screen, failing.text), failing.end);
        EXPECT_EQ(screen.getStatus(), failing.status < 0 ? 5 : failing.status);
        EXPECT_EQ(screen.mesh().size(), failing.triangles);
        EXPECT_EQ(screen.getLoadedFileContents(), failing.text);
        EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::DataHash{});
        EXPECT_TRUE(screen.intersect(kRayFrom, kRayTo).empty());
        EXPECT_FALSE(screen.isValid());
        expectNothingFound(screen);
        askTheRest(screen);
    }
}

TEST(ObjScreenFailure, LoadedScreenKeepsDigestAndBoundaryFlagOfBefore) {
    for (const FailingText& failing : failingTexts()) {
        SCOPED_TRACE(failing.text);
        OpenObjScreen screen;
        ReferenceObjScreen plain;
        EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
        Point3 min;
        Point3 max;
        screen.getBounds(&min, &max);
        EXPECT_EQ(loadInto(screen, failing.text), failing.end);
        EXPECT_EQ(plain.load(failing.text), failing.end);
        EXPECT_TRUE(isLike(screen, plain));
        EXPECT_EQ(screen.getStatus(), failing.status < 0 ? 0 : failing.status);
        EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(kSquare));
        EXPECT_TRUE(screen.hasValidBoundary());
        Point3 newMin;
        Point3 newMax;
        screen.getBounds(&newMin, &newMax);
        EXPECT_EQ(newMin, min);
        EXPECT_EQ(newMax, max);
        expectNothingFound(screen);
        askTheRest(screen);

        EXPECT_EQ(loadInto(screen, squareAt('3')), plain.load(squareAt('3')));
        EXPECT_TRUE(isLike(screen, plain));
        EXPECT_TRUE(screen.isOnScreenSection({0.2, 3.0, 0.2}));
    }
}

TEST(ObjScreenFailure, FaceLineThatTheTextEndsLoadsWithALineFeed) {
    OBJScreen screen;
    const std::string text = kCorners + kUVs + kNormal + "f 1/1/1 4/4/1 3/3/1";
    EXPECT_EQ(loadInto(screen, text), kOutOfMemory);
    EXPECT_EQ(loadInto(screen, text + "\n"), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
}

TEST(ObjScreenFailure, EmptyStreamDropsTrianglesAndTextAlone) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    EXPECT_EQ(loadInto(screen, kSquare), plain.load(kSquare));
    Point3 kept;
    EXPECT_TRUE(screen.mapInto3D({0.25, 0.75}, kept, false));
    EXPECT_EQ(loadInto(screen, ""), plain.load(""));
    EXPECT_TRUE(isLike(screen, plain));
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(screen.hasParameterization());
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_FALSE(screen.hasTesselation());
    expectNothingFound(screen);
    askTheRest(screen);
    // An answer that was kept outlives every load.
    Point3 again;
    EXPECT_TRUE(screen.mapInto3D({0.25, 0.75}, again, false));
    EXPECT_TRUE(sameBits(again, kept));
}

TEST(ObjScreenFailure, EmptyStreamLeavesANewScreenUnloaded) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, ""), kLoaded);
    EXPECT_TRUE(isLike(screen, ReferenceObjScreen()));
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusNotLoaded);
}

TEST(ObjScreenFailure, StreamThatIsNoGoodCountsAsEmpty) {
    for (const std::ios::iostate flag : {std::ios::failbit, std::ios::badbit, std::ios::eofbit}) {
        OpenObjScreen screen;
        (void)loadInto(screen, kSquare);
        std::istringstream stream(kSquare);
        stream.setstate(flag);
        screen.deserialize(stream);
        EXPECT_EQ(screen.getLoadedFileContents(), "");
        EXPECT_FALSE(screen.hasTesselation());
        EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
        EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(kSquare));
    }
}

TEST(ObjScreenFailure, GridOfBeforeIsNotHandedOut) {
    OBJScreen screen;
    (void)loadInto(screen, kSquare);
    std::vector<std::vector<Point3>> grid;
    screen.sampleGrid(grid, 4);
    EXPECT_GT(grid.size(), 1U);
    (void)loadInto(screen, kNormal);
    std::vector<std::vector<Point3>> gone;
    screen.sampleGrid(gone, 4);
    for (const auto& line : gone) EXPECT_TRUE(line.empty());
}

TEST(ObjScreenFailure, IsReportedByItsErrorAloneAndNotLogged) {
    const LogCapture capture(L"Quarn.QuarnScreen.ScreenGeometry");
    for (const FailingText& failing : failingTexts()) {
        OBJScreen screen;
        EXPECT_EQ(loadInto(screen, failing.text), failing.end);
    }
    OBJScreen screen;
    EXPECT_EQ(endOf([&] { screen.deserializeFromFile(L"/no/such/file"); }), kNotOpened);
    EXPECT_TRUE(capture.records().empty());
}

TEST(ObjScreenFailure, LoadErrorsAreOfTheFamilyOfTheLibrary) {
    OBJScreen screen;
    std::istringstream stream(kNormal);
    try {
        screen.deserialize(stream);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::exception&) {
        ADD_FAILURE() << "it is no std::exception";
    } catch (const ZelmoreException& error) {
        EXPECT_EQ(error.message(), L"No vertices found in the file.");
    }
}
