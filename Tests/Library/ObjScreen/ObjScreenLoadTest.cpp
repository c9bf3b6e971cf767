#include <gtest/gtest.h>

#include <sstream>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/LogCapture.h"

using namespace quarn::test;

namespace {

void expectStatus(const std::string& text, OBJScreen::Status status, std::size_t triangles) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, text), kLoaded) << text;
    EXPECT_EQ(screen.getStatus(), status) << text;
    EXPECT_EQ(screen.mesh().size(), triangles) << text;
}

// A screen that is never valid, and records the state when a load calls isValid().
class RefusingScreen : public OpenObjScreen {
public:
    struct Seen {
        int status;
        DataHash hash;
        std::size_t triangles;
        std::size_t outlinePoints;
        std::string text;
    };
    mutable std::vector<Seen> seen;

    [[nodiscard]] bool isValid() const override {
        seen.push_back({getStatus(), getUniqueDataHash(), mesh().size(), outline().points.size(),
                        getLoadedFileContents()});
        return false;
    }
};

}  // namespace

TEST(ObjScreenLoad, SquareIsReadyForEveryQuestion) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare), kLoaded);
    EXPECT_TRUE(screen.hasValidBoundary());
    const IntersectionSet hits = screen.intersect(kRayFrom, kRayTo);
    ASSERT_EQ(hits.count(), 1);
    EXPECT_NEAR(hits.first().uv[0], 0.7, 1e-6);
    EXPECT_NEAR(hits.first().uv[1], 0.6, 1e-6);
    EXPECT_EQ(screen.getScreenNormal(kRayTo), Point3(0.0, -1.0, 0.0));
    Point3 point;
    EXPECT_TRUE(screen.mapInto3D({0.25, 0.75}, point, false));
    EXPECT_LT(length(point - Point3(0.25, 0.0, 0.25)), 1e-12);
    const Point2 uv = screen.mapInto2D({0.25, 0.0, 0.25}, false);
    EXPECT_NEAR(uv[0], 0.25, 1e-12);
    EXPECT_NEAR(uv[1], 0.75, 1e-12);
}

TEST(ObjScreenLoad, MissingUVGoesBeforeOneOutside) {
    const std::string mesh = kCorners + kNormal + "vt 0 0\nvt 9 0\n";
    expectStatus(mesh + "f 1/1/1 2/2/1 3/2/1\n", OBJScreen::StatusUvOutOfRange, 1);
    expectStatus(mesh + "f 1/1/1 2/2/1 3//1\n", OBJScreen::StatusNoParameterization, 1);
    expectStatus(mesh + "f 1//1 2//1 3//1\nf 1/1/1 2/2/1 3/2/1\n", OBJScreen::StatusNoParameterization, 2);
}

TEST(ObjScreenLoad, WithoutUVTheCornersKeepNone) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, kCorners + kNormal + "f 1//1 4//1 3//1\n"), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusNoParameterization);
    for (const TriangleVertex& corner : screen.mesh().at(0).vertices) EXPECT_EQ(corner.uv, kNoUV);
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_EQ(screen.outline().points.size(), 4U);
    EXPECT_EQ(screen.intersect(Point3(0.2, -1.0, 0.2), Point3(0.2, 0.0, 0.2)).count(), 1);
    Point3 point;
    EXPECT_FALSE(screen.mapInto3D({0.5, 0.5}, point, true));
}

TEST(ObjScreenLoad, TextWithoutFacesHasNoOutline) {
    expectStatus(kCorners + kUVs + kNormal, OBJScreen::StatusBadBoundary, 0);
    expectStatus(kCorners + kNormal, OBJScreen::StatusNoParameterization, 0);
}

TEST(ObjScreenLoad, SecondOutlineSpoilsTheBoundary) {
    const LogCapture capture(L"Quarn.QuarnScreen.ScreenGeometry");
    const std::string apart = "v 5 0 5\nv 6 0 5\nv 6 0 6\nf 5/1/1 6/2/1 7/3/1\n";
    expectStatus(kSquare + apart, OBJScreen::StatusBadBoundary, 3);
    EXPECT_EQ(capture.records().size(), 1U);
}

// The status is that of the UVs for any boundary.
TEST(ObjScreenLoad, BadBoundaryIsReportedOnlyWhereNothingElseIsWrong) {
    const std::string apart = "v 5 0 5\nv 6 0 5\nv 6 0 6\n";
    expectStatus(kSquare + apart + "vt 2 2\nf 5/1/1 6/2/1 7/5/1\n", OBJScreen::StatusUvOutOfRange, 3);
    expectStatus(kSquare + apart + "f 5//1 6//1 7//1\n", OBJScreen::StatusNoParameterization, 3);
}

TEST(ObjScreenLoad, LinesAreJoinedBeforeAllElse) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, "v 1 2\\\n3\nvn 0 0 \\\n1\nf 1//1 1//1\\\n 1//1\n"), kLoaded);
    EXPECT_EQ(screen.getLoadedFileContents(), "v 1 2  3\nvn 0 0   1\nf 1//1 1//1   1//1\n");
    EXPECT_EQ(screen.mesh().at(0).vertices[0].position, Point3(1.0, 2.0, 3.0));
}

TEST(ObjScreenLoad, StreamIsReadWholeAndPutBack) {
    OpenObjScreen screen;
    std::istringstream stream(kSquare);
    stream.seekg(17);
    screen.deserialize(stream);
    EXPECT_EQ(screen.getLoadedFileContents(), kSquare);
    EXPECT_EQ(stream.tellg(), std::streampos(17));
}

TEST(ObjScreenLoad, SecondLoadReplacesTheFirst) {
    OpenObjScreen screen;
    ReferenceObjScreen plain;
    for (const char y : {'3', '1', '2'}) {
        EXPECT_EQ(loadInto(screen, squareAt(y)), plain.load(squareAt(y)));
        EXPECT_TRUE(isLike(screen, plain));
        EXPECT_EQ(screen.outline().points.size(), 5U);
        EXPECT_TRUE(screen.isOnScreenSection({0.2, static_cast<double>(y - '0'), 0.2}));
        EXPECT_FALSE(screen.isOnScreenSection({0.2, static_cast<double>(y - '1'), 0.2}));
    }
}

TEST(ObjScreenLoad, AxesAndScaleMoveThePositionsAlone) {
    OpenObjScreen screen(L"-X", L"Z", 2.0F);
    EXPECT_EQ(loadInto(screen, kSquare), kLoaded);
    // Side is forward x up: (-1, 0, 0) x (0, 0, 1) = (0, 1, 0).
    EXPECT_EQ(screen.mesh().at(0).vertices[0].position, Point3(0.0, 0.0, 2.0));
    EXPECT_EQ(screen.mesh().at(0).vertices[2].position, Point3(0.0, -2.0, 0.0));
    EXPECT_EQ(screen.mesh().at(0).vertices[2].uv, Point2(1.0, 1.0));
    EXPECT_EQ(screen.mesh().at(0).normal, Point3(-1.0, 0.0, 0.0));
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
}

TEST(ObjScreenLoad, AxesOfOneLetterStillLoad) {
    OpenObjScreen screen(L"Y", L"Y", 3.0F);
    EXPECT_EQ(loadInto(screen, squareAt('2')), kLoaded);
    EXPECT_EQ(screen.mesh().at(0).vertices[0].position, Point3(0.0, 9.0, 0.0));
    EXPECT_EQ(screen.mesh().at(0).normal, Point3(0.0, 0.0, 0.0));
}

TEST(ObjScreenLoad, ScreenThatRefusesItselfLosesTheTextAndKeepsAllElse) {
    RefusingScreen screen;
    const std::string text = kSquare + "v 5 0 5\nv 6 0 5\nv 6 0 6\nf 5/1/1 6/2/1 7/3/1\n";
    EXPECT_EQ(loadInto(screen, text), kLoaded);
    ASSERT_EQ(screen.seen.size(), 1U);
    EXPECT_EQ(screen.seen[0].status, OBJScreen::StatusOk) << "the boundary is checked last";
    EXPECT_EQ(screen.seen[0].hash, ScreenGeometry::calculateHash(text));
    EXPECT_EQ(screen.seen[0].triangles, 3U);
    EXPECT_EQ(screen.seen[0].text, text);
    EXPECT_EQ(screen.getLoadedFileContents(), "");
    EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(text));
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusBadBoundary);
    EXPECT_EQ(screen.intersect(kRayFrom, kRayTo).count(), 1);
}
