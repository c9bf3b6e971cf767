// What the estimate of the aspect ratio logs.
#include <gtest/gtest.h>

#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/ScreenUtils.h>
#include <log4cxx/logmanager.h>

#include <limits>

#include "Support/LogCapture.h"
#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

constexpr const wchar_t* kLogger = L"Quarn.QuarnControl.ScreenUtils";
constexpr const char* kFailed =
    "calculateAspectRatio failed; using aspect ratio of 1:1 - you probably have a bad UV map!";

std::string estimated(const std::string& ratio) {
    return "calculateAspectRatio estimated width/height of screen at " + ratio +
           ". This doesn't have to be exact, 50-200% of the true value is fine.";
}

// A screen of a given width, and a height of 1.
ScriptedScreen screenOf(double width) {
    ScriptedScreen screen;
    screen.onMapInto3D = [width](const Point2& uv, Point3& point, bool) {
        point = Point3(width * uv[0], 0.0, uv[1]);
        return true;
    };
    return screen;
}

std::vector<LogRecord> recordsOf(IScreenGeometry& screen,
                                 const log4cxx::LevelPtr& level = log4cxx::Level::getAll()) {
    const LogCapture log(kLogger, level);
    (void)ScreenUtils::estimateAspectRatioUV(screen);
    return log.records();
}

}  // namespace

// Nothing looks the logger up by name before this, so it was made before main.
TEST(AspectRatioLog, LoggerExistsBeforeAnyCall) {
    EXPECT_NE(log4cxx::LogManager::exists(std::wstring(kLogger)), nullptr);
}

TEST(AspectRatioLog, EstimateIsLoggedWithSixDigitsAndAPoint) {
    FlatScreen screen(4.0, 3.0);
    const std::vector<LogRecord> records = recordsOf(screen);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].level, "INFO");
    EXPECT_EQ(records[0].logger, "Quarn.QuarnControl.ScreenUtils");
    EXPECT_EQ(records[0].message, estimated("1.33333"));
    EXPECT_NE(records[0].function.find("estimateAspectRatioUV"), std::string::npos);
    EXPECT_NE(records[0].file.find("ScreenUtils"), std::string::npos);
    EXPECT_GT(records[0].line, 0);
}

TEST(AspectRatioLog, RatiosAreWrittenAsAStreamDoes) {
    for (const auto& [width, text] :
         {std::pair(2.0, "2"), std::pair(1e7, "1e+07"), std::pair(123456.7, "123457"),
          std::pair(1234567.0, "1.23457e+06"), std::pair(2.5e-5, "2.5e-05"), std::pair(0.5, "0.5")}) {
        ScriptedScreen screen = screenOf(width);
        const std::vector<LogRecord> records = recordsOf(screen);
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records[0].message, estimated(text));
    }
}

TEST(AspectRatioLog, RatioThatIsNoNumberIsLoggedToo) {
    ScriptedScreen screen = screenOf(std::numeric_limits<double>::quiet_NaN());
    const std::vector<LogRecord> records = recordsOf(screen);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_TRUE(records[0].message == estimated("nan") || records[0].message == estimated("-nan"));
}

TEST(AspectRatioLog, FailureIsAWarning) {
    ScriptedScreen screen = screenOf(0.0);
    const std::vector<LogRecord> records = recordsOf(screen);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].level, "WARN");
    EXPECT_EQ(records[0].logger, "Quarn.QuarnControl.ScreenUtils");
    EXPECT_EQ(records[0].message, kFailed);
    EXPECT_NE(records[0].function.find("estimateAspectRatioUV"), std::string::npos);
}

TEST(AspectRatioLog, NothingIsLoggedBelowTheLevel) {
    ScriptedScreen good = screenOf(2.0);
    ScriptedScreen bad = screenOf(0.0);
    EXPECT_TRUE(recordsOf(good, log4cxx::Level::getOff()).empty());
    EXPECT_TRUE(recordsOf(bad, log4cxx::Level::getOff()).empty());
    EXPECT_TRUE(recordsOf(good, log4cxx::Level::getWarn()).empty());
    EXPECT_EQ(recordsOf(bad, log4cxx::Level::getWarn()).size(), 1U);
    EXPECT_EQ(recordsOf(good, log4cxx::Level::getInfo()).size(), 1U);
    EXPECT_TRUE(recordsOf(bad, log4cxx::Level::getError()).empty());
}

TEST(AspectRatioLog, OtherLoggersHearNothing) {
    const LogCapture other(L"Quarn.QuarnScreen.ScreenGeometry");
    FlatScreen screen(4.0, 3.0);
    EXPECT_EQ(recordsOf(screen).size(), 1U);
    EXPECT_TRUE(other.records().empty());
}
