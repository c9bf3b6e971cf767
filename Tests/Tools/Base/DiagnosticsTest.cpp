#include "Base/Diagnostics.h"

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

TEST(Message, PlainTextStaysAsItIs) {
    EXPECT_EQ(printable("wall \\ \"4 by 3\".xml"), "wall \\ \"4 by 3\".xml");
    EXPECT_EQ(printable("h\xC3\xA4user \xF0\x9F\x8F\xA0"), "h\xC3\xA4user \xF0\x9F\x8F\xA0");
}

TEST(Message, WhatATerminalObeysIsEscaped) {
    EXPECT_EQ(printable("\x1B[2J"), "\\x1b[2J");
    EXPECT_EQ(printable("a\nb\rc\td"), "a\\x0ab\\x0dc\\x09d");
    EXPECT_EQ(printable("\x7F"), "\\x7f");
    EXPECT_EQ(printable("\xC2\x9B"
                        "2J"),
              "\\x9b2J");
    EXPECT_EQ(printable(std::string_view("\0", 1)), "\\x00");
}

TEST(Message, MarksThatReorderTextAreEscaped) {
    EXPECT_EQ(printable("\xE2\x80\xAE"), "\\u202e");
    EXPECT_EQ(printable("\xE2\x80\xA8"), "\\u2028");
    EXPECT_EQ(printable("\xE2\x81\xA6"), "\\u2066");
}

TEST(Message, BytesThatAreNotUtf8BecomeTheReplacementCharacter) {
    EXPECT_EQ(printable("a\xFFz"), "a\xEF\xBF\xBDz");
}

TEST(Message, AnExcerptIsCutBehindFortyBytes) {
    EXPECT_EQ(quotedExcerpt("x"), "\"x\"");
    EXPECT_EQ(quotedExcerpt(std::string(40, 'x')), '"' + std::string(40, 'x') + '"');
    EXPECT_EQ(quotedExcerpt(std::string(41, 'x')), '"' + std::string(40, 'x') + "...\"");
}

TEST(Message, ThePlaceStandsBeforeTheText) {
    EXPECT_EQ(withLocation("a.xml", 7, "x"), "a.xml:7: x");
    EXPECT_EQ(withLocation("a.xml", 0, "x"), "a.xml: x");
    EXPECT_EQ(withLocation("", 0, "x"), "x");
}

TEST(Message, ALineIsOneLine) {
    ::testing::internal::CaptureStderr();
    tool::writeErrorLine("a\nb");
    tool::writeWarningLine("c");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "error: a\\x0ab\nwarning: c\n");
}

}  // namespace
}  // namespace quarn::test
