#include <gtest/gtest.h>

#include <limits>

#include <Common/ZelmoreException.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/LogCapture.h"

using namespace quarn::test;

namespace {

using Layout = std::vector<std::pair<Point2, Point2>>;
using Dimensions = Point<int, 2>;

struct Generated {
    std::string text;
    std::array<unsigned char, 20> hash{};
    std::vector<LogRecord> log;
};

Generated generated(const Layout& points, const Dimensions& dimensions) {
    const LogCapture capture(L"Quarn.QuarnScreen.ScreenGeometry");
    Generated result;
    result.text = OBJScreen::generateOBJLayoutFormat(points, dimensions, result.hash).str();
    result.log = capture.records();
    EXPECT_EQ(result.hash, ScreenGeometry::calculateHash(result.text));
    return result;
}

// Points at whole numbers, UV from 0 to 1.
Layout grid(int columns, int rows) {
    Layout points;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            points.push_back({Point2(column, -row), Point2(static_cast<double>(column) / (columns - 1),
                                                           static_cast<double>(row) / (rows - 1))});
    return points;
}

std::string facesOf(const std::string& text) {
    const std::size_t start = text.find("vn 0 1 0\n");
    EXPECT_NE(start, std::string::npos);
    return text.substr(start + 9);
}

void expectRefused(const Layout& points, const Dimensions& dimensions) {
    std::array<unsigned char, 20> hash{};
    hash.fill(7);
    const auto before = hash;
    const LogCapture capture(L"Quarn.QuarnScreen.ScreenGeometry");
    try {
        (void)OBJScreen::generateOBJLayoutFormat(points, dimensions, hash);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const ZelmoreException& error) {
        EXPECT_EQ(error.message(), L"Input parameters don't match in constructor");
        EXPECT_EQ(error.file(), "Source/QuarnScreen/OBJScreen");
        EXPECT_EQ(error.line(), 402);
    }
    EXPECT_EQ(hash, before);
    EXPECT_TRUE(capture.records().empty());
}

}  // namespace

TEST(LayoutFormat, TwoByTwoGridIsOneFace) {
    const Generated result =
        generated({{{0, 0}, {0, 0}}, {{2.5, 0}, {1, 0}}, {{0, -1}, {0, 1}}, {{2.5, -1}, {1, 0.25}}}, {2, 2});
    EXPECT_EQ(result.text,
              "v 0 0 0\nv 2.5 0 0\nv 0 0 -1\nv 2.5 0 -1\n"
              "vt 0 0\nvt 1 0\nvt 0 1\nvt 1 0.25\n"
              "vn 0 1 0\n"
              "f 1/1/1 3/3/1 4/4/1 2/2/1 \n");
    EXPECT_TRUE(result.log.empty());
}

TEST(LayoutFormat, TwoByTwoGridLoadsAsTwoTriangles) {
    const Generated result = generated(grid(2, 2), {2, 2});
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, result.text), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    ASSERT_EQ(screen.mesh().size(), 2U);
    EXPECT_EQ(screen.mesh()[0].vertices[1].position, Point3(0.0, 0.0, -1.0));
    EXPECT_EQ(screen.mesh()[0].vertices[2].position, Point3(1.0, 0.0, -1.0));
    EXPECT_EQ(screen.mesh()[1].vertices[2].position, Point3(1.0, 0.0, 0.0));
    EXPECT_EQ(screen.getUniqueDataHash(), result.hash) << "known before the load";
}

TEST(LayoutFormat, PointsGoRowByRow) {
    EXPECT_EQ(facesOf(generated(grid(3, 2), {3, 2}).text),
              "f 1/1/1 4/4/1 5/5/1 2/2/1 \nf 2/2/1 5/5/1 6/6/1 3/3/1 \n");
    EXPECT_EQ(facesOf(generated(grid(2, 3), {2, 3}).text),
              "f 1/1/1 3/3/1 4/4/1 2/2/1 \nf 3/3/1 5/5/1 6/6/1 4/4/1 \n");
}

TEST(LayoutFormat, MissingCornerLosesItsFaceAndIsLoggedOnce) {
    Layout points = grid(3, 3);
    points[0].second = kNoUV;
    const Generated one = generated(points, {3, 3});
    EXPECT_NE(one.text.find("vt -999 -999\n"), std::string::npos);
    EXPECT_EQ(facesOf(one.text),
              "f 2/2/1 5/5/1 6/6/1 3/3/1 \nf 4/4/1 7/7/1 8/8/1 5/5/1 \nf 5/5/1 8/8/1 9/9/1 6/6/1 \n");
    ASSERT_EQ(one.log.size(), 1U);
    EXPECT_EQ(one.log[0].message, "Constructor appears to have been passed invalid UV points");
    EXPECT_EQ(one.log[0].level, "WARN");
    EXPECT_NE(one.log[0].file.find("OBJScreen"), std::string::npos);
    EXPECT_NE(one.log[0].function.find("generateOBJLayoutFormat"), std::string::npos);
    EXPECT_GT(one.log[0].line, 0);
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, one.text), kLoaded);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk) << "the bad UV is not referred to";

    points[8].second = kNoUV;
    const Generated two = generated(points, {3, 3});
    EXPECT_EQ(two.log.size(), 1U);
    EXPECT_EQ(facesOf(two.text), "f 2/2/1 5/5/1 6/6/1 3/3/1 \nf 4/4/1 7/7/1 8/8/1 5/5/1 \n");
}

TEST(LayoutFormat, EachCornerOfACellCounts) {
    for (std::size_t i = 0; i < 4; ++i) {
        Layout points = grid(2, 2);
        points[i].second = kNoUV;
        const Generated result = generated(points, {2, 2});
        EXPECT_EQ(facesOf(result.text), "") << i;
        EXPECT_EQ(result.log.size(), 1U);
    }
}

// The faces look at u, the warning at both.
TEST(LayoutFormat, HalfAMissingUVIsLoggedByNobody) {
    Layout points = grid(2, 2);
    points[3].second = Point2(-999.0, 0.5);
    EXPECT_EQ(facesOf(generated(points, {2, 2}).text), "");
    EXPECT_TRUE(generated(points, {2, 2}).log.empty());
    points[3].second = Point2(0.5, -999.0);
    EXPECT_EQ(facesOf(generated(points, {2, 2}).text), "f 1/1/1 3/3/1 4/4/1 2/2/1 \n");
    EXPECT_TRUE(generated(points, {2, 2}).log.empty());
    points[3].second = Point2(-999.0000000001, 0.5);
    EXPECT_NE(facesOf(generated(points, {2, 2}).text), "");
}

TEST(LayoutFormat, NumbersHaveSixDigits) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const Generated result = generated(
        {{{1234567.0, -0.0}, {1.0 / 3.0, 0.00001}}, {{kInfinity, 123456.5}, {100000.0, 1e-300}}}, {2, 1});
    EXPECT_EQ(result.text,
              "v 1.23457e+06 0 -0\nv inf 0 123456\n"
              "vt 0.333333 1e-05\nvt 100000 1e-300\n"
              "vn 0 1 0\n");
}

TEST(LayoutFormat, WithoutACellThereIsNoFace) {
    EXPECT_EQ(generated({}, {0, 0}).text, "vn 0 1 0\n");
    EXPECT_EQ(generated({}, {5, 0}).text, "vn 0 1 0\n");
    EXPECT_EQ(generated({}, {0, -3}).text, "vn 0 1 0\n");
    EXPECT_EQ(facesOf(generated(Layout(3), {3, 1}).text), "");
    EXPECT_EQ(facesOf(generated(Layout(3), {1, 3}).text), "");
    EXPECT_EQ(facesOf(generated(Layout(4), {-2, -2}).text), "");
    EXPECT_EQ(facesOf(generated(Layout(6), {-2, -3}).text), "");
}

TEST(LayoutFormat, OtherNumberOfPointsIsRefused) {
    expectRefused(grid(2, 2), {2, 3});
    expectRefused(grid(2, 2), {1, 3});
    expectRefused({}, {1, 1});
    expectRefused({{Point2(), kNoUV}}, {2, 1});
    expectRefused(grid(2, 2), {2, -2});
    // Products that are 0 or 4 in 32 bits.
    expectRefused({}, {65536, 65536});
    expectRefused(Layout(4), {1073741825, 4});
}

TEST(LayoutFormat, LargeGridLoadsWithAllItsCells) {
    const Generated result = generated(grid(60, 40), {60, 40});
    OpenObjScreen screen;
    EXPECT_EQ(loadInto(screen, result.text), kLoaded);
    EXPECT_EQ(screen.mesh().size(), 2U * 59U * 39U);
    EXPECT_EQ(screen.getStatus(), OBJScreen::StatusOk);
    EXPECT_EQ(screen.getUniqueDataHash(), result.hash);
}
