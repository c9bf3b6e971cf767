#include <QuarnKit/Formats/Obj/ObjNumberText.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

float readBack(const std::string& text) {
    return detail::scanFloatReference(text.c_str()).value;
}

TEST(ObjNumberText, CommonNumbersAreWrittenAsPeopleWriteThem) {
    EXPECT_EQ(objNumberText(0.0F), "0");
    EXPECT_EQ(objNumberText(1.0F), "1");
    EXPECT_EQ(objNumberText(-2.5F), "-2.5");
    EXPECT_EQ(objNumberText(0.1F), "0.1");
    EXPECT_EQ(objNumberText(16777216.0F), "16777216");
}

TEST(ObjNumberText, NegativeZeroIsWrittenAsZero) {
    EXPECT_EQ(objNumberText(-0.0F), "0");
}

TEST(ObjNumberText, TheEndsOfTheRangeAreReadBack) {
    using Limits = std::numeric_limits<float>;
    for (const float value : {Limits::max(), Limits::min(), Limits::denorm_min(), Limits::epsilon()})
        for (const float number : {value, -value}) EXPECT_EQ(readBack(objNumberText(number)), number);
}

// Positions lie where the digits that a mantissa takes change, too: below 1.6777216 there are nine.
TEST(ObjNumberText, NumbersBesideTheLimitOfTheMantissaAreReadBack) {
    for (int tens = -30; tens <= 30; ++tens) {
        auto value = static_cast<float>(1.6777216 * std::pow(10.0, tens));
        for (int i = 0; i < 20; ++i) value = std::nextafter(value, 0.0F);
        for (int i = 0; i < 40; ++i, value = std::nextafter(value, std::numeric_limits<float>::max()))
            EXPECT_EQ(readBack(objNumberText(value)), value) << tens;
    }
}

TEST(ObjNumberText, RandomFloatsOfTheWholeRangeAreReadBack) {
    for (int i = 0; i < seedCount(1000000); ++i) {
        Rng rng(i);
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(rng.bits()));
        if (!std::isfinite(value)) continue;
        ASSERT_EQ(readBack(objNumberText(value)), value) << i;
    }
}

}  // namespace
}  // namespace quarn::test
