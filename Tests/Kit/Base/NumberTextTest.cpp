#include <QuarnKit/Base/NumberText.h>

#include <gtest/gtest.h>

#include <bit>
#include <limits>

#include "Support/Bits.h"
#include "Support/Rng.h"
#include "Support/SpecialValues.h"

namespace quarn::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, IsTheShortestThatReadsBack) {
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(4.0), "4");
    EXPECT_EQ(numberText(-0.0), "-0");
    EXPECT_EQ(numberText(1e300), "1e+300");
    EXPECT_EQ(numberText(1.0 / 3.0), "0.3333333333333333");
}

TEST(NumberText, NamesWhatIsNotFinite) {
    EXPECT_EQ(numberText(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(numberText(-std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(numberText(kInfinity), "inf");
    EXPECT_EQ(numberText(-kInfinity), "-inf");
}

TEST(NumberText, EveryNumberReadsBackWithTheSameBits) {
    for (const double value : kSpecialValues)
        EXPECT_TRUE(sameBits(parseNumber(numberText(value)).value(), value));
    for (int i = 0; i < seedCount(100000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto value = std::bit_cast<double>(rng.bits());
        ASSERT_TRUE(sameBits(parseNumber(numberText(value)).value(), value));
    }
}

TEST(ParseNumber, TakesTheWholeText) {
    for (const char* text :
         {"", " ", "x", "1x", "1 2", "1,5", "--1", "+-1", "++1", "1e", "e5", ".", "0x10", "1_0", "1.2.3"})
        EXPECT_FALSE(parseNumber(text)) << text;
    EXPECT_FALSE(parseNumber(std::string_view("1\0", 2)));
}

TEST(ParseNumber, AcceptsWhatPeopleWrite) {
    EXPECT_EQ(parseNumber("+1.5"), 1.5);
    EXPECT_EQ(parseNumber(" 1.5\t"), 1.5);
    EXPECT_EQ(parseNumber(".5"), 0.5);
    EXPECT_EQ(parseNumber("5."), 5.0);
    EXPECT_EQ(parseNumber("1E+2"), 100.0);
    EXPECT_EQ(parseNumber("inf"), kInfinity);
    EXPECT_EQ(parseNumber("-Infinity"), -kInfinity);
    EXPECT_TRUE(std::isnan(parseNumber("NaN").value()));
}

TEST(ParseNumber, TooSmallIsZeroAndTooLargeIsNoNumber) {
    EXPECT_TRUE(sameBits(parseNumber("1e-400").value(), 0.0));
    EXPECT_TRUE(sameBits(parseNumber("-1e-400").value(), -0.0));
    EXPECT_EQ(parseNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(parseNumber("1e400"), std::nullopt);
    EXPECT_EQ(parseNumber("-1e400"), std::nullopt);
    EXPECT_EQ(parseNumber(std::string(400, '9')), std::nullopt);
    EXPECT_EQ(parseNumber("0e999"), 0.0);
}

TEST(ParseNumber, ReadsSubnormalNumbers) {
    EXPECT_EQ(parseNumber("5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(parseNumber("1e-310"), 1e-310);
}

TEST(NumberText, RoundedTextHasNoMoreDigitsThanSpecified) {
    EXPECT_EQ(roundedNumberText(90.00000000000003, 15), "90");
    EXPECT_EQ(roundedNumberText(-30.000000000000004, 15), "-30");
    EXPECT_EQ(roundedNumberText(2.0 / 3.0, 3), "0.667");
    EXPECT_EQ(roundedNumberText(100000.0, 7), "100000");
    EXPECT_EQ(roundedNumberText(0.1, 17), "0.1");
    EXPECT_EQ(roundedNumberText(0.1 + 0.2, 17), "0.30000000000000004");
    EXPECT_EQ(roundedNumberText(1.570796326794897, 17), "1.570796326794897");
    EXPECT_EQ(roundedNumberText(std::nan(""), 3), "nan");
    EXPECT_EQ(roundedNumberText(-INFINITY, 3), "-inf");
}

}  // namespace
}  // namespace quarn::test
