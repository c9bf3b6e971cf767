/// \file
/// Base64 byte by byte.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace quarn::bench {

inline constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Value of each character, -1 for what is no digit.
inline constexpr auto kDigitValues = [] {
    std::array<int, 256> values{};
    values.fill(-1);
    for (std::size_t i = 0; i < kDigits.size(); ++i)
        values[static_cast<unsigned char>(kDigits[i])] = static_cast<int>(i);
    return values;
}();

inline std::string encodePlainly(const std::string& bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    unsigned bits = 0;
    unsigned bitCount = 0;
    for (const char byte : bytes) {
        bits = (bits << 8U) | static_cast<unsigned char>(byte);
        for (bitCount += 8; bitCount >= 6;) {
            bitCount -= 6;
            text += kDigits[(bits >> bitCount) & 63U];
        }
    }
    if (bitCount > 0) text += kDigits[(bits << (6 - bitCount)) & 63U];
    while (text.size() % 4 != 0) text += '=';
    return text;
}

inline std::string decodePlainly(const std::string& text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    unsigned bits = 0;
    unsigned bitCount = 0;
    for (const char character : text) {
        const int value = kDigitValues[static_cast<unsigned char>(character)];
        if (value < 0) break;
        bits = (bits << 6U) | static_cast<unsigned>(value);
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> bitCount));
    }
    return bytes;
}

}  // namespace quarn::bench
