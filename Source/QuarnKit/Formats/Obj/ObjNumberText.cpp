#include "ObjNumberText.h"

#include <array>
#include <charconv>
#include <cmath>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

namespace quarn {

namespace {

std::string textOf(float value) {
    std::array<char, 64> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

bool isReadAs(float value, const std::string& text) {
    return detail::scanFloatReference(text.c_str()).value == value;
}

// The mantissa of the reader has eight or nine digits. It drops one more digit.
constexpr int kMinDigits = 8;
constexpr int kMaxDigits = 10;
// The reader's products with 0.1 change a number by less than a unit of its last digit.
constexpr std::int64_t kMantissaReach = 2;

// Returns the text of a mantissa near \p value that is read as \p value.
std::string textNear(float value) {
    for (int digits = kMinDigits; digits <= kMaxDigits; ++digits) {
        const int tens = static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1 - digits;
        const std::int64_t nearest = std::llround(std::abs(double{value}) * std::pow(10.0, -tens));
        for (std::int64_t mantissa = nearest - kMantissaReach; mantissa <= nearest + kMantissaReach;
             ++mantissa) {
            std::string text =
                (value < 0.0F ? "-" : "") + std::to_string(mantissa) + "e" + std::to_string(tens);
            if (isReadAs(value, text)) return text;
        }
    }
    return textOf(value);
}

}  // namespace

std::string objNumberText(float value) {
    if (value == 0.0F) return "0";
    std::string text = textOf(value);
    return isReadAs(value, text) ? text : textNear(value);
}

}  // namespace quarn
