#include <gtest/gtest.h>

#include <QuarnKit/Base/PrintableText.h>

namespace quarn::test {
namespace {

TEST(PrintableText, PlainTextStaysAsItIs) {
    EXPECT_EQ(printable("wall \\ \"4 by 3\".xml"), "wall \\ \"4 by 3\".xml");
    EXPECT_EQ(printable("h\xC3\xA4user \xF0\x9F\x8F\xA0"), "h\xC3\xA4user \xF0\x9F\x8F\xA0");
}

TEST(PrintableText, WhatATerminalObeysIsEscaped) {
    EXPECT_EQ(printable("\x1B[2J"), "\\x1b[2J");
    EXPECT_EQ(printable("a\nb\rc\td"), "a\\x0ab\\x0dc\\x09d");
    EXPECT_EQ(printable("\x7F"), "\\x7f");
    EXPECT_EQ(printable("\xC2\x9B"
                        "2J"),
              "\\x9b2J");
    EXPECT_EQ(printable(std::string_view("\0", 1)), "\\x00");
}

TEST(PrintableText, MarksThatReorderTextAreEscaped) {
    EXPECT_EQ(printable("\xE2\x80\xAE"), "\\u202e");
    EXPECT_EQ(printable("\xE2\x80\xA8"), "\\u2028");
    EXPECT_EQ(printable("\xE2\x81\xA6"), "\\u2066");
}

TEST(PrintableText, BytesThatAreNotUtf8BecomeTheReplacementCharacter) {
    EXPECT_EQ(printable("a\xFFz"), "a\xEF\xBF\xBDz");
}

TEST(PrintableText, ExcerptIsCutBehindFortyBytes) {
    EXPECT_EQ(quotedExcerpt("x"), "\"x\"");
    EXPECT_EQ(quotedExcerpt(std::string(40, 'x')), '"' + std::string(40, 'x') + '"');
    EXPECT_EQ(quotedExcerpt(std::string(41, 'x')), '"' + std::string(40, 'x') + "...\"");
}

}  // namespace
}  // namespace quarn::test
