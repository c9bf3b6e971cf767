#include <Common/TextConversion.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

#include "Reference/Formats/ReferenceUtf8.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

// The text of one character, and that character at the start, in the middle and at the end of a
// text.
std::array<std::wstring, 4> textsAround(wchar_t character) {
    const std::wstring one(1, character);
    return {one, one + L"ab", L"a" + one + L"b", L"ab" + one};
}

TEST(ToUtf8, NoTextIsNoBytes) {
    EXPECT_EQ(toUtf8(L""), "");
}

TEST(ToUtf8, WritesEachCodePoint) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFFU; ++codePoint) {
        if (codePoint == 0xD800U) codePoint = 0xE000U;
        ASSERT_EQ(toUtf8(std::wstring(1, static_cast<wchar_t>(codePoint))), referenceToUtf8(codePoint))
            << static_cast<unsigned>(codePoint);
    }
}

TEST(ToUtf8, DoesNotStopAtANul) {
    EXPECT_EQ(toUtf8(std::wstring(L"\0a\0\u00E4\0", 5)), std::string("\0a\0\xC3\xA4\0", 6));
}

TEST(ToUtf8, ASurrogateAnywhereGivesNothing) {
    for (wchar_t surrogate = 0xD800; surrogate <= 0xDFFF; ++surrogate)
        for (const std::wstring& text : textsAround(surrogate)) ASSERT_EQ(toUtf8(text), "") << +surrogate;
}

TEST(ToUtf8, APairOfSurrogatesGivesNothing) {
    EXPECT_EQ(toUtf8({static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDDB5)}), "");
}

TEST(ToUtf8, AValueBeyondTheLastCodePointGivesNothing) {
    for (const wchar_t value : {wchar_t{0x110000}, wchar_t{0x110041}, wchar_t{0x200000}, wchar_t{0x1000041},
                                std::numeric_limits<wchar_t>::max()})
        for (const std::wstring& text : textsAround(value)) EXPECT_EQ(toUtf8(text), "") << +value;
}

TEST(ToUtf8, ANegativeCharacterGivesNothing) {
    for (const wchar_t value :
         {wchar_t{-1}, wchar_t{-0x41}, wchar_t{-0x10000}, std::numeric_limits<wchar_t>::min()})
        for (const std::wstring& text : textsAround(value)) EXPECT_EQ(toUtf8(text), "") << +value;
}

TEST(ToUtf8, RandomTextComesBack) {
    for (int i = 0; i < seedCount(5000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::wstring text;
        std::string bytes;
        for (int left = rng.integer(0, 60); left > 0; --left) {
            const auto codePoint = static_cast<char32_t>(rng.bits() % 0x110000U) >> rng.integer(0, 20);
            if (codePoint >= 0xD800U && codePoint < 0xE000U) continue;
            text += static_cast<wchar_t>(codePoint);
            bytes += referenceToUtf8(codePoint);
        }
        ASSERT_EQ(toUtf8(text), bytes);
        ASSERT_EQ(fromUtf8(bytes), text);
    }
}

}  // namespace
}  // namespace quarn::test
