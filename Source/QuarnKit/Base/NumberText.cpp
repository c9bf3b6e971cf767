#include "NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace quarn {

namespace {

// The longest text of numberText() is like -2.2250738585072014e-308.
constexpr std::size_t kMaxNumberLength = 32;

// Parses a number beyond the range of normal doubles. Unlike std::from_chars, a stream
// distinguishes overflow from underflow.
std::optional<double> parseBeyondRange(std::string_view text) {
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    double value = 0.0;
    stream >> value;
    if (std::abs(value) > 1.0) return std::nullopt;
    return value;
}

}  // namespace

std::string numberText(double value) {
    std::string text;
    appendNumber(text, value);
    return text;
}

void appendNumber(std::string& text, double value) {
    if (std::isnan(value)) {
        text += "nan";  // and never "-nan"
        return;
    }
    std::array<char, kMaxNumberLength> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    text.append(buffer.data(), result.ptr);
}

std::string roundedNumberText(double value, int digits) {
    // Every decimal number of this many digits survives the conversion to a double and back.
    constexpr int kReliableDigits = std::numeric_limits<double>::digits10;
    if (std::isnan(value)) return "nan";
    for (int used = std::min(digits, kReliableDigits);; ++used) {
        std::array<char, kMaxNumberLength> buffer{};
        const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::general, used);
        const std::string_view text(buffer.data(), result.ptr);
        if (used == digits || parseNumber(text) == value) return std::string(text);
    }
}

std::string groupedCount(std::uint64_t count) {
    std::string text = std::to_string(count);
    for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, 1, ',');
    return text;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string hexText(std::span<const unsigned char> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += kDigits[byte / 16U];
        text += kDigits[byte % 16U];
    }
    return text;
}

std::optional<double> parseNumber(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size()) return std::nullopt;
    if (error == std::errc::result_out_of_range) return parseBeyondRange(text);
    if (error != std::errc()) return std::nullopt;
    return value;
}

}  // namespace quarn
