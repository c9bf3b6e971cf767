#include <gtest/gtest.h>

#include <sstream>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

std::ostringstream classicStream() {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    return out;
}

std::string written(const MeshScreen& screen) {
    std::ostringstream out = classicStream();
    OBJScreen::serialize(out, &screen);
    return out.str();
}

// What is written of the square's two triangles.
const std::string kPositions = "v 0 0 1\nv 0 0 0\nv 1 0 0\nv 0 0 1\nv 1 0 0\nv 1 0 1\n";
const std::string kNormals = "vn 0 -1 0\nvn 0 -1 0\nvn 0 -1 0\nvn 0 -1 0\nvn 0 -1 0\nvn 0 -1 0\n";
const std::string kCornerUVs = "vt 0 0\nvt 0 1\nvt 1 1\nvt 0 0\nvt 1 1\nvt 1 0\n";
const std::string kFacesWithUV = "f 1/1/1 2/2/2 3/3/3\nf 4/4/4 5/5/5 6/6/6\n";
const std::string kFacesWithout = "f 1//1 2//2 3//3\nf 4//4 5//5 6//6\n";

}  // namespace

TEST(StreamWriter, SoundScreenIsWrittenCornerByCorner) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare), kLoaded);
    EXPECT_EQ(written(screen), kPositions + kNormals + kCornerUVs + kFacesWithUV);
}

TEST(StreamWriter, ScreenWithoutUVHasNone) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kCorners + kNormal + "f 1//1 4//1 3//1 2//1 \n"), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusNoParameterization);
    EXPECT_EQ(written(screen), kPositions + kNormals + kFacesWithout);
}

TEST(StreamWriter, MissingUVDropsThoseThatExist) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kCorners + kUVs + kNormal + "f 1/1/1 4/4/1 3/3/1 2//1 \n"), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusNoParameterization);
    EXPECT_EQ(written(screen), kPositions + kNormals + kFacesWithout);
}

TEST(StreamWriter, UVOutOfRangeDropsAllThoughTheyMap) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kCorners + "vt 0 0\nvt 1.5 0\nvt 1 1\nvt 0 1\n" + kNormal + kFace), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusUvOutOfRange);
    EXPECT_TRUE(screen.hasParameterization());
    EXPECT_EQ(written(screen), kPositions + kNormals + kFacesWithout);
}

TEST(StreamWriter, BadBoundaryKeepsUVThoughItDoesNotMap) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare + kFace), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusBadBoundary) << "each edge stands twice";
    EXPECT_FALSE(screen.hasParameterization());
    EXPECT_EQ(written(screen).substr(0, kPositions.size()), kPositions);
    EXPECT_NE(written(screen).find(kCornerUVs), std::string::npos);
    EXPECT_NE(written(screen).find("f 10/10/10 11/11/11 12/12/12\n"), std::string::npos);
}

TEST(StreamWriter, FileThatDidNotOpenTakesTheUVAway) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare), kLoaded);
    EXPECT_EQ(endOf([&] { screen.deserializeFromFile(L"/no/such/file"); }), kNotOpened);
    EXPECT_EQ(written(screen), kPositions + kNormals + kFacesWithout);
}

TEST(StreamWriter, TrianglesOfAFailedLoadAreWritten) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare + "f 1/1/1 1/1/9 1/1/1\n"), kBadNormal);
    EXPECT_EQ(written(screen), kPositions + kNormals + kFacesWithout);
}

TEST(StreamWriter, EmptyScreenIsNoText) {
    const OBJScreen screen;
    EXPECT_EQ(written(screen), "");
}

TEST(StreamWriter, MeshThatIsNoObjScreenHasNoUV) {
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare), kLoaded);
    EXPECT_EQ(written(TriangleScreen(screen.mesh())), kPositions + kNormals + kFacesWithout);
}

TEST(StreamWriter, TrianglesComeThroughTheVirtualQuestion) {
    class Doubled : public OBJScreen {
    public:
        void getTesselation(std::vector<Triangle>& copy) const override {
            copy = {wholeTriangle({0, 0, 0}, {0, 3, 0}, {2, 0, 0})};
        }
    };
    const Doubled screen;
    EXPECT_EQ(written(screen),
              "v 0 0 0\nv 0 3 0\nv 2 0 0\nvn 0 0 -1\nvn 0 0 -1\nvn 0 0 -1\nf 1//1 2//2 3//3\n");
}

TEST(StreamWriter, NumbersAreThoseOfTheStream) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, "v 0.1 0 1\nv 0 0 0\nv 1 0 0\nvn 0 0 1\nf 1//1 2//1 3//1\n"), kLoaded);
    EXPECT_EQ(written(screen).substr(0, 10), "v 0.1 0 1\n");
    std::ostringstream out = classicStream();
    out.precision(17);
    OBJScreen::serialize(out, &screen);
    EXPECT_EQ(out.str().substr(0, 26), "v 0.10000000149011612 0 1\n");
    std::ostringstream scientific = classicStream();
    scientific.precision(2);
    scientific << std::scientific;
    OBJScreen::serialize(scientific, &screen);
    EXPECT_EQ(scientific.str().substr(0, 29), "v 1.00e-01 0.00e+00 1.00e+00\n");
    EXPECT_EQ(scientific.precision(), 2);
}

// Coordinates of few digits, which the reader returns bit for bit.
TEST(StreamWriter, WrittenScreenLoadsAsTheSameTriangles) {
    for (int i = 0; i < seedCount(50); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const Mesh mesh = gridOnSurface({4, 2}, [&rng](double u, double v) {
            return Point3(u * 4.0, rng.integer(-640, 640) / 64.0, rng.integer(-3, 3) - v);
        });
        OpenObjScreen screen;
        std::ostringstream text = classicStream();
        text.precision(9);
        EXPECT_EQ(loadInto(screen, objTextOf(mesh)), kLoaded);
        EXPECT_TRUE(sameTriangles(screen.mesh(), mesh));
        OBJScreen::serialize(text, &screen);
        OpenObjScreen reloaded;
        EXPECT_EQ(loadInto(reloaded, text.str()), kLoaded);
        EXPECT_TRUE(sameTriangles(reloaded.mesh(), mesh));
        EXPECT_EQ(reloaded.getStatus(), screen.getStatus());
    }
}
