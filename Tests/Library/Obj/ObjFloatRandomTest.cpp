#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "Reference/Formats/ReferenceObjNumbers.h"
#include "Support/Bits.h"
#include "Support/Rng.h"

using namespace quarn;
using namespace quarn::test;

namespace {

constexpr int kBlocks = 10000;
constexpr int kNumbersInABlock = 1000;

// Random choices out of 64 bits at a time, since ten million strings have to be cheap.
class Choices {
public:
    explicit Choices(int index) : rng(index) {}

    unsigned below(unsigned count) {
        if (left < 8) {
            bits = rng.bits();
            left = 64;
        }
        const auto choice = static_cast<unsigned>(bits & 0xFFU) * count / 256;
        bits >>= 8U;
        left -= 8;
        return choice;
    }
    char of(std::string_view letters) { return letters[below(static_cast<unsigned>(letters.size()))]; }

private:
    Rng rng;
    std::uint64_t bits = 0;
    unsigned left = 0;
};

void appendDigits(Choices& choices, std::string& text, unsigned count) {
    for (unsigned i = 0; i < count; ++i) text += choices.of("0123456789");
}

void appendDecimal(Choices& choices, std::string& text, unsigned mostWhole, unsigned mostFraction) {
    if (choices.below(2) == 0) text += '-';
    appendDigits(choices, text, choices.below(mostWhole + 1));
    if (choices.below(8) == 0) return;
    text += '.';
    appendDigits(choices, text, choices.below(mostFraction + 1));
}

// A decimal number half-way between two neighboring floats: eight digits, one of them after the
// point.
void appendHalf(Choices& choices, std::string& text) {
    const unsigned whole =
        8388608 + 65536 * choices.below(128) + 256 * choices.below(256) + choices.below(256);
    text += std::to_string(whole) + ".5";
}

// Letters of numbers in any order. The exponent is kept short: the plain scan makes one step for
// each ten.
void appendLetters(Choices& choices, std::string& text, std::string_view letters, unsigned most) {
    for (unsigned i = choices.below(most + 1); i > 0; --i) text += choices.of(letters);
    if (choices.below(3) != 0) return;
    text += choices.of("eE");
    for (unsigned i = choices.below(5); i > 0; --i) text += choices.of("01239+-. ");
}

void makeNumber(Choices& choices, std::string& text) {
    text.clear();
    switch (choices.below(8)) {
        case 0:
            appendLetters(choices, text, "0123456789.-+ /\n\r\t", 13);
            break;
        case 1:
            appendLetters(choices, text, "0019..--", 19);
            break;
        case 2:
            appendDecimal(choices, text, 3, 12);
            text += choices.of("eE");
            text += choices.of("+-1");
            appendDigits(choices, text, choices.below(16) == 0 ? 3 : choices.below(3));
            break;
        case 3:
            appendDecimal(choices, text, 24, 24);
            break;
        case 4:
            appendHalf(choices, text);
            break;
        case 5:
            appendDecimal(choices, text, 9, 9);
            break;
        default:
            appendDecimal(choices, text, 2, 7);
            break;
    }
    // Most numbers stand in a line; what follows may begin with any byte.
    if (choices.below(4) == 0) return;
    text += choices.of("    \n\r\tx");
    for (unsigned i = choices.below(12); i > 0; --i) text += choices.of("0123456789.- \n");
}

std::size_t nextBlank(const std::string& text, std::size_t i) {
    while (byteAt(text, i) != ' ' && byteAt(text, i) != '\n' && byteAt(text, i) != '\0') ++i;
    return i;
}

::testing::AssertionResult isScannedAsSpecified(const std::string& text) {
    const float expected = referenceFloat(text, 0);
    const detail::ScannedFloat fast = detail::scanFloat(text.c_str(), text.c_str() + text.size());
    if (auto result = sameBits(fast.value, expected); !result) return result << " in \"" << text << "\"";
    const detail::ScannedFloat plain = detail::scanFloatReference(text.c_str());
    if (auto result = sameBits(plain.value, expected); !result)
        return result << " byte by byte in \"" << text << "\"";
    const auto blank = static_cast<std::ptrdiff_t>(nextBlank(text, 0));
    if (fast.stop - text.c_str() <= blank && plain.stop - text.c_str() <= blank)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "stopped behind the blank in \"" << text << "\"";
}

}  // namespace

TEST(ObjFloat, TenMillionRandomStringsAreScannedAsTheSpecifiedSteps) {
    std::string text;
    for (int i = 0; i < kBlocks; ++i) {
        Choices choices(i);
        for (int k = 0; k < kNumbersInABlock; ++k) {
            makeNumber(choices, text);
            ASSERT_TRUE(isScannedAsSpecified(text)) << "in block " << i;
        }
    }
}

TEST(ObjFloat, OneProductGivesTheFloatOfManyTenths) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        for (int k = 0; k < 10000; ++k) {
            const std::uint64_t bits = rng.bits();
            const unsigned shift = static_cast<unsigned>(bits >> 59U);
            const auto mantissa = static_cast<std::uint32_t>(bits % (10U * detail::kMantissaLimit) >> shift);
            const auto scale = static_cast<unsigned>((bits >> 40U) % (detail::kMaxTenths + 1));
            ASSERT_TRUE(sameBits(detail::scaledDown(mantissa, scale),
                                 detail::scaledFloat(mantissa, static_cast<std::int32_t>(scale))))
                << mantissa << " and " << scale;
        }
    }
}

TEST(ObjFloat, MiddlesBetweenFloatsAreRoundedAsByManyTenths) {
    for (std::uint32_t whole = 8388608; whole < 16777216; whole += 5) {
        const std::uint32_t middle = whole * 10 + 5;
        ASSERT_TRUE(sameBits(detail::scaledDown(middle, 1), detail::scaledFloat(middle, 1))) << middle;
    }
}

TEST(ObjFloat, DigitRunsOfAllLengthsAreRead) {
    for (int i = 0; i < 100000; ++i) {
        Choices choices(i);
        std::string text;
        const unsigned count = choices.below(9);
        appendDigits(choices, text, count);
        // The nearest neighbors of the digits, and bytes with the top bit.
        text += choices.of("/:. \n\x80\xB5\xFF");
        while (text.size() < 8) text += static_cast<char>(choices.below(256));
        const detail::DigitRun run = detail::readDigitRun(text.c_str());
        ASSERT_EQ(run.count, count) << i;
        const unsigned long expected = count == 0 ? run.value : std::stoul(text.substr(0, count));
        ASSERT_EQ(run.value, expected) << i;
    }
}
