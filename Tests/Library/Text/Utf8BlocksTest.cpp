// Long texts that are ASCII for the most part.
#include <Common/TextConversion.h>
#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Xml/XmlBase64.h>

#include <sstream>
#include <string>

#include "Reference/Formats/ReferenceBase64.h"
#include "Reference/Formats/ReferenceUtf8.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

// ASCII with a few pieces between: characters of two to four bytes, and bytes that are no UTF-8.
std::string mixedBytes(Rng& rng, int pieces, int longest) {
    const std::string others[] = {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x96\xB5", "\x80",
                                  "\xC3",     "\xE2\x82",     "\xF0\x9F\x96",     "\xED\xA0\x80",
                                  "\xFF",     "\xC0\x80\x80", "\xF4\x90"};
    std::string bytes;
    for (; pieces > 0; --pieces) {
        bytes.append(static_cast<std::size_t>(rng.integer(0, longest)),
                     static_cast<char>(rng.integer(0, 127)));
        for (int left = rng.integer(0, 3); left > 0; --left) bytes += others[rng.bits() % std::size(others)];
    }
    return bytes;
}

std::string toBytes(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t character : text) bytes += referenceToUtf8(static_cast<char32_t>(character));
    return bytes;
}

TEST(Utf8Blocks, EachPlaceInALongTextMayHoldAnOddByte) {
    for (const std::size_t size : {255U, 256U, 257U, 600U}) {
        for (std::size_t place = 0; place < size; ++place) {
            std::string bytes(size, 'v');
            bytes[place] = '\xE4';
            std::wstring text(size, L'v');
            text[place] = L'\xFFFD';
            ASSERT_EQ(fromUtf8(bytes), text) << place;
            ASSERT_EQ(toUtf8(text), toBytes(text)) << place;
            text[place] = static_cast<wchar_t>(0xDFFF);
            ASSERT_EQ(toUtf8(text), "") << place;
            text[place] = wchar_t{-0x41};
            ASSERT_EQ(toUtf8(text), "") << place;
        }
    }
}

TEST(Utf8Blocks, RandomMixedTextReadsAsTheTableSpecifies) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const std::string bytes = mixedBytes(rng, rng.integer(0, 6), i % 2 == 0 ? 3 : 700);
        const std::wstring text = referenceFromUtf8(bytes);
        ASSERT_EQ(fromUtf8(bytes), text);
        ASSERT_EQ(toUtf8(text), toBytes(text));
    }
}

// Characters of three bytes fall upon the border of each piece of any size.
TEST(Utf8Blocks, WayThroughAWideTextNeedNotBeTakenAsAWhole) {
    for (int i = 0; i < seedCount(12); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::string bytes = mixedBytes(rng, 3, 100000) + std::string(static_cast<std::size_t>(i), 'v');
        for (int left = 100000; left > 0; --left) bytes += i % 4 == 3 ? "\xE2\x82" : "\xE2\x82\xAC";
        bytes += mixedBytes(rng, 300, 3000);
        ASSERT_TRUE(detail::throughWideText(bytes) == toBytes(referenceFromUtf8(bytes)));
    }
    EXPECT_EQ(detail::throughWideText(""), "");
}

TEST(Utf8Blocks, WrittenBase64IsThatOfTheWhole) {
    for (int i = 0; i < seedCount(30); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const std::string bytes = mixedBytes(rng, i, 60000);
        std::wostringstream out;
        detail::writeBase64(out, bytes);
        const std::string expected = referenceEncodeBase64(bytes);
        ASSERT_TRUE(out.str() == std::wstring(expected.begin(), expected.end()));
    }
}

}  // namespace
}  // namespace quarn::test
