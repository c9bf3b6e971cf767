/// \file
/// Number text by a way that knows no locale.
#pragma once

#include <array>
#include <charconv>
#include <string>

namespace quarn::test {

/// One digit, a point, 15 digits and an exponent of at least two digits.
inline std::wstring scientific16(double value) {
    std::array<char, 64> buffer;
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, 15);
    return {buffer.data(), result.ptr};
}

/// The number nearest to a text of that form.
inline double nearestNumber(const std::wstring& text) {
    const std::string narrow(text.begin(), text.end());
    double value = 0.0;
    std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    return value;
}

}  // namespace quarn::test
