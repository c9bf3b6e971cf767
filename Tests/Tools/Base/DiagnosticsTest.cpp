#include "Base/Diagnostics.h"

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

TEST(Diagnostics, ALineIsOneLine) {
    ::testing::internal::CaptureStderr();
    tool::writeErrorLine("a\nb");
    tool::writeWarningLine("c");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "error: a\\x0ab\nwarning: c\n");
}

}  // namespace
}  // namespace quarn::test
