/// \file
/// Digests as text.
#pragma once

#include <array>
#include <string>

namespace quarn::test {

/// Forty lower-case hexadecimal digits.
inline std::string hexOf(const std::array<unsigned char, 20>& hash) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : hash) {
        text += kDigits[byte / 16];
        text += kDigits[byte % 16];
    }
    return text;
}

}  // namespace quarn::test
