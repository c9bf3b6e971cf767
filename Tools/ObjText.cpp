#include "ObjText.h"

#include <algorithm>
#include <cmath>

#include <QuarnScreen/OBJScreen.h>

namespace quarn {

namespace {

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

std::uint32_t digitOf(char byte) {
    return static_cast<std::uint32_t>(byte - '0');
}

// Intended: any minus sign makes the exponent negative, and it wraps, as the library has it.
std::uint32_t scanExponent(const char* p) {
    std::uint32_t exponent = 0;
    bool isNegative = false;
    for (; isDigit(*p) || *p == '-' || *p == '+'; ++p) {
        if (isDigit(*p)) exponent = exponent * 10 + digitOf(*p);
        isNegative = isNegative || *p == '-';
    }
    return isNegative ? 0U - exponent : exponent;
}

}  // namespace

std::uint64_t ObjText::lineOf(const char* place) const {
    const auto offset = static_cast<std::size_t>(place - text.data());
    const auto joined =
        std::lower_bound(joinedLines.begin(), joinedLines.end(), offset) - joinedLines.begin();
    const auto feeds = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n');
    return static_cast<std::uint64_t>(joined + feeds) + 1;
}

ObjText joinObjLines(std::string name, std::string& text) {
    std::vector<std::size_t> joined;
    for (std::size_t at = text.find("\\\n"); at != std::string::npos; at = text.find("\\\n", at + 2))
        joined.push_back(at + 1);
    OBJScreen::replaceNewLineEscapeSequencesWithBlanks(text);
    return {.name = std::move(name), .text = text, .joinedLines = std::move(joined)};
}

const char* skipBlanks(const char* p) {
    while (*p == ' ') ++p;
    return p;
}

const char* nextWord(const char* p) {
    while (*p != ' ' && *p != '\n' && *p != '\0') ++p;
    return skipBlanks(p);
}

bool isAtEnd(const char* p) {
    return *p == '\n' || *p == '\0' || (*p == '\r' && (p[1] == '\n' || p[1] == '\0'));
}

std::string_view wordAt(const char* p) {
    const char* end = p;
    while (*end != ' ' && *end != '\t' && *end != '\r' && *end != '\n' && *end != '\0') ++end;
    return {p, static_cast<std::size_t>(end - p)};
}

double ObjNumber::value() const {
    const double magnitude = mantissa * std::pow(10.0, tens);
    return isNegative ? -magnitude : magnitude;
}

bool ObjNumber::exceeds(double limit) const {
    return (tens > 0 || mantissa > limit) && std::abs(value()) > limit;
}

ObjNumber scanObjNumber(const char* p) {
    // Digits are dropped as soon as the mantissa has reached this.
    constexpr std::uint32_t kMantissaLimit = 16777216;
    ObjNumber number;
    std::uint32_t tens = 0;
    bool isBehindPoint = false;
    for (;; ++p) {
        if (isDigit(*p)) {
            const bool isKept = number.mantissa < kMantissaLimit;
            if (isKept) number.mantissa = number.mantissa * 10 + digitOf(*p);
            if (isKept && isBehindPoint) --tens;
            if (!isKept && !isBehindPoint) ++tens;
        } else if (*p == '-') {
            number.isNegative = true;
        } else if (*p == '.') {
            isBehindPoint = true;
        } else {
            break;
        }
    }
    if (number.mantissa == 0) return {};
    if (*p == 'e' || *p == 'E') tens += scanExponent(p + 1);
    number.tens = static_cast<std::int32_t>(tens);
    return number;
}

std::uint32_t scanObjIndex(const char*& p) {
    std::uint32_t value = 0;
    for (; isDigit(*p); ++p) value = value * 10 + digitOf(*p);
    return value;
}

}  // namespace quarn
