#include <Common/TextConversion.h>
#include <gtest/gtest.h>

#include <string>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

std::wstring encodeWide(const std::wstring& text) {
    return encodeBase64Wide(text.data(), static_cast<unsigned int>(text.size()));
}

TEST(WideBase64, HoldsTheUtf8FormOfTheText) {
    EXPECT_EQ(encodeWide(L"foo"), L"Zm9v");
    EXPECT_EQ(encodeWide(L"\u00E4"), L"w6Q=");          // C3 A4
    EXPECT_EQ(encodeWide(L"\u20AC"), L"4oKs");          // E2 82 AC
    EXPECT_EQ(encodeWide(L"\U0001F5B5"), L"8J+WtQ==");  // F0 9F 96 B5
}

TEST(WideBase64, TheSizeCountsWideCharacters) {
    EXPECT_EQ(encodeBase64Wide(L"\u00E4\u00E4\u00E4", 1), L"w6Q=");
    EXPECT_EQ(encodeBase64Wide(L"foobar", 3), L"Zm9v");
}

TEST(WideBase64, NoTextIsNoText) {
    EXPECT_EQ(encodeBase64Wide(L"", 0), L"");
    EXPECT_EQ(encodeBase64Wide(nullptr, 0), L"");
    EXPECT_EQ(decodeBase64Wide(L""), L"");
}

TEST(WideBase64, ANulIsEncodedLikeAnyCharacter) {
    const std::wstring text(L"a\0b", 3);
    EXPECT_EQ(encodeWide(text), L"YQBi");
    EXPECT_EQ(decodeBase64Wide(L"YQBi"), text);
}

TEST(WideBase64, ATextThatHasNoUtf8FormGivesNothing) {
    EXPECT_EQ(encodeWide({L'a', static_cast<wchar_t>(0xD800)}), L"");
    EXPECT_EQ(decodeBase64Wide(std::wstring(L"Zm9v") + static_cast<wchar_t>(0xDC00)), L"");
}

TEST(WideBase64, BytesThatAreNotUtf8BecomeReplacementCharacters) {
    EXPECT_EQ(decodeBase64Wide(L"/2H+"), L"\uFFFDa\uFFFD");  // FF 61 FE
}

TEST(WideBase64, ACharacterBeyondAsciiStopsTheReading) {
    EXPECT_EQ(decodeBase64Wide(L"Zm9v\u00E4YmFy"), L"foo");
    EXPECT_EQ(decodeBase64Wide(L"Zm9v\u0416YmFy"), L"foo");
    EXPECT_EQ(decodeBase64Wide(L"Zm9v\uFF21YmFy"), L"foo");  // a full-width A is no digit
    EXPECT_EQ(decodeBase64Wide(std::wstring(L"Zm9v\0YmFy", 9)), L"foo");
}

TEST(WideBase64, RandomTextComesBack) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::wstring text;
        for (int left = rng.integer(0, 40); left > 0; --left) {
            const int plane = rng.integer(0, 3);
            const int highest = plane == 0 ? 0x7F : plane == 1 ? 0x7FF : plane == 2 ? 0xD7FF : 0x10FFFF;
            const int character = rng.integer(0, highest);
            if (character < 0xD800 || character > 0xDFFF) text += static_cast<wchar_t>(character);
        }
        ASSERT_EQ(decodeBase64Wide(encodeWide(text)), text);
    }
}

}  // namespace
}  // namespace quarn::test
