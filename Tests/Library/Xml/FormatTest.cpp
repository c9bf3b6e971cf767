#include <Common/XmlHelper.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <limits>
#include <string>

#include "Support/Rng.h"
#include "Support/ScientificText.h"
#include "Support/SpecialValues.h"

namespace quarn::test {
namespace {

const std::wstring kWide = L"a\u00E4\U0001F5B5";

TEST(Format, APatternWithoutConversionsComesBack) {
    EXPECT_EQ(XmlHelper::format(L""), L"");
    EXPECT_EQ(XmlHelper::format(L"plain \u00E4 text"), L"plain \u00E4 text");
}

TEST(Format, AStringConversionTakesWideStrings) {
    const wchar_t* pointer = kWide.c_str();
    EXPECT_EQ(XmlHelper::format(L"[%s]", kWide), L"[" + kWide + L"]");
    EXPECT_EQ(XmlHelper::format(L"[%s]", pointer), L"[" + kWide + L"]");
    EXPECT_EQ(XmlHelper::format(L"[%s]", std::wstring()), L"[]");
    EXPECT_EQ(XmlHelper::format(L"[%s]", L"literal"), L"[literal]");
    EXPECT_EQ(XmlHelper::format(L"%s%s", kWide, pointer), kWide + kWide);
}

TEST(Format, ALengthOfLongChangesNothing) {
    EXPECT_EQ(XmlHelper::format(L"[%ls]", kWide), L"[" + kWide + L"]");
    EXPECT_EQ(XmlHelper::format(L"%ls%s%ls", kWide, kWide, kWide), kWide + kWide + kWide);
}

TEST(Format, ADoubledPercentSignStandsForItself) {
    EXPECT_EQ(XmlHelper::format(L"%%"), L"%");
    EXPECT_EQ(XmlHelper::format(L"%%s"), L"%s");
    EXPECT_EQ(XmlHelper::format(L"%%%s%%s", std::wstring(L"a")), L"%a%s");
    EXPECT_EQ(XmlHelper::format(L"s%ds", 7), L"s7s");
}

TEST(Format, WidthsAndPrecisionsCountWideCharacters) {
    EXPECT_EQ(XmlHelper::format(L"[%5s]", kWide), L"[  " + kWide + L"]");
    EXPECT_EQ(XmlHelper::format(L"[%-5s]", kWide), L"[" + kWide + L"  ]");
    EXPECT_EQ(XmlHelper::format(L"[%.2s]", kWide), L"[a\u00E4]");
    EXPECT_EQ(XmlHelper::format(L"[%-4.1ls]", kWide), L"[a   ]");
    EXPECT_EQ(XmlHelper::format(L"[%*s]", 4, kWide), L"[ " + kWide + L"]");
    EXPECT_EQ(XmlHelper::format(L"[%.*s]", 1, kWide), L"[a]");
}

TEST(Format, IntegersTakeTheirFlags) {
    EXPECT_EQ(XmlHelper::format(L"%d %d", 42, std::numeric_limits<int>::min()), L"42 -2147483648");
    EXPECT_EQ(XmlHelper::format(L"[%05d|%-5d|%+d|%5d]", 42, 42, 42, -42), L"[00042|42   |+42|  -42]");
    EXPECT_EQ(XmlHelper::format(L"%lld", std::numeric_limits<long long>::max()), L"9223372036854775807");
    EXPECT_EQ(XmlHelper::format(L"%u %x", 4294967295U, 255U), L"4294967295 ff");
}

TEST(Format, AnIntegerIsNeverGrouped) {
    EXPECT_EQ(XmlHelper::format(L"%'d", 1234567), L"1234567");
}

TEST(Format, NumbersHaveAPointAndSixteenDigits) {
    EXPECT_EQ(XmlHelper::format(L"%.15e", 1.5), L"1.500000000000000e+00");
    EXPECT_EQ(XmlHelper::format(L"%.15e", 4.0), L"4.000000000000000e+00");
    EXPECT_EQ(XmlHelper::format(L"%.15e", -0.0), L"-0.000000000000000e+00");
    EXPECT_EQ(XmlHelper::format(L"%.15e", 1e308), L"1.000000000000000e+308");
    EXPECT_EQ(XmlHelper::format(L"%.15e", 5e-324), L"4.940656458412465e-324");
    EXPECT_EQ(XmlHelper::format(L"%.15e", 0.1F), L"1.000000014901161e-01");
    EXPECT_EQ(XmlHelper::format(L"[%10.3f]", 2.5), L"[     2.500]");
}

TEST(Format, SpecialValuesHaveTheirNames) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(XmlHelper::format(L"%.15e %.15e", kInfinity, -kInfinity), L"inf -inf");
    EXPECT_EQ(XmlHelper::format(L"%.15e %.15e", kNaN, -kNaN), L"nan -nan");
    for (const double value : kSpecialValues)
        EXPECT_EQ(XmlHelper::format(L"%.15e", value), scientific16(value));
}

TEST(Format, RandomNumbersHaveTheNearestSixteenDigits) {
    for (int i = 0; i < seedCount(20000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const double value = rng.coin() ? rng.spread() : rng.uniform(-10.0, 10.0);
        ASSERT_EQ(XmlHelper::format(L"%.15e", value), scientific16(value));
    }
}

TEST(Format, TheBufferGrowsWithTheText) {
    for (const std::size_t length : {1022U, 1023U, 1024U, 1025U, 2047U, 2048U, 5000U, 100000U}) {
        const std::wstring text(length, L'\u00E4');
        EXPECT_EQ(XmlHelper::format(L"%s", text), text) << length;
        EXPECT_EQ(XmlHelper::format(text), text) << length;
        EXPECT_EQ(XmlHelper::format(L"%s%d", text, 42), text + L"42") << length;
    }
}

TEST(Format, AllArgumentsAreReadAgainWhenTheBufferGrows) {
    const std::wstring text(3000, L'x');
    EXPECT_EQ(XmlHelper::format(L"%d %.15e %s %d", 1, 2.0, text, 3),
              L"1 2.000000000000000e+00 " + text + L" 3");
}

TEST(Format, AWidthFillsTheBufferToo) {
    EXPECT_EQ(XmlHelper::format(L"%5000d", 7), std::wstring(4999, L' ') + L"7");
}

TEST(Format, AConversionThatFailsGivesTheEmptyString) {
    EXPECT_EQ(XmlHelper::format(L"before %2147483648d", 7), L"");
    EXPECT_EQ(XmlHelper::format(L"%s %2147483648d", std::wstring(2000, L'x'), 7), L"");
}

TEST(Format, AFailureLeavesNothingBehind) {
    EXPECT_EQ(XmlHelper::format(L"%2147483648d", 7), L"");
    EXPECT_EQ(XmlHelper::format(L"%s", std::wstring(5000, L'x')), std::wstring(5000, L'x'));
    errno = ENOENT;
    EXPECT_EQ(XmlHelper::format(L"%s", std::wstring(5000, L'x')), std::wstring(5000, L'x'));
}

}  // namespace
}  // namespace quarn::test
