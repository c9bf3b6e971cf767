#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "Kit/Check/CheckCases.h"

using namespace quarn;
using namespace quarn::test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

template <class MapUV>
Mesh withUV(Mesh mesh, MapUV map) {
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& corner : triangle.vertices) corner.uv = map(corner.uv);
        computeFields(triangle);
    }
    return mesh;
}

Point<double, 2> flippedU(const Point<double, 2>& uv) {
    return {1.0 - uv[0], uv[1]};
}

// As on a picture of the sky: azimuths go round the middle, where the zenith is.
Mesh skyDome(bool isMirrored) {
    return withUV(dome({48, 12}, {6.0, -3.141592653589793, 3.141592653589793, 0.0, 1.5}),
                  [&](const Point<double, 2>& uv) {
                      const double azimuth = (uv[0] - 0.5) * 6.283185307179586;
                      const double radius = 0.1 + 0.4 * uv[1];
                      // Seen from below with +X to the right, +Y is at the bottom.
                      const double v = radius * std::cos(azimuth);
                      return Point<double, 2>(0.5 + radius * std::sin(azimuth),
                                              isMirrored ? 0.5 - v : 0.5 + v);
                  });
}

}  // namespace

TEST(UvCheck, MissingUVsAreFoundAndNothingElseOfThem) {
    Mesh mesh = flatGrid({3, 3});
    mesh[3].vertices[2].uv = kNoUV;
    mesh[9].vertices[0].uv = kNoUV;
    computeFields(mesh);
    const auto findings = check(mesh);
    ASSERT_THAT(namesOf(findings), ElementsAre("missing-uv"));
    EXPECT_THAT(trianglesOf(findings[0]), ElementsAre(4, 10));
    stripUV(mesh);
    ASSERT_THAT(namesOf(check(mesh)), ElementsAre("missing-uv"));
    EXPECT_EQ(check(mesh)[0].count, 18U);
}

TEST(UvCheck, AFormatWithoutUVsMissesThemToo) {
    const Mesh mesh = flatGrid({3, 3});
    const std::vector<std::uint64_t> lines;
    const CheckedMesh checked = {.objData = {}, .triangles = mesh, .lines = lines, .canHaveUV = false};
    const auto findings = checkMesh(checked, "m");
    ASSERT_THAT(namesOf(findings), ElementsAre("missing-uv"));
    EXPECT_EQ(findings[0].severity, Severity::Problem);
    EXPECT_EQ(findings[0].count, 18U);
}

TEST(UvCheck, AMeshThatNeedsNoUVHasNoFindingsOfThem) {
    Mesh mesh = flatGrid({3, 3});
    stripUV(mesh);
    const std::vector<std::uint64_t> lines;
    EXPECT_TRUE(checkMesh({.objData = {}, .triangles = mesh, .lines = lines}, "m", UvChecks::None).empty());
}

TEST(UvCheck, UVsOutsideOfTheUnitSquareAreFound) {
    for (const Point<double, 2>& shift : {Point<double, 2>(0.5, 0.0), Point<double, 2>(0.0, -0.5)}) {
        const Mesh mesh = withUV(flatGrid({4, 4}), [&](const Point<double, 2>& uv) { return uv + shift; });
        const auto findings = check(mesh);
        ASSERT_THAT(namesOf(findings), ElementsAre("uv-outside"));
        EXPECT_EQ(findings[0].count, 16U);
    }
}

TEST(UvCheck, TrianglesWithoutAreaInUvAreFound) {
    Mesh mesh = flatGrid({1, 1});
    mesh[1].vertices[2].uv = (mesh[1].vertices[0].uv + mesh[1].vertices[1].uv) * 0.5;
    computeFields(mesh);
    const Finding finding = findingNamed("degenerate-uv", check(mesh));
    EXPECT_EQ(finding.count, 1U);
    EXPECT_THAT(trianglesOf(finding), ElementsAre(2));
}

TEST(UvCheck, FoldedMapIsMirroredInItsSmallerPart) {
    // u runs from 0 to 1 over the first two thirds of the wall, and back over the last one.
    const Mesh mesh = withUV(flatGrid({9, 2}), [](const Point<double, 2>& uv) {
        const double u = 1.5 * uv[0];
        return Point<double, 2>(u <= 1.0 + 1e-9 ? u : 2.0 - u, uv[1]);
    });
    const auto findings = check(mesh);
    EXPECT_THAT(namesOf(findings), ElementsAre("mirrored-uv", "overlapping-uv"));
    EXPECT_EQ(findings[0].count, 12U);
    EXPECT_EQ(findings[0].places[0].triangle, 13U);
    EXPECT_EQ(findings[1].count, 24U);
}

TEST(UvCheck, FlippedTriangleIsNotMirrored) {
    Mesh mesh = flatGrid({3, 3});
    flipWinding(mesh[4]);
    EXPECT_THAT(namesOf(check(mesh)), Not(Contains("mirrored-uv")));
}

TEST(UvCheck, MapThatIsMirroredForTheViewerIsFound) {
    for (const Mesh& mesh : {flatGrid({3, 3}), cylinderSection({20, 4}), dome({20, 9}),
                             cylinderSection({40, 4}, 5.0, 3.0, 6.0)}) {
        EXPECT_THAT(namesOf(check(mesh)), IsEmpty());
        EXPECT_THAT(namesOf(check(withUV(mesh, flippedU))), ElementsAre("mirrored-map"));
        Mesh turned = withUV(mesh, flippedU);
        for (Triangle& triangle : turned) flipWinding(triangle);
        EXPECT_THAT(namesOf(check(turned)), ElementsAre("mirrored-map"));
        EXPECT_THAT(namesOf(check(withUV(
                        withUV(mesh, flippedU),
                        [](const Point<double, 2>& uv) { return Point<double, 2>(uv[0], 1.0 - uv[1]); }))),
                    IsEmpty());
    }
}

TEST(UvCheck, PictureOfTheSkyIsSeenFromBelow) {
    EXPECT_THAT(namesOf(check(skyDome(false))), Not(Contains("mirrored-map")));
    EXPECT_THAT(namesOf(check(skyDome(true))), Contains("mirrored-map"));
}

TEST(UvCheck, MapThatTheFrontSeesRightIsNotMirroredBehindTheOrigin) {
    Mesh mesh = flatGrid({3, 3});
    for (Triangle& triangle : mesh)
        for (TriangleVertex& corner : triangle.vertices) corner.position[1] = -3.0;
    computeFields(mesh);
    EXPECT_THAT(namesOf(check(mesh)), IsEmpty());
}

TEST(UvCheck, LayersOverEachOtherOverlap) {
    Mesh mesh = flatGrid({6, 5});
    foldUV(mesh);
    const Finding finding = findingNamed("overlapping-uv", check(mesh));
    EXPECT_EQ(finding.count, 60U);
    EXPECT_TRUE(finding.isCountExact);
}

TEST(UvCheck, VeryManyOverlapsAreCountedUpToALimit) {
    Rng rng(0);
    Mesh mesh = soup(rng, 20000);
    const auto findings = check(mesh);
    EXPECT_THAT(namesOf(findings), Contains("uv-index-too-large"));
    const Finding overlapping = findingNamed("overlapping-uv", findings);
    EXPECT_GT(overlapping.count, 10000U);
    if (!overlapping.isCountExact) {
        EXPECT_THAT(overlapping.text, HasSubstr("at least"));
    }
}
