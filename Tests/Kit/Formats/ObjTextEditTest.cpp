#include <QuarnKit/Formats/Obj/Edit/ObjTextEdit.h>

#include <gtest/gtest.h>

#include "Kit/Formats/ObjRepairCases.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

const std::string kFar =
    "# survey\nv 512345.125 5403210.3333 312.75 1 0 0 # corner\r\nv 512355 5403210.25 312\n"
    "v 512345 5403215 322.5\nvt 0.25 0.1 0\nvt 1\nvn 0 -1 0\nf 1/1/1 2/2/1 3/1/1\n";
const std::string kComment = "# origin moved by quarnscreen: add (512340, 5403210, 310) to each position\n";

std::string edited(const std::string& text, const ObjOptions& options) {
    ObjSource source{.file = "a.obj", .name = "a.obj", .text = text, .frame = {}};
    editObjText(source, options);
    return source.text;
}

std::string moved(const std::string& text, const Point<double, 3>& origin) {
    return edited(text, {.origin = ObjOrigin{origin}});
}

TEST(ObjTextEdit, OriginIsSubtractedInDoublePrecision) {
    EXPECT_EQ(moved(kFar, {512340.0, 5403210.0, 310.0}),
              "# survey\nv 5.125 0.3333 2.75 1 0 0 # corner\r\nv 15 0.25 2\nv 5 5 12.5\n"
              "vt 0.25 0.1 0\nvt 1\nvn 0 -1 0\nf 1/1/1 2/2/1 3/1/1\n" +
                  kComment);
    EXPECT_EQ(moved("\xEF\xBB\xBFv 1\nv +1 2 \\\n3\n", {0.0, 0.5, 0.25}),
              "\xEF\xBB\xBFv 1 -0.5 -0.25\nv +1 1.5 2.75\n\n"
              "# origin moved by quarnscreen: add (0, 0.5, 0.25) to each position\n");
    EXPECT_EQ(moved("v 1 2 3", {1.0, 1.0, 1.0}),
              "v 0 1 2\n# origin moved by quarnscreen: add (1, 1, 1) to each position\n");
}

TEST(ObjTextEdit, WordsThatCannotBeMovedStay) {
    EXPECT_EQ(moved("v 1e999 1e37 2\nv\nv x 1,5 nan\n", {1.0, 0.0, 0.0}),
              "v 1e999 1e37 2\nv\nv x 1,5 nan\n"
              "# origin moved by quarnscreen: add (1, 0, 0) to each position\n");
}

TEST(ObjTextEdit, OriginIsFoundInTextsOfAnyProgram) {
    ObjSource source{.file = "a.obj",
                     .name = "a.obj",
                     .text = "v 1001 0 0\nv 1002 0 0\nv 1002 0 1\nf -3 -2 -1",
                     .frame = {}};
    editObjText(source, {.origin = ObjOrigin()});
    EXPECT_EQ(source.origin, (Point<double, 3>(1002.0, 0.0, 1.0)));
    EXPECT_TRUE(source.text.starts_with("v -1 0 -1\nv 0 0 -1\nv 0 0 0\nf -3 -2 -1\n# origin")) << source.text;
}

TEST(ObjTextEdit, VIsFlippedInTheText) {
    const ObjOptions options{.vDirection = VDirection::Upward};
    EXPECT_EQ(edited("v 1 2 3\nvt 0.25 0.1 0 # a\nvt 1\nvt\t0.5\t+0.75\r\nvt nan x\nvt\nvt 0 1\n", options),
              "v 1 2 3\nvt 0.25 0.9 0 # a\nvt 1 1\nvt 0.5 0.25\r\nvt nan x\nvt\nvt 0 0\n");
}

TEST(ObjTextEdit, OriginIsARoundPositionInTheMiddleOfTheFaces) {
    const Point<double, 3> expected(512350.0, 5403210.0, 320.0);
    EXPECT_EQ(findObjOrigin(kFar), expected);
    EXPECT_EQ(findObjOrigin(kFar + "v 0 0 0\nv 1e30 0 0\n"), expected);
    EXPECT_EQ(findObjOrigin("v -1 0 -1\nv 1 0 -1\nv 0 0 1\nvn 0 -1 0\nf 1//1 2//1 3//1\n"),
              (Point<double, 3>()));
    EXPECT_EQ(findObjOrigin("v 7.301 0 0\nv 7.302 0 0\nv 7.302 0 0.001\nvn 0 -1 0\nf 1//1 2//1 3//1\n")[0],
              7.302);
}

// Every position is within half a step of its float of the exact one.
TEST(ObjTextEdit, MovedPositionsAreThoseOfTheDecimalText) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const long long origin = rng.integer(-9000000, 9000000);
        std::string text;
        std::vector<long long> thousandths;
        for (int k = 0; k < 9; ++k) {
            thousandths.push_back(rng.integer(0, 20000));
            const long long number = 1000 * origin + thousandths.back();
            const long long rest = std::abs(number % 1000);
            text += (k % 3 == 0 ? "v " : " ") + std::string(number < 0 ? "-" : "") +
                    std::to_string(std::abs(number / 1000)) + "." +
                    (rest < 10    ? "00"
                     : rest < 100 ? "0"
                                  : "") +
                    std::to_string(rest) + (k % 3 == 2 ? "\n" : "");
        }
        const auto offset = static_cast<double>(origin);
        OBJScreen screen;
        const auto triangles =
            loadTriangles(screen, moved(text + "vn 0 0 1\nf 1//1 2//1 3//1\n", {offset, offset, offset}));
        ASSERT_EQ(triangles.size(), 1U);
        for (std::size_t k = 0; k < 9; ++k)
            EXPECT_NEAR(triangles[0].vertices.at(k / 3).position[k % 3],
                        static_cast<double>(thousandths[k]) / 1000.0, 1.1e-6);
        if (HasFailure()) return;
    }
}

TEST(ObjTextEdit, OriginInTheFrameOfTheScreen) {
    const Point<double, 3> origin(512340.0, 5403210.0, 310.0);
    EXPECT_EQ(originInScreen(origin, {}), origin);
    const ObjFrame frame{.forward = "-Z", .upward = "Y", .scale = 0.001F};
    EXPECT_EQ(coordinatesText(originInScreen(origin, frame)), "512.34, -0.31, 5403.21");
}

}  // namespace
}  // namespace quarn::test
