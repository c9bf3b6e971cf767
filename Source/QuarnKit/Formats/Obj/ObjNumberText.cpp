#include "ObjNumberText.h"

#include <charconv>
#include <cmath>

#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

namespace quarn {

namespace {

// Bytes for any number, and NULs after it, so that the reader may look at eight bytes at once.
constexpr std::size_t kBufferBytes = 64;
using Buffer = std::array<char, kBufferBytes>;

bool isReadAs(float value, const Buffer& text) {
    return detail::scanFloat(text.data(), text.data() + text.size() - 1).value == value;
}

// The mantissa of the reader has eight or nine digits. It drops one more digit.
constexpr int kMinDigits = 8;
constexpr int kMaxDigits = 10;
// The reader's products with 0.1 change a number by less than a unit of its last digit.
constexpr std::int64_t kMantissaReach = 2;

// Writes a number such as -12345678e-9, and returns its end.
char* write(Buffer& text, bool isNegative, std::int64_t mantissa, int tens) {
    text = {};
    char* p = text.data();
    char* const end = p + text.size() - 1;
    if (isNegative) *p++ = '-';
    p = std::to_chars(p, end, mantissa).ptr;
    *p++ = 'e';
    return std::to_chars(p, end, tens).ptr;
}

// Writes a mantissa near \p value that is read as \p value. Returns its end, or null if there is
// none.
char* writeNear(Buffer& text, float value) {
    for (int digits = kMinDigits; digits <= kMaxDigits; ++digits) {
        const int tens = static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1 - digits;
        const std::int64_t nearest = std::llround(std::abs(double{value}) * std::pow(10.0, -tens));
        for (std::int64_t mantissa = nearest - kMantissaReach; mantissa <= nearest + kMantissaReach;
             ++mantissa) {
            char* const end = write(text, value < 0.0F, mantissa, tens);
            if (isReadAs(value, text)) return end;
        }
    }
    return nullptr;
}

}  // namespace

std::string objNumberText(float value) {
    std::string text;
    appendObjNumber(text, value);
    return text;
}

void appendObjNumber(std::string& text, float value) {
    if (value == 0.0F) {
        text += '0';
        return;
    }
    Buffer shortest{};
    const auto written = std::to_chars(shortest.data(), shortest.data() + shortest.size() - 1, value);
    const char* begin = shortest.data();
    const char* end = written.ptr;
    Buffer near{};
    if (!isReadAs(value, shortest))
        if (const char* const nearEnd = writeNear(near, value)) {
            begin = near.data();
            end = nearEnd;
        }
    text.append(begin, end);
}

void appendObjInteger(std::string& text, std::uint64_t value) {
    // A 64-bit number has at most 20 digits.
    std::array<char, 20> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), written.ptr);
}

}  // namespace quarn
