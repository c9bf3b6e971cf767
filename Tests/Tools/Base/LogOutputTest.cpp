#include "Base/LogOutput.h"

#include <gtest/gtest.h>
#include <log4cxx/logger.h>

#include "Base/LogWarnings.h"

namespace quarn::test {
namespace {

TEST(LogOutput, WarningsAndWorseBecomeLinesOnStandardError) {
    tool::installLogOutput();
    const auto logger = log4cxx::Logger::getLogger(std::wstring(L"Quarn.QuarnScreen.ScreenGeometry"));
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    logger->debug("a detail");
    logger->info("some news");
    logger->warn("a warning with \x1B");
    logger->warn("a warning with \x1B");
    logger->error("worse");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "warning: a warning with \\x1b\nwarning: worse\n");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST(LogOutput, WarningOfSeveralBoundariesIsLeftToTheCommands) {
    tool::installLogOutput();
    const auto logger = log4cxx::Logger::getLogger(std::wstring(L"Quarn.QuarnScreen.ScreenGeometry"));
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(tool::takeSeveralBoundaries());
    logger->warn(
        "Multiple boundaries are not currently supported and there are 4 unprocessed edges remaining in "
        "screen mesh!");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(tool::takeSeveralBoundaries());
    EXPECT_FALSE(tool::takeSeveralBoundaries());
}

}  // namespace
}  // namespace quarn::test
