#include <Common/TextConversion.h>
#include <gtest/gtest.h>

#include <string>

#include "Reference/Formats/ReferenceUtf8.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;

std::wstring replacements(std::size_t count) {
    return std::wstring(count, kReplacement);
}

TEST(FromUtf8, NoBytesAreNoText) {
    EXPECT_EQ(fromUtf8(""), L"");
}

TEST(FromUtf8, ReadsEachCodePoint) {
    for (char32_t codePoint = 0; codePoint <= 0x10FFFFU; ++codePoint) {
        if (codePoint == 0xD800U) codePoint = 0xE000U;
        ASSERT_EQ(fromUtf8(referenceToUtf8(codePoint)), std::wstring(1, static_cast<wchar_t>(codePoint)))
            << static_cast<unsigned>(codePoint);
    }
}

TEST(FromUtf8, DoesNotStopAtANul) {
    EXPECT_EQ(fromUtf8(std::string("\0a\0\xC3\xA4\0", 6)), std::wstring(L"\0a\0\u00E4\0", 5));
}

TEST(FromUtf8, EachByteOfABrokenSequenceIsReplacedAlone) {
    EXPECT_EQ(fromUtf8("\xE2\x82\x41"), replacements(2) + L"A");
    EXPECT_EQ(fromUtf8("\xF0\x9F\x96\x41"), replacements(3) + L"A");
    EXPECT_EQ(fromUtf8("\xE2\x82\xE2\x82\xAC"), replacements(2) + L"\u20AC");
}

TEST(FromUtf8, OverlongFormsAreIllFormed) {
    EXPECT_EQ(fromUtf8("\xC0\x80"), replacements(2));
    EXPECT_EQ(fromUtf8("\xC1\xBF"), replacements(2));
    EXPECT_EQ(fromUtf8("\xE0\x9F\xBF"), replacements(3));
    EXPECT_EQ(fromUtf8("\xF0\x8F\xBF\xBF"), replacements(4));
    EXPECT_EQ(fromUtf8("\xF8\x88\x80\x80\x80"), replacements(5));
}

TEST(FromUtf8, EncodedSurrogatesAreIllFormed) {
    EXPECT_EQ(fromUtf8("\xED\xA0\x80"), replacements(3));
    EXPECT_EQ(fromUtf8("\xED\xBF\xBF"), replacements(3));
    EXPECT_EQ(fromUtf8("\xED\xA0\xBD\xED\xB6\xB5"), replacements(6));  // a pair
    EXPECT_EQ(fromUtf8("\xED\x9F\xBF"), L"\uD7FF");
    EXPECT_EQ(fromUtf8("\xEE\x80\x80"), L"\uE000");
}

TEST(FromUtf8, NothingStandsBeyondTheLastCodePoint) {
    EXPECT_EQ(fromUtf8("\xF4\x8F\xBF\xBF"), L"\U0010FFFF");
    EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), replacements(4));
    EXPECT_EQ(fromUtf8("\xF5\x80\x80\x80"), replacements(4));
    EXPECT_EQ(fromUtf8("\xFE\xFF"), replacements(2));
}

TEST(FromUtf8, AByteOrderMarkIsKept) {
    EXPECT_EQ(fromUtf8("\xEF\xBB\xBF"
                       "a"),
              L"\uFEFFa");
}

TEST(FromUtf8, EachCutOffTailIsReplacedByteByByte) {
    for (const char32_t codePoint : {U'\u00E4', U'\u20AC', U'\U0001F5B5'}) {
        const std::string whole = referenceToUtf8(codePoint);
        for (std::size_t length = 1; length < whole.size(); ++length)
            EXPECT_EQ(fromUtf8("ab" + whole.substr(0, length)), L"ab" + replacements(length));
    }
}

TEST(FromUtf8, EachStringOfUpToTwoBytesReadsAsTheTableSpecifies) {
    for (int first = 0; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(fromUtf8(one), referenceFromUtf8(one)) << first;
        for (int second = 0; second < 256; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(fromUtf8(two), referenceFromUtf8(two)) << first << " " << second;
        }
    }
}

TEST(FromUtf8, EachStringOfThreeBytesReadsAsTheTableSpecifies) {
    std::string three(3, '\0');
    for (int first = 0; first < 256; ++first) {
        // Behind a letter no sequence goes on, so one text can hold all strings of one first byte.
        std::string all;
        for (int rest = 0; rest < 65536; ++rest) {
            three = {static_cast<char>(first), static_cast<char>(rest >> 8), static_cast<char>(rest)};
            all += three + 'A';
            // From this lead on, the end of the text can cut a sequence off.
            if (first < 0xE0) continue;
            ASSERT_EQ(fromUtf8(three), referenceFromUtf8(three)) << first << " " << rest;
        }
        ASSERT_TRUE(fromUtf8(all) == referenceFromUtf8(all)) << first;
    }
}

// Bytes near the borders of the table, so that many sequences are nearly well-formed.
TEST(FromUtf8, LongerRandomStringsReadAsTheTableSpecifies) {
    constexpr std::string_view kBorders(
        "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5"
        "\xFF",
        25);
    int wellFormed = 0;
    for (int i = 0; i < seedCount(200000); ++i) {
        Rng rng(i);
        std::string bytes;
        for (int left = rng.integer(4, 12); left > 0; --left)
            bytes += rng.coin() ? kBorders[static_cast<std::size_t>(rng.integer(0, 24))]
                                : static_cast<char>(rng.bits() % 64 + 0x80);
        const std::wstring expected = referenceFromUtf8(bytes);
        ASSERT_EQ(fromUtf8(bytes), expected) << i;
        for (const wchar_t character : expected) wellFormed += character > 0xFFFF ? 1 : 0;
    }
    EXPECT_GT(wellFormed, 1000) << "the random bytes hold too few sequences of four";
}

}  // namespace
}  // namespace quarn::test
