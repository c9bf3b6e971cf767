#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Meshes.h"
#include "Support/TemporaryFolder.h"

// Files that generateOBJScreenFile() writes.

using namespace quarn::test;

namespace {

using PointMap = std::map<Point3, OBJScreen::PointData>;

OBJScreen::PointData pointData(int index, const Point3& position, const Point2& uv, const Point3& normal) {
    OBJScreen::PointData point;
    point.index = index;
    point.position = position;
    point.uv = uv;
    point.normal = normal;
    return point;
}

// All corners of a mesh, numbered in the map's order.
PointMap pointsOf(const Mesh& mesh) {
    PointMap points;
    for (const Triangle& triangle : mesh)
        for (const TriangleVertex& corner : triangle.vertices)
            points[corner.position] = pointData(0, corner.position, corner.uv, corner.normal);
    int index = 0;
    for (auto& [position, point] : points) point.index = ++index;
    return points;
}

const Point3 kLeft(0.0, 0.0, 0.0);
const Point3 kTop(0.0, 0.0, 1.0);
const Point3 kRight(1.5, 0.0, 0.0);
const Mesh kTriangle = {wholeTriangle(kRight, kTop, kLeft)};

PointMap trianglePoints() {
    return {{kLeft, pointData(1, kLeft, {0, 1}, {0, -1, 0})},
            {kTop, pointData(2, kTop, {0, 0}, {0, -1, 0.125})},
            {kRight, pointData(3, kRight, {1, 1}, {0.1234567, -1, 0})}};
}

}  // namespace

TEST(ScreenFile, HasPointsInTheOrderOfTheMapAndALineForEachTriangle) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a.obj");
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(path, kTriangle, trianglePoints()));
    EXPECT_EQ(bytesOf(path),
              "v 0 0 0\nv 0 0 1\nv 1.5 0 0\n"
              "vt 0 1\nvt 0 0\nvt 1 1\n"
              "vn 0 -1 0\nvn 0 -1 0.125\nvn 0.123457 -1 0\n"
              "f 3/3/3 2/2/2 1/1/1\n");
}

TEST(ScreenFile, NumbersAndPositionsArePrintedAsTheyStand) {
    const TemporaryFolder folder;
    PointMap points = trianglePoints();
    points[kTop].index = -7;
    points[kLeft].position = Point3(1234567.0, -0.0, 1e-7);
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(folder.path("a.obj"), kTriangle, points));
    const std::string text = bytesOf(folder.path("a.obj"));
    EXPECT_EQ(text.substr(0, text.find("v 0 0 1")), "v 1.23457e+06 -0 1e-07\n");
    EXPECT_NE(text.find("f 3/3/3 -7/-7/-7 1/1/1\n"), std::string::npos);
}

TEST(ScreenFile, PointsThatNoTriangleHasAreWrittenToo) {
    const TemporaryFolder folder;
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(folder.path("a.obj"), {},
                                                 {{kTop, pointData(1, kTop, {0, 0}, {1, 0, 0})}}));
    EXPECT_EQ(bytesOf(folder.path("a.obj")), "v 0 0 1\nvt 0 0\nvn 1 0 0\n");
}

TEST(ScreenFile, WithoutPointsAndTrianglesItIsEmpty) {
    const TemporaryFolder folder;
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(folder.path("a.obj"), {}, {}));
    EXPECT_EQ(bytesOf(folder.path("a.obj")), "");
}

TEST(ScreenFile, OldContentsAreGone) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a.obj", std::string(10000, '#'));
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(path, kTriangle, trianglePoints()));
    EXPECT_EQ(bytesOf(path).substr(0, 8), "v 0 0 0\n");
    EXPECT_LT(bytesOf(path).size(), 200U);
}

TEST(ScreenFile, CornerThatIsNoPointLeavesTheFileAlone) {
    const TemporaryFolder folder;
    const std::string path = folder.write("old.obj", "old");
    for (const Point3& missing : {kLeft, kTop, kRight}) {
        PointMap points = trianglePoints();
        points.erase(missing);
        EXPECT_FALSE(OBJScreen::generateOBJScreenFile(path, kTriangle, points));
        EXPECT_FALSE(OBJScreen::generateOBJScreenFile(folder.path("new.obj"), kTriangle, points));
    }
    EXPECT_EQ(bytesOf(path), "old");
    EXPECT_FALSE(std::filesystem::exists(folder.path("new.obj")));
    EXPECT_FALSE(OBJScreen::generateOBJScreenFile(path, kTriangle, {}));
}

TEST(ScreenFile, CornersAreComparedExactly) {
    const TemporaryFolder folder;
    Mesh mesh = kTriangle;
    mesh[0].vertices[0].position[0] = std::nextafter(1.5, 2.0);
    EXPECT_FALSE(OBJScreen::generateOBJScreenFile(folder.path("a.obj"), mesh, trianglePoints()));
    mesh[0].vertices[0].position = Point3(1.5, -0.0, -0.0);
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(folder.path("a.obj"), mesh, trianglePoints()));
}

TEST(ScreenFile, ThatDoesNotOpenIsFalse) {
    const TemporaryFolder folder;
    EXPECT_FALSE(OBJScreen::generateOBJScreenFile(folder.path(""), kTriangle, trianglePoints()));
    EXPECT_FALSE(OBJScreen::generateOBJScreenFile(folder.path("no/such"), kTriangle, trianglePoints()));
    EXPECT_FALSE(OBJScreen::generateOBJScreenFile("", kTriangle, trianglePoints()));
}

TEST(ScreenFile, BytesOfThePathAreUsedAsTheyAre) {
    const TemporaryFolder folder;
    for (const char* name : {"Gr\xC3\xB6\xC3\x9F"
                             "e.obj",
                             "Gr\xF6\xDF"
                             "e.obj",
                             "\xFF"}) {
        EXPECT_TRUE(OBJScreen::generateOBJScreenFile(folder.path(name), kTriangle, trianglePoints()));
        EXPECT_EQ(bytesOf(folder.path(name)).substr(0, 8), "v 0 0 0\n");
    }
}

TEST(ScreenFile, LoadsWithTheSameFloats) {
    const TemporaryFolder folder;
    const Mesh mesh =
        gridOnSurface({8, 4}, [](double u, double v) { return Point3(4.0 * u, u * (1.0 - u), 0.5 - v); });
    const std::string path = folder.path("a.obj");
    EXPECT_TRUE(OBJScreen::generateOBJScreenFile(path, mesh, pointsOf(mesh)));
    OpenObjScreen screen;
    screen.deserializeFromFile(std::wstring(path.begin(), path.end()));
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    EXPECT_TRUE(sameTriangles(screen.mesh(), mesh));
}
