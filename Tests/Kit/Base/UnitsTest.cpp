#include <QuarnKit/Base/Units.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include <QuarnKit/Base/NumberText.h>
#include "Support/Bits.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

constexpr double kPi = std::numbers::pi;

double radiansOf(const std::string& text) {
    return Angle::parse(text).value().radians();
}

TEST(Angle, DegreesBecomeTheNearestRadians) {
    EXPECT_EQ(radiansOf("180deg"), kPi);
    EXPECT_EQ(radiansOf("-90deg"), -kPi / 2);
    EXPECT_EQ(radiansOf("360deg"), 2 * kPi);
    EXPECT_EQ(radiansOf("45deg"), kPi / 4);
    EXPECT_EQ(radiansOf(" +1.5e1 deg"), 0.26179938779914943654);
    EXPECT_TRUE(sameBits(radiansOf("-0deg"), -0.0));
}

TEST(Angle, DegreesOfAnySizeAreWithinHalfAnUlp) {
    constexpr long double kRadiansPerDegree = 0.017453292519943295769236907684886127L;
    for (int i = 0; i < seedCount(10000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double degrees = std::ldexp(rng.integer(-2000000000, 2000000000), -rng.integer(0, 5));
        const double radians = radiansOf(numberText(degrees) + "deg");
        const double ulp = std::nextafter(std::abs(radians), INFINITY) - std::abs(radians);
        // A little more than half, for the rounding of the products in long double.
        ASSERT_LE(std::abs(static_cast<double>(degrees * kRadiansPerDegree - radians)), 0.501 * ulp);
    }
}

TEST(Angle, RadiansStayAsTheyAre) {
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double radians = rng.spread();
        ASSERT_TRUE(sameBits(radiansOf(numberText(radians) + "rad"), radians));
    }
}

TEST(Angle, WholePartsOfATurnStayExact) {
    EXPECT_EQ(Angle::parse("180deg")->halved().complement().radians(), 0.0);
    EXPECT_EQ(Angle::parse("3.141592653589793rad")->halved().complement().radians(), 0.0);
    EXPECT_EQ(Angle::parse("60deg")->complement().radians(), radiansOf("30deg"));
    EXPECT_EQ(Angle::parse("1rad")->complement().radians(), kPi / 2 - 1);
    EXPECT_EQ(Angle::parse("210deg")->halved().negated().radians(), radiansOf("-105deg"));
}

TEST(Angle, TextWithoutItsUnitIsNone) {
    for (const char* text : {"", "deg", "rad", "210", "210DEG", "210 degrees", "210d", "1deg2", "1,5deg",
                             "nandeg", "infrad", "--1deg", "0x1deg", "1e999deg"})
        EXPECT_FALSE(Angle::parse(text).has_value()) << text;
}

TEST(Length, NumberAloneIsInTheUnit) {
    for (const char* unit : {"m", "mm", "yd", "km", ""}) {
        EXPECT_EQ(parseLength("6", unit), 6.0) << unit;
        EXPECT_EQ(parseLength(" -0.5 ", unit), -0.5) << unit;
    }
}

TEST(Length, UnitsAreWholeTenthsOfAMillimeter) {
    struct Pair {
        const char* text;
        const char* unit;
        double length;
    };
    for (const auto& [text, unit, length] :
         {Pair{"6m", "m", 6.0}, Pair{"6000mm", "m", 6.0}, Pair{"600cm", "m", 6.0},
          Pair{"19.7ft", "m", 6.00456}, Pair{"236in", "m", 5.9944}, Pair{"1ft", "in", 12.0},
          Pair{"1in", "cm", 2.54}, Pair{"1m", "mm", 1000.0}, Pair{"25.4mm", "in", 1.0},
          Pair{"-3.048m", "ft", -10.0}, Pair{"0.3m", "cm", 30.0}, Pair{"4m", "dm", 40.0},
          Pair{"4dm", "m", 0.4}, Pair{"2km", "m", 2000.0}, Pair{"3yd", "m", 2.7432}, Pair{"3yd", "ft", 9.0},
          Pair{"914.4m", "yd", 1000.0}, Pair{"1mm", "km", 1e-6}})
        EXPECT_EQ(parseLength(text, unit), length) << text << " in " << unit;
}

TEST(Length, UnitsHaveTheirSizesInMeters) {
    EXPECT_EQ(metersPerUnit("mm"), 0.001);
    EXPECT_EQ(metersPerUnit("cm"), 0.01);
    EXPECT_EQ(metersPerUnit("dm"), 0.1);
    EXPECT_EQ(metersPerUnit("m"), 1.0);
    EXPECT_EQ(metersPerUnit("km"), 1000.0);
    EXPECT_EQ(metersPerUnit("in"), 0.0254);
    EXPECT_EQ(metersPerUnit("ft"), 0.3048);
    EXPECT_EQ(metersPerUnit("yd"), 0.9144);
    EXPECT_FALSE(metersPerUnit("furlong").has_value());
}

TEST(Length, OneUnitToItselfChangesNothing) {
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double length = rng.spread(-1000, 1000);
        for (const std::string& unit : lengthUnitNames())
            ASSERT_EQ(parseLength(numberText(length) + unit, unit), length) << unit;
    }
}

TEST(Length, TextOfAnotherFormIsNone) {
    for (const char* text : {"", "m", "6M", "6nm", "6deg", "6ft3in", "6,5", "nan", "infm", "1e999", "0x6"})
        EXPECT_FALSE(parseLength(text, "m").has_value()) << text;
    EXPECT_FALSE(parseLength("6m", "furlong").has_value());
}

}  // namespace
}  // namespace quarn::test
