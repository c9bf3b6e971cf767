// What a ruled screen logs.
#include <gtest/gtest.h>

#include <functional>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/LogCapture.h"

using namespace quarn::test;

namespace {

constexpr const wchar_t* kLogger = L"Quarn.QuarnScreen.ScreenGeometry";
constexpr const char* kLargeArc =
    "getScreenNormal for ruled surface screen might not work if the angle of curvature is more that 180 "
    "degrees";

std::vector<std::string> linesOf(const std::function<void()>& query,
                                 const log4cxx::LevelPtr& level = log4cxx::Level::getAll()) {
    const LogCapture log(kLogger, level);
    query();
    std::vector<std::string> lines;
    for (const LogRecord& record : log.records()) {
        EXPECT_EQ(record.level, "WARN");
        EXPECT_EQ(record.logger, "Quarn.QuarnScreen.ScreenGeometry");
        lines.push_back(record.message);
    }
    return lines;
}

std::vector<std::string> largeArcLines(std::size_t count) {
    return std::vector<std::string>(count, kLargeArc);
}

const OpenRuledScreen& quarters() {
    static const OpenRuledScreen screen(kQuarters);
    return screen;
}

// Half a circle at the top, and a quarter at the bottom.
const OpenRuledScreen& halfCircle() {
    static const OpenRuledScreen screen(2.0, 2.0, -std::numbers::pi / 2, std::numbers::pi / 2,
                                        -std::numbers::pi / 4, std::numbers::pi / 4);
    return screen;
}

const Point3 kFront(0, -5, 0);
const Point3 kBack(0, 5, 0);

}  // namespace

TEST(RuledScreenLog, NormalOnTheSurfaceOfASmallArcLogsNothing) {
    EXPECT_TRUE(linesOf([] { (void)quarters().getScreenNormal(Point3(0, kApexOfQuarters, 0)); }).empty());
    EXPECT_TRUE(linesOf([] { (void)quarters().intersect(kFront, kBack); }).empty());
}

TEST(RuledScreenLog, NormalOffTheSurfaceNamesThePosition) {
    EXPECT_EQ(linesOf([] { (void)quarters().getScreenNormal(Point3(1.5, -20.25, 3)); }),
              std::vector<std::string>{
                  "couldn't find solution for getScreenNormal at : 1.500000 -20.250000 3.000000"});
    EXPECT_EQ(linesOf([] { (void)quarters().getScreenNormal(Point3(50.0000007, -0.0, 1e20)); }),
              std::vector<std::string>{"couldn't find solution for getScreenNormal at : 50.000001 -0.000000 "
                                       "100000000000000000000.000000"});
}

TEST(RuledScreenLog, NormalAtNoNumberNamesItToo) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(linesOf([&] { (void)quarters().getScreenNormal(Point3(nan, infinity, -infinity)); }),
              std::vector<std::string>{"couldn't find solution for getScreenNormal at : nan inf -inf"});
}

TEST(RuledScreenLog, LongestNumbersAreWrittenInFull) {
    const double greatest = std::numeric_limits<double>::max();
    const auto lines =
        linesOf([&] { (void)quarters().getScreenNormal(Point3(-greatest, -greatest, -greatest)); });
    ASSERT_EQ(lines.size(), 1U);
    // A sign, 309 digits, a point and 6 decimals, three times.
    const std::string head = "couldn't find solution for getScreenNormal at : ";
    EXPECT_EQ(lines[0].size(), head.size() + 3 * 317 + 2);
    EXPECT_EQ(lines[0].substr(0, head.size() + 8), head + "-1797693");
}

TEST(RuledScreenLog, LargeArcIsLoggedOnEveryNormal) {
    Point3 apex;
    halfCircle().mapInto3D(Point2(0.5, 0.5), apex, true);
    EXPECT_EQ(linesOf([&] {
                  EXPECT_NE(halfCircle().getScreenNormal(apex), Point3(0, 0, 0));
                  EXPECT_NE(halfCircle().getScreenNormal(apex), Point3(0, 0, 0));
              }),
              largeArcLines(2));
}

TEST(RuledScreenLog, LargeArcComesBeforeTheMissingSolution) {
    EXPECT_EQ(linesOf([] { (void)halfCircle().getScreenNormal(Point3(0, -9, 0)); }),
              (std::vector<std::string>{
                  kLargeArc, "couldn't find solution for getScreenNormal at : 0.000000 -9.000000 0.000000"}));
}

TEST(RuledScreenLog, QueriesLogOnceForEachNormalThatTheyTake) {
    Point3 apex;
    halfCircle().mapInto3D(Point2(0.5, 0.5), apex, true);
    EXPECT_EQ(linesOf([] { (void)halfCircle().intersect(kFront, kBack); }), largeArcLines(1));
    EXPECT_EQ(linesOf([] { (void)halfCircle().intersectExtrapolatedWithSpecifiedNormal(kFront, kBack, 0); }),
              largeArcLines(1));
    EXPECT_EQ(linesOf([&] { (void)halfCircle().mapInto2D(apex, false); }), largeArcLines(1));
    EXPECT_EQ(linesOf([&] { EXPECT_TRUE(halfCircle().isOnScreenSection(apex)); }), largeArcLines(2));
    Point3 point;
    EXPECT_EQ(linesOf([&] { EXPECT_TRUE(halfCircle().mapInto3D(Point2(0.5, 0.5), point, false)); }),
              largeArcLines(2));
    EXPECT_TRUE(linesOf([&] { halfCircle().mapInto3D(Point2(0.5, 0.5), point, true); }).empty());
    // One for the UV and two for the position of it.
    EXPECT_EQ(linesOf([&] { (void)halfCircle().getClosestPoint(apex); }), largeArcLines(3));
    EXPECT_TRUE(linesOf([] { (void)halfCircle().intersect(kBack, kFront); }).empty()) << "no hit, no normal";
}

TEST(RuledScreenLog, HitBeyondTheScreenHasNoNormalAndSaysSo) {
    // Outside of u in [0, 1] the search for the normal finds no ruling, and the hit has no side.
    const Point3 from(1.3, -5, 0);
    const Point3 to(1.3, 5, 0);
    IntersectionSet hits;
    const auto lines =
        linesOf([&] { hits = quarters().intersectExtrapolatedWithSpecifiedNormal(from, to, 0); });
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].substr(0, 48), "couldn't find solution for getScreenNormal at : ");
    ASSERT_EQ(hits.count(), 1);
    EXPECT_EQ(hits.first().normalSign, 0);
}

TEST(RuledScreenLog, NothingIsLoggedBelowTheLevel) {
    const auto query = [] { (void)halfCircle().getScreenNormal(Point3(0, -9, 0)); };
    EXPECT_TRUE(linesOf(query, log4cxx::Level::getOff()).empty());
    EXPECT_TRUE(linesOf(query, log4cxx::Level::getError()).empty());
    EXPECT_EQ(linesOf(query, log4cxx::Level::getWarn()).size(), 2U);
}
