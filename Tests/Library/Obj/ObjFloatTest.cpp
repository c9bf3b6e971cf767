#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Support/Bits.h"

using namespace quarn;
using quarn::test::sameBits;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct NumberCase {
    std::string text;
    float value;
};

// Both scans, at the end of a text and with bytes after the number.
void expectScanned(const NumberCase& number) {
    for (const char* rest : {"", " 0.25 17 and so on"}) {
        const std::string text = number.text + rest;
        SCOPED_TRACE("\"" + text + "\"");
        EXPECT_TRUE(sameBits(detail::scanFloatReference(text.c_str()).value, number.value)) << "byte by byte";
        EXPECT_TRUE(
            sameBits(detail::scanFloat(text.c_str(), text.c_str() + text.size()).value, number.value));
    }
}

void expectAll(const std::vector<NumberCase>& numbers) {
    for (const NumberCase& number : numbers) expectScanned(number);
}

}  // namespace

TEST(ObjFloat, ShortDecimalNumbersAreReadAsTheNearestFloat) {
    expectAll({{"1", 1.0F},
               {"0.5", 0.5F},
               {"-0.5", -0.5F},
               {".25", 0.25F},
               {"2.", 2.0F},
               {"-3.2", -3.2F},
               {"0.1", 0.1F},
               {"12.3456", 12.3456F},
               {"0.000123", 0.000123F},
               {"12345678", 12345678.0F},
               {"0012.50", 12.5F}});
}

TEST(ObjFloat, TextWithoutDigitsIsPositiveZero) {
    for (const char* text : {"", "-", ".", "--.-", "x", "nan", "inf", "-inf", "\n", "\t1", ",5", "/1"})
        expectScanned({text, 0.0F});
}

TEST(ObjFloat, NegativeZeroIsPositiveZero) {
    for (const char* text : {"-0", "-0.0", "-0e5", "-.000", "-000000000000000000000"})
        expectScanned({text, 0.0F});
}

TEST(ObjFloat, PlusSignEndsTheNumber) {
    expectAll({{"+1", 0.0F}, {"1+2", 1.0F}, {"1.5+", 1.5F}});
}

TEST(ObjFloat, MinusSignCountsAnywhereAndOnce) {
    expectAll({{"1-", -1.0F}, {"1-2", -12.0F}, {"--12", -12.0F}, {"1.-5", -1.5F}, {"1.5-", -1.5F}});
}

TEST(ObjFloat, FurtherPointsAreSkipped) {
    expectAll({{"1.2.5", 1.25F}, {"..5", 0.5F}, {"1..5", 1.5F}});
}

TEST(ObjFloat, OtherBytesEndTheNumber) {
    expectAll({{"1,5", 1.0F}, {"0x10", 0.0F}, {"1\r", 1.0F}, {"1\t2", 1.0F}, {"7/8", 7.0F}, {"1_000", 1.0F}});
}

TEST(ObjFloat, DigitsBeyondTheLimitAreDroppedAndThePlaceIsKept) {
    // Eight digits are at 2^24 or more, so the last three are dropped: 98765432 with three tens.
    expectAll({{"98765432109", 98765432000.0F}, {"98765432.109", 98765432.0F}, {"9876543.2109", 9876543.2F}});
    // The first eight are below it, so a ninth still counts.
    expectAll({{"123456789", 123456789.0F}, {"1.23456789", 1.23456789F}, {"12345678901", 12345678900.0F}});
    // At the limit itself a digit is dropped, below it the digit counts.
    expectAll({{"167772169", 167772160.0F},
               {"16777216", 16777216.0F},
               {"16777215", 16777215.0F},
               {"167772159", 167772159.0F}});
}

TEST(ObjFloat, LeadingZerosAreNoDigitsOfTheLimit) {
    expectAll({{"0.00000000000000000012345678", 1.2345678e-19F}, {"000000000000000001.5", 1.5F}});
}

TEST(ObjFloat, ExponentShiftsThePoint) {
    expectAll({{"1e2", 100.0F},
               {"1E2", 100.0F},
               {"1e+2", 100.0F},
               {"25e-2", 0.25F},
               {"1.5e3", 1500.0F},
               {"-1.5e3", -1500.0F},
               {"1e", 1.0F},
               {"1e-", 1.0F},
               {"1e2.5", 100.0F},
               {"1e2e3", 100.0F}});
}

TEST(ObjFloat, AnyMinusSignInTheExponentMakesItNegative) {
    expectAll({{"25e2-", 0.25F}, {"25e+-2", 0.25F}, {"25e-+2", 0.25F}, {"25e--2", 0.25F}});
}

TEST(ObjFloat, TensAreMultipliedOneAfterAnother) {
    // So near to the middle of two floats that the roundings of the many products lead to the
    // farther one.
    for (const auto& [text, nearest] : {NumberCase{"71965803e-20", 71965803e-20F},
                                        {"79876533e-26", 79876533e-26F},
                                        {"85139031e-32", 85139031e-32F}})
        expectScanned({text, std::nextafter(nearest, kInfinity)});
}

TEST(ObjFloat, ValuesTooLargeAreInfinite) {
    expectAll({{"1e39", kInfinity}, {"-1e39", -kInfinity}, {"1e400", kInfinity}, {"3.5e38", kInfinity}});
    expectAll({{"1e38", 1e38F}});
}

TEST(ObjFloat, ValuesTooSmallAreZeroWithTheirSign) {
    expectAll({{"1e-46", 0.0F}, {"-1e-46", -0.0F}, {"-1e-400", -0.0F}, {"1e-45", 1e-45F}});
}

TEST(ObjFloat, ExponentOfBillionsIsDoneAtOnce) {
    expectAll({{"1e2000000000", kInfinity}, {"1e-2000000000", 0.0F}, {"-7e-2147483647", -0.0F}});
}

TEST(ObjFloat, ExponentWrapsAt32Bits) {
    // 2^32 + 2 and 2^32 - 2, the latter being minus two.
    expectAll({{"1e4294967298", 100.0F}, {"25e4294967294", 0.25F}, {"25e-4294967298", 0.25F}});
    // The least exponent has no positive counterpart, so taking it away does not turn its sign.
    expectAll({{"1e-2147483648", kInfinity}});
}

TEST(ObjFloat, NumberOfMillionsOfDigitsKeepsItsPlace) {
    const std::string zeros(1000000, '0');
    expectScanned({"0." + zeros + "25e1000002", 25.0F});
    expectScanned({"25" + zeros + "e-1000000", 25.0F});
}

TEST(ObjFloat, StopLiesBeforeTheNextBlank) {
    const std::string text = "-1.25e2x 7";
    EXPECT_LE(detail::scanFloatReference(text.c_str()).stop, text.c_str() + 8);
    const std::string simple = "-1.25 7.5 0.125";
    EXPECT_EQ(detail::scanFloat(simple.c_str(), simple.c_str() + simple.size()).stop, simple.c_str() + 5);
}
