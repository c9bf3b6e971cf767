/// \file
/// Base64 byte by byte.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quarn::test {

inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Value of each character, -1 for characters outside of the alphabet.
inline constexpr auto kBase64Values = [] {
    std::array<int, 256> values{};
    values.fill(-1);
    for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i)
        values[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<int>(i);
    return values;
}();

/// Six bits for each character, missing bits zero, filled up with "=" to a multiple of four
/// characters.
inline std::string referenceEncodeBase64(const std::string& bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    unsigned bits = 0;
    unsigned bitCount = 0;
    for (const char byte : bytes) {
        bits = (bits << 8U) | static_cast<unsigned char>(byte);
        for (bitCount += 8; bitCount >= 6;) {
            bitCount -= 6;
            text += kBase64Alphabet[(bits >> bitCount) & 63U];
        }
    }
    if (bitCount > 0) text += kBase64Alphabet[(bits << (6 - bitCount)) & 63U];
    while (text.size() % 4 != 0) text += '=';
    return text;
}

/// The whole bytes of the bits before the first character outside of the alphabet.
inline std::string referenceDecodeBase64(const std::string& text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    unsigned bits = 0;
    unsigned bitCount = 0;
    for (const char character : text) {
        const int value = kBase64Values[static_cast<unsigned char>(character)];
        if (value < 0) break;
        bits = (bits << 6U) | static_cast<unsigned>(value);
        bitCount += 6;
        if (bitCount < 8) continue;
        bitCount -= 8;
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> bitCount));
    }
    return bytes;
}

}  // namespace quarn::test
