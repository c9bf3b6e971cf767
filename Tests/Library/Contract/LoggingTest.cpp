#include <Common/XmlHelper.h>
#include <Common/ZelmoreException.h>
#include <QuarnScreen/FlatScreen.h>
#include <gtest/gtest.h>
#include <log4cxx/logmanager.h>

#include <string>

#include "Support/Dom.h"
#include "Support/LogCapture.h"

namespace quarn::test {
namespace {

constexpr const wchar_t* kScreenLogger = L"Quarn.QuarnScreen.ScreenGeometry";

struct LogOfScreens : FlatScreen {
    static const log4cxx::LoggerPtr& get() { return log; }
};

// The library makes the logger before main.
TEST(ScreenLog, ExistsBeforeAnyCall) {
    const log4cxx::LoggerPtr found = log4cxx::LogManager::exists(std::wstring(kScreenLogger));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found, LogOfScreens::get());
}

TEST(ScreenLog, HasItsName) {
    std::wstring name;
    LogOfScreens::get()->getName(name);
    EXPECT_EQ(name, kScreenLogger);
}

TEST(ScreenLog, HasNoConfiguration) {
    EXPECT_EQ(LogOfScreens::get()->getLevel(), nullptr);
    EXPECT_TRUE(LogOfScreens::get()->getAllAppenders().empty());
    EXPECT_TRUE(LogOfScreens::get()->getAdditivity());
}

TEST(ScreenLog, RecordsMessages) {
    const LogCapture capture(kScreenLogger);
    LOG4CXX_WARN(LogOfScreens::get(), "a warning");
    ASSERT_EQ(capture.records().size(), 1U);
    EXPECT_EQ(capture.records()[0].level, "WARN");
    EXPECT_EQ(capture.records()[0].message, "a warning");
    EXPECT_NE(capture.records()[0].file.find("LoggingTest.cpp"), std::string::npos);
}

TEST(ScreenLog, AThrowLogsNothing) {
    const LogCapture capture(kScreenLogger);
    const DocumentPtr document = newDocument();
    EXPECT_THROW((void)XmlHelper::readDouble(appendElement(*document, L"a"), nullptr), ZelmoreParseException);
    FlatScreen screen;
    screen.deserialize(document->getDocumentElement());
    EXPECT_TRUE(capture.records().empty());
}

}  // namespace
}  // namespace quarn::test
