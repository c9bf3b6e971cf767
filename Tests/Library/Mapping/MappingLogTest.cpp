// What mapInto3D() logs, to the last blank.
#include <gtest/gtest.h>

#include "Library/Mapping/MappingCases.h"

using namespace quarn::test;

namespace {

constexpr const char* kTrace = "TRACE";
constexpr const char* kWarn = "WARN";

// One triangle: u is x, and v is z. Its lone plane does not continue, so positions beyond it are
// NaN.
Mesh oneTriangle() {
    return {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0})};
}

// Two triangles of the plane z = 0 over a UV of thousands, where u is 100 times x and v is y.
Mesh largeUVs() {
    Mesh mesh = {wholeTriangle({0.0, 0.0, 0.0}, {128.0, 0.0, 0.0}, {0.0, 1.0, 0.0}),
                 wholeTriangle({128.0, 1.0, 0.0}, {0.0, 1.0, 0.0}, {128.0, 0.0, 0.0})};
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& vertex : triangle.vertices)
            vertex.uv = {vertex.position[0] * 128.0, vertex.position[1]};
        computeFields(triangle);
    }
    return mesh;
}

std::vector<LogLine> linesOfQuery(const TriangleScreen& screen, const Point2& uv, bool extrapolate,
                                  const log4cxx::LevelPtr& level = log4cxx::Level::getAll()) {
    const LogCapture capture(kScreenLogger, level);
    (void)map(screen, uv, extrapolate, {7.5, -8.0, 9.25});
    for (const LogRecord& record : capture.records()) {
        EXPECT_EQ(record.logger, "Quarn.QuarnScreen.ScreenGeometry");
        EXPECT_NE(record.file.find("MeshScreenMapping"), std::string::npos);
        EXPECT_FALSE(record.function.empty());
        EXPECT_GT(record.line, 0);
    }
    return linesOf(capture);
}

using Lines = std::vector<LogLine>;

}  // namespace

TEST(MappingLog, UVOnTheMeshIsNotedAsNewThenAsFound) {
    const TriangleScreen screen(oneTriangle());
    EXPECT_EQ(linesOfQuery(screen, {0.25, 0.5}, false),
              (Lines{{kTrace, ":-( not in cache (yet)  (0.25,0.5)"}}));
    for (const bool extrapolate : {false, true})
        EXPECT_EQ(linesOfQuery(screen, {0.25, 0.5}, extrapolate),
                  (Lines{{kTrace, "good job cache! found (0.25,0.5) which maps to on screen(0.25,0,0.5)"}}));
}

TEST(MappingLog, RefusedUVIsNotedWithThreeLinesThenWithOne) {
    const TriangleScreen screen(oneTriangle());
    EXPECT_EQ(linesOfQuery(screen, {1.5, 0.125}, false),
              (Lines{{kTrace, ":-( not in cache (yet)  (1.5,0.125)"},
                     {kTrace, "out of bounds: (1.5,0.125)"},
                     {kTrace, "extrapolate is false; failed to find triangle for point: (1.5,0.125)"}}));
    EXPECT_EQ(linesOfQuery(screen, {1.5, 0.125}, false),
              (Lines{{kTrace, "good job cache! found (1.5,0.125)but non extrapolated out of bounds"}}));
}

TEST(MappingLog, ExtrapolatedUVIsNotedWithThreeLinesThenWithOne) {
    const TriangleScreen screen(largeUVs());
    EXPECT_EQ(linesOfQuery(screen, {-12800.0, 0.5}, true),
              (Lines{{kTrace, ":-( not in cache (yet)  (-12800,0.5)"},
                     {kTrace, "out of bounds: (-12800,0.5)"},
                     {kTrace, "found via extrapolate: (-12800,0.5)"}}));
    for (const bool extrapolate : {false, true})
        EXPECT_EQ(
            linesOfQuery(screen, {-12800.0, 0.5}, extrapolate),
            (Lines{{kTrace, "good job cache! found (-12800,0.5) which maps to extrapolated(-100,0.5,0)"}}));
}

TEST(MappingLog, RefusedThenExtrapolatedIsNotedAsBoth) {
    const TriangleScreen screen(oneTriangle());
    (void)map(screen, {1.5, 0.125}, false);
    EXPECT_EQ(linesOfQuery(screen, {1.5, 0.125}, true),
              (Lines{{kTrace, "good job cache! found (1.5,0.125)but non extrapolated out of bounds"},
                     {kTrace, "extrapolated out of bounds point: (1.5,0.125)"}}));
    EXPECT_EQ(linesOfQuery(screen, {1.5, 0.125}, false),
              (Lines{{kTrace, "good job cache! found (1.5,0.125) which maps to extrapolated(nan,nan,nan)"}}));
}

TEST(MappingLog, NumbersHaveSixDigitsAndNoGrouping) {
    const TriangleScreen screen(largeUVs());
    EXPECT_EQ(linesOfQuery(screen, {12345.678, 0.1234567}, false),
              (Lines{{kTrace, ":-( not in cache (yet)  (12345.7,0.123457)"}}));
    EXPECT_EQ(linesOfQuery(screen, {1234567.0, 1e-5}, false).front(),
              (LogLine{kTrace, ":-( not in cache (yet)  (1.23457e+06,1e-05)"}));
    EXPECT_EQ(linesOfQuery(screen, {123456.0, -0.0}, false).front(),
              (LogLine{kTrace, ":-( not in cache (yet)  (123456,-0)"}));
}

// Fields that changed after the indexes were built: the quadtree still goes by the old ones.
TEST(MappingLog, TriangleThatDisagreesIsWarnedOfWithItsUVs) {
    TriangleScreen screen(oneTriangle());
    Triangle& triangle = screen.mesh()[0];
    triangle.uvEdge1 = {0.25, 0.0};
    triangle.uvDeterminant = 0.25;
    triangle.uvCentroid = {0.75, 0.0625};
    triangle.vertices[1].uv = {0.25, 0.0};
    const std::string text =
        "RegionMap thought the point was in this triangle, but the triangle disagrees: "
        "(0.5,0.25)(0.75,0.0625) - <(0,0), (0.25,0), (0,1)>";
    EXPECT_EQ(linesOfQuery(screen, {0.5, 0.25}, false),
              (Lines{{kTrace, ":-( not in cache (yet)  (0.5,0.25)"},
                     {kWarn, text},
                     {kTrace, "out of bounds: (0.5,0.25)"},
                     {kTrace, "extrapolate is false; failed to find triangle for point: (0.5,0.25)"}}));
    EXPECT_EQ(linesOfQuery(screen, {0.5, 0.25}, false, log4cxx::Level::getWarn()), Lines())
        << "it is remembered as refused";
    EXPECT_EQ(linesOfQuery(screen, {0.125, 0.25}, false),
              (Lines{{kTrace, ":-( not in cache (yet)  (0.125,0.25)"}}));
}

TEST(MappingLog, TriangleWhoseDeterminantBecameZeroDisagrees) {
    TriangleScreen screen(oneTriangle());
    screen.mesh()[0].uvDeterminant = 0.0;
    const Lines lines = linesOfQuery(screen, {0.25, 0.25}, true, log4cxx::Level::getWarn());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].first, kWarn);
    const Mapped mapped = map(screen, {0.25, 0.25}, false, {1.0, 1.0, 1.0});
    EXPECT_FALSE(mapped.isAnswer);
    EXPECT_NE(mapped.point[0], mapped.point[0])
        << "the extrapolated answer of a single triangle is handed out";
}

TEST(MappingLog, NothingIsLoggedAboveTraceWithoutADisagreement) {
    const TriangleScreen screen(flatGrid({4, 3}));
    for (const Point2& uv : {Point2(0.5, 0.5), Point2(0.5, 1.5)})
        for (const bool extrapolate : {false, true, false})
            EXPECT_EQ(linesOfQuery(screen, uv, extrapolate, log4cxx::Level::getDebug()), Lines());
}

TEST(MappingLog, MappingToUVLogsNothing) {
    const TriangleScreen screen(flatGrid({4, 3}));
    const LogCapture capture(kScreenLogger);
    for (const bool extrapolate : {false, true}) {
        (void)screen.mapInto2D({0.1, 0.0, 0.1}, extrapolate);
        (void)screen.mapInto2D({0.1, 3.0, 9.0}, extrapolate);
    }
    EXPECT_TRUE(capture.records().empty());
}
