#include <Common/XmlHelper.h>
#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>

#include "Support/Rng.h"
#include "Support/ScientificText.h"
#include "Support/SpecialValues.h"

namespace quarn::test {
namespace {

std::wstring indented(int indent, const std::wstring& text) {
    std::wostringstream out;
    XmlHelper::writeIndented(indent, out, text);
    return out.str();
}

std::wstring tagged(int indent, const std::wstring& tag, const std::wstring& value) {
    std::wostringstream out;
    XmlHelper::writeTag(indent, out, tag, value);
    return out.str();
}

// Character by character: blanks stand where a line begins that holds at least one character.
std::wstring referenceIndented(int indent, const std::wstring& text) {
    std::wstring result;
    bool atLineStart = true;
    for (const wchar_t character : text) {
        for (int blank = 0; atLineStart && blank < 4 * indent; ++blank) result += L' ';
        result += character;
        atLineStart = character == L'\n';
    }
    return result;
}

TEST(WriteIndented, AnEmptyTextWritesNothing) {
    for (const int indent : {-1, 0, 2}) EXPECT_EQ(indented(indent, L""), L"");
}

TEST(WriteIndented, EachLevelIsFourBlanks) {
    EXPECT_EQ(indented(0, L"a"), L"a");
    EXPECT_EQ(indented(1, L"a"), L"    a");
    EXPECT_EQ(indented(2, L"a"), L"        a");
}

TEST(WriteIndented, ANegativeIndentWritesNoBlanks) {
    for (const int indent : {-1, -7, std::numeric_limits<int>::min()})
        EXPECT_EQ(indented(indent, L"a\nb\n"), L"a\nb\n");
}

TEST(WriteIndented, TheIndentFollowsEachLineFeedThatIsNotTheLast) {
    EXPECT_EQ(indented(1, L"a\nb"), L"    a\n    b");
    EXPECT_EQ(indented(1, L"a\n"), L"    a\n");
    EXPECT_EQ(indented(1, L"\n"), L"    \n");
    EXPECT_EQ(indented(1, L"a\n\nb"), L"    a\n    \n    b");
    EXPECT_EQ(indented(1, L"a\n\n"), L"    a\n    \n");
}

TEST(WriteIndented, OtherCharactersPassAsTheyAre) {
    const std::wstring text(L"\r\t\0<&>\"'\u00E4\U0001F5B5", 10);
    EXPECT_EQ(indented(0, text), text);
}

TEST(WriteIndented, RandomTextsAreIndentedAsCharacterByCharacter) {
    for (int i = 0; i < seedCount(5000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::wstring text;
        for (int left = rng.integer(0, 30); left > 0; --left) text += L"\n\nab \r"[rng.integer(0, 5)];
        const int indent = rng.integer(-2, 5);
        ASSERT_EQ(indented(indent, text), referenceIndented(indent, text));
    }
}

TEST(WriteTag, WritesOneElementAndALineFeed) {
    EXPECT_EQ(tagged(0, L"tag", L"value"), L"<tag>value</tag>\n");
    EXPECT_EQ(tagged(2, L"tag", L"value"), L"        <tag>value</tag>\n");
    EXPECT_EQ(tagged(-3, L"tag", L"value"), L"<tag>value</tag>\n");
}

TEST(WriteTag, AnEmptyValueGivesBothTagsOnOneLine) {
    EXPECT_EQ(tagged(0, L"tag", L""), L"<tag></tag>\n");
}

TEST(WriteTag, ALineFeedInTheValueGetsTheIndentInsideIt) {
    EXPECT_EQ(tagged(1, L"t", L"a\nb"), L"    <t>a\n    b</t>\n");
    EXPECT_EQ(tagged(1, L"t", L"a\n"), L"    <t>a\n    </t>\n");
}

TEST(WriteTag, NothingIsEscaped) {
    EXPECT_EQ(tagged(0, L"t", L"<a b=\"c\">&amp;'</a>]]>"), L"<t><a b=\"c\">&amp;'</a>]]></t>\n");
}

TEST(WriteTag, AFormatCharacterInTheValueStaysAsItIs) {
    EXPECT_EQ(tagged(0, L"%s", L"100 %d %n"), L"<%s>100 %d %n</%s>\n");
}

TEST(WriteTagPoint, EachCommaIsFollowedByOneBlank) {
    std::wostringstream out;
    XmlHelper::writeTagPoint(1, out, L"Center_Point", Point<double, 3>(0.0, 1.0, 2.0));
    EXPECT_EQ(out.str(),
              L"    <Center_Point>0.000000000000000e+00, 1.000000000000000e+00, 2.000000000000000e+00"
              L"</Center_Point>\n");
}

TEST(WriteTagPoint, WritesSpecialValuesAsTheFormatDoes) {
    for (const double value : kSpecialValues) {
        std::wostringstream out;
        XmlHelper::writeTagPoint(0, out, L"p", Point<double, 3>(value, -value, 1e308));
        EXPECT_EQ(out.str(), L"<p>" + scientific16(value) + L", " + scientific16(-value) +
                                 L", 1.000000000000000e+308</p>\n");
    }
}

}  // namespace
}  // namespace quarn::test
