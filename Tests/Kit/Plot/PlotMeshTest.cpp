#include <QuarnKit/Plot/Mesh/PlotMesh.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include <QuarnScreen/FlatScreen.h>

#include <QuarnKit/Plot/Mesh/PlotMeshData.h>
#include <QuarnKit/Plot/Mesh/PlotMeshEye.h>
#include <QuarnKit/Plot/Mesh/PlotMeshViews.h>
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

std::string pageOf(const Mesh& mesh, PlotColor color = PlotColor::Side) {
    return plotMeshPage(TriangleScreen(mesh), "mesh.obj", "m", color);
}

// How many areas of a view have a class that begins so.
std::ptrdiff_t areaCount(const Mesh& mesh, const Camera& camera, const std::string& beginning) {
    const PlotMeshData data = buildPlotMeshData(TriangleScreen(mesh));
    const std::vector<Shape> shapes = meshView(data, camera).shapes;
    return std::count_if(shapes.begin(), shapes.end(), [&](const Shape& shape) {
        return shape.isArea && shape.styleClass.rfind(beginning, 0) == 0;
    });
}

TEST(PlotMesh, ViewerSeesTheFrontOfAWallAndTheBackOfADome) {
    EXPECT_EQ(areaCount(flatGrid({6, 4}), Camera::front(), kFrontClass), 48);
    EXPECT_EQ(areaCount(flatGrid({6, 4}), Camera::front(), kBackClass), 0);
    EXPECT_EQ(areaCount(flatGrid({6, 4}), Camera::plan(), ""), 0) << "seen from its edge";
    EXPECT_EQ(areaCount(dome({24, 8}, kHalfSphere), Camera::plan(), kFrontClass), 0);
    EXPECT_GT(areaCount(dome({24, 8}, kHalfSphere), Camera::plan(), kBackClass), 200);
}

TEST(PlotMesh, FlippedTrianglesHaveTheirOwnColor) {
    Mesh mesh = flatGrid({6, 4});
    for (const std::size_t i : {3, 17, 30}) std::swap(mesh[i].vertices[1], mesh[i].vertices[2]);
    EXPECT_EQ(areaCount(mesh, Camera::front(), kFlippedClass), 3);
    EXPECT_THAT(pageOf(mesh), HasSubstr("flipped: 3<"));
    EXPECT_THAT(pageOf(mesh), HasSubstr("fill:url(#flipped-hatch)"));
    EXPECT_THAT(pageOf(flatGrid({6, 4})), Not(HasSubstr("flipped: ")));
}

TEST(PlotMesh, LargeMeshIsDrawnInFewAreasAndShowsASingleFlippedTriangle) {
    Mesh mesh = flatGrid({100, 60});
    std::swap(mesh[7777].vertices[1], mesh[7777].vertices[2]);
    EXPECT_LT(areaCount(mesh, Camera::front(), ""), 30);
    EXPECT_EQ(areaCount(mesh, Camera::front(), std::string(kFlippedClass) + kDotSuffix), 1);
}

TEST(PlotMesh, RoughSurfacesStaySmall) {
    Mesh mesh = wave({120, 120}, 0.3);
    for (std::size_t i = 0; i < mesh.size(); ++i)
        for (TriangleVertex& corner : mesh[i].vertices)
            corner.position[1] += 0.05 * static_cast<double>(i % 7);
    for (const PlotColor color : {PlotColor::Side, PlotColor::Stretch})
        EXPECT_LT(pageOf(mesh, color).size(), 1500000U);
}

TEST(PlotMesh, HolesAreCountedAndDrawn) {
    EXPECT_THAT(pageOf(gridWithHoles({9, 3}, 2)), AllOf(HasSubstr("holes: 2<"), HasSubstr("class=\"hole\"")));
    EXPECT_THAT(pageOf(flatGrid({9, 3})), Not(HasSubstr("holes: ")));
}

TEST(PlotMesh, HiddenLinesAreLeftOutOrPale) {
    const PlotMeshData data = buildPlotMeshData(TriangleScreen(dome({24, 8}, kHalfSphere)));
    const std::vector<Shape> shapes = meshView(data, Camera::perspective(0.0)).shapes;
    const auto has = [&](const std::string& styleClass) {
        return std::any_of(shapes.begin(), shapes.end(),
                           [&](const Shape& shape) { return shape.styleClass == styleClass; });
    };
    EXPECT_TRUE(has(kBoundaryClass));
    EXPECT_TRUE(has(std::string(kBoundaryClass) + kHiddenSuffix));
    EXPECT_TRUE(has(kGridClass));
    EXPECT_FALSE(has(std::string(kGridClass) + kHiddenSuffix));
}

TEST(PlotMesh, LegendListsOnlyWhatThePageShows) {
    const std::string page = pageOf(dome({24, 8}, kHalfSphere));
    EXPECT_THAT(page, AllOf(HasSubstr("one component,  no defects<"), HasSubstr(">front: "),
                            HasSubstr(">back<"), HasSubstr("boundary; pale: hidden")));
    for (const char* absent : {"flipped: ", "bad UV: ", "overlap: ", "holes: ", "none<"})
        EXPECT_THAT(page, Not(HasSubstr(absent)));
    // A wall that no view sees from behind.
    EXPECT_THAT(pageOf(flatGrid({6, 4})), AllOf(HasSubstr(">front: "), Not(HasSubstr(">back<"))));
}

TEST(PlotMesh, EyePointSeesTheFrontOfADomeAsAFisheyePicture) {
    const Mesh mesh = dome({24, 8}, kHalfSphere);
    const TriangleScreen screen(mesh);
    const EyeView view = eyeViewOf(screen, buildPlotMeshData(screen));
    EXPECT_EQ(view.place, EyePlace::EyePoint);
    EXPECT_EQ(view.camera.projection(), Projection::Fisheye);
    EXPECT_NEAR(view.maxAngle, std::numbers::pi / 2, 1e-6);
    EXPECT_GT(areaCount(mesh, view.camera, kFrontClass), 200);
    EXPECT_EQ(areaCount(mesh, view.camera, kBackClass), 0);
    EXPECT_THAT(pageOf(mesh), AllOf(HasSubstr("From the eye point: fisheye"), HasSubstr("180° across")));
}

TEST(PlotMesh, MeshThroughItsEyePointIsSeenFromTheFront) {
    const TriangleScreen screen(flatGrid({6, 4}));
    const EyeView view = eyeViewOf(screen, buildPlotMeshData(screen));
    EXPECT_EQ(view.place, EyePlace::BeforeScreen);
    EXPECT_EQ(view.camera.projection(), Projection::Perspective);
    EXPECT_LT(view.camera.position()[1], -1.0);
    EXPECT_EQ(areaCount(flatGrid({6, 4}), view.camera, kFrontClass), 48);
    EXPECT_THAT(pageOf(flatGrid({6, 4})), HasSubstr("; the mesh passes through its eye point"));
}

// Each of the faces covers the whole UV square, as in a file whose program wrote the same four UVs
// for each face.
TEST(PlotMesh, FacesThatCoverTheWholeUvSquareTakeNoLongerThanOthers) {
    Mesh mesh = flatGrid({200, 100});
    for (std::size_t i = 0; i < mesh.size(); ++i) {
        auto& [a, b, c] = mesh[i].vertices;
        a.uv = {0.0, 0.0};
        b.uv = i % 2 == 0 ? Point<double, 2>(0.0, 1.0) : Point<double, 2>(1.0, 1.0);
        c.uv = i % 2 == 0 ? Point<double, 2>(1.0, 1.0) : Point<double, 2>(1.0, 0.0);
    }
    std::vector<TriangleCorners> layers;
    for (const Triangle& triangle : mesh) {
        const TriangleUVs uvs = uvsOf(triangle);
        TriangleCorners corners;
        for (std::size_t k = 0; k < 3; ++k) corners.at(k) = {uvs.at(k)[0], -uvs.at(k)[1], 0.0};
        layers.push_back(corners);
    }
    const PlotRaster raster(layers, Camera::plan(), kPlotCells);
    EXPECT_EQ(raster.leftOutCount(), 0U);
    for (int row = 0; row < raster.rows(); ++row)
        for (int column = 0; column < raster.columns(); ++column) ASSERT_TRUE(raster.triangleAt(column, row));
}

TEST(PlotMesh, ViewStatesWhatALimitOfTimeLeavesOut) {
    // No tile along the long side is ever covered, so that each triangle visits these tiles.
    const std::vector<TriangleCorners> layers(
        30000,
        {Point<double, 3>(0.0, 0.0, 0.0), Point<double, 3>(1.0, 0.0, 0.0), Point<double, 3>(0.0, 0.0, 1.0)});
    const PlotRaster raster(layers, Camera::front(), kPlotCells);
    EXPECT_GT(raster.leftOutCount(), 0U);
    EXPECT_EQ(leftOutText(raster),
              "too many overlaps: " + std::to_string(raster.leftOutCount()) + " triangles left out");
    EXPECT_EQ(leftOutText(PlotRaster({layers.front()}, Camera::front(), kPlotCells)), "");
}

TEST(PlotMesh, EdgesInUvAreDrawnOnlyIfTheyAreFarApart) {
    EXPECT_THAT(pageOf(flatGrid({6, 4})), HasSubstr("class=\"uv\""));
    for (const GridSize& size : {GridSize{32, 16}, GridSize{40, 20}, GridSize{60, 60}})
        EXPECT_THAT(pageOf(flatGrid(size)),
                    AllOf(HasSubstr("class=\"uv-fill\""), Not(HasSubstr("class=\"uv\""))));
}

TEST(PlotMesh, MeshWithoutUvSaysSo) {
    Mesh mesh = flatGrid({4, 3});
    stripUV(mesh);
    EXPECT_THAT(pageOf(mesh), AllOf(HasSubstr("the mesh has no UV"), Not(HasSubstr("bad UV:"))));
    EXPECT_THAT(pageOf(mesh, PlotColor::Stretch), HasSubstr("class=\"none\""));
}

TEST(PlotMesh, StretchHasAScaleInPlaceOfSides) {
    const std::string page = pageOf(flatGrid({4, 3}), PlotColor::Stretch);
    EXPECT_THAT(page, AllOf(HasSubstr("mean: 12 m²"), HasSubstr("class=\"k8\""), Not(HasSubstr(">front:"))));
}

TEST(PlotMesh, OrderOfTrianglesDecidesNothingThatIsSeen) {
    Mesh mesh = dome({24, 8});
    const std::string page = pageOf(mesh);
    EXPECT_EQ(pageOf(mesh), page);
    const auto before = areaCount(mesh, Camera::perspective(0.0), kFrontClass);
    shuffle(mesh, 3);
    EXPECT_EQ(areaCount(mesh, Camera::perspective(0.0), kFrontClass), before);
}

TEST(PlotMesh, ScreenWithoutTrianglesSaysSo) {
    EXPECT_THAT(plotMeshPage(FlatScreen(4.0, 3.0), "a.obj", "m"),
                AllOf(HasSubstr("not drawable"), HasSubstr("Mesh of 0 triangles")));
}

}  // namespace
}  // namespace quarn::test
