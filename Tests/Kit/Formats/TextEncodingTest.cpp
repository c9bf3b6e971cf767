#include <QuarnKit/Formats/Kind/TextEncoding.h>

#include <gtest/gtest.h>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

using namespace std::string_literals;

// Characters as UTF-16 without mark.
std::string utf16(const std::u16string& text, TextEncoding encoding) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8U);
        const char low = static_cast<char>(unit & 0xFFU);
        bytes += encoding == TextEncoding::Utf16BigEndian ? high : low;
        bytes += encoding == TextEncoding::Utf16BigEndian ? low : high;
    }
    return bytes;
}

constexpr std::array kEncodings = {TextEncoding::Utf16LittleEndian, TextEncoding::Utf16BigEndian};

TEST(TextEncoding, Utf16IsDetectedWithAndWithoutMark) {
    for (const TextEncoding encoding : kEncodings)
        for (const char16_t* text : {u"v 0 0 0\r\n", u"\uFEFFv 0 0 0\n", u"# Größe der Wand\n",
                                     u"# Стена 5 на 3\nv 1 2 3\n", u"\uFEFF# 壁\n"}) {
            const std::string bytes = utf16(text, encoding);
            EXPECT_EQ(textEncodingOf(bytes), encoding) << bytes;
            EXPECT_EQ(textEncodingOf(bytes + "\0"s), encoding) << bytes;
        }
}

TEST(TextEncoding, OtherFilesAreBytes) {
    EXPECT_EQ(textEncodingOf(""), TextEncoding::Bytes);
    EXPECT_EQ(textEncodingOf("v"), TextEncoding::Bytes);
    EXPECT_EQ(textEncodingOf("v 0 0 0\nv 1 0 0\n"), TextEncoding::Bytes);
    EXPECT_EQ(textEncodingOf("\xEF\xBB\xBFv 0 0 0\n"), TextEncoding::Bytes);
    EXPECT_EQ(textEncodingOf(std::string(200, '\0')), TextEncoding::Bytes);
    EXPECT_EQ(textEncodingOf("\xFF\xFE\0\0v\0\0\0"s), TextEncoding::Bytes);
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        std::string bytes;
        for (int k = 0; k < 500; ++k) bytes += static_cast<char>(rng.integer(0, 255));
        EXPECT_EQ(textEncodingOf("x" + bytes), TextEncoding::Bytes) << i;
    }
}

TEST(TextEncoding, Utf16BecomesUtf8) {
    for (const TextEncoding encoding : kEncodings) {
        EXPECT_EQ(utf8FromUtf16(utf16(u"\uFEFFv 1\n", encoding), encoding), "v 1\n");
        EXPECT_EQ(utf8FromUtf16(utf16(u"ä\u20AC\U0001F3E0", encoding), encoding), "\u00e4\u20AC\U0001F3E0");
        EXPECT_EQ(utf8FromUtf16(utf16({0x61, 0xD83C, 0x62}, encoding), encoding), "a\uFFFD"s + "b");
        EXPECT_EQ(utf8FromUtf16(utf16({0xDFE0, 0xD83C}, encoding), encoding), "\uFFFD\uFFFD");
        EXPECT_EQ(utf8FromUtf16(utf16(u"a", encoding) + "b", encoding), "a\uFFFD");
        EXPECT_EQ(utf8FromUtf16("", encoding), "");
    }
}

TEST(TextEncoding, LongTextsAreDecodedInBlocks) {
    std::u16string text;
    std::string expected;
    while (text.size() < 300001) {
        text += u"x\U0001F3E0";
        expected += "x\U0001F3E0";
    }
    for (const TextEncoding encoding : kEncodings)
        EXPECT_TRUE(utf8FromUtf16(utf16(text, encoding), encoding) == expected);
}

}  // namespace
}  // namespace quarn::test
