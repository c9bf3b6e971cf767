#include "TextEncoding.h"

#include <algorithm>
#include <cstdint>

#include <Common/Detail/Assert.h>
#include <Common/TextConversion.h>
#include <QuarnKit/Base/ByteOrderMarks.h>

namespace quarn {

namespace {

// Bytes at the start of a file that decide, and the fewest that can.
constexpr std::size_t kSampleBytes = 4096;
constexpr std::size_t kMinSampleBytes = 4;

// Code units that are decoded at once, so that the wide string of a large text stays small.
constexpr std::size_t kBlockUnits = 65536;

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kByteOrderMark = 0xFEFF;

// The code units of UTF-16 bytes.
class Units {
public:
    Units(std::string_view utf16Bytes, TextEncoding encoding)
        : bytes(utf16Bytes), highByte(encoding == TextEncoding::Utf16BigEndian ? 0 : 1) {}

    [[nodiscard]] std::size_t count() const { return bytes.size() / 2; }
    [[nodiscard]] std::uint32_t at(std::size_t i) const {
        const auto byteAt = [&](std::size_t k) {
            return std::uint32_t{static_cast<unsigned char>(bytes[k])};
        };
        return (byteAt(2 * i + highByte) << 8U) + byteAt(2 * i + 1 - highByte);
    }

private:
    std::string_view bytes;
    std::size_t highByte;
};

bool isAscii(std::uint32_t unit) {
    return (unit >= 0x20 && unit < 0x7F) || (unit >= 0x09 && unit <= 0x0D);
}

// A NUL or another control character does not occur in text, but in nearly all binary data.
bool isUnmarkedText(const Units& units) {
    std::size_t asciiCount = 0;
    for (std::size_t i = 0; i < units.count(); ++i) {
        if (isAscii(units.at(i)))
            ++asciiCount;
        else if (units.at(i) < 0x20)
            return false;
    }
    return asciiCount * 2 >= units.count();
}

bool isHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// Returns the character at unit \p i, and advances \p i to its last unit.
std::uint32_t takeCharacter(const Units& units, std::size_t& i) {
    const std::uint32_t unit = units.at(i);
    if (isHighSurrogate(unit) && i + 1 < units.count() && isLowSurrogate(units.at(i + 1)))
        return 0x10000 + ((unit - 0xD800) << 10U) + (units.at(++i) - 0xDC00);
    return isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit;
}

}  // namespace

TextEncoding textEncodingOf(std::string_view beginning) {
    constexpr std::string_view kUtf32Mark("\xFF\xFE\0\0", 4);
    if (beginning.starts_with(kUtf32Mark)) return TextEncoding::Bytes;
    if (isMarkedUtf16(beginning))
        return beginning.front() == '\xFF' ? TextEncoding::Utf16LittleEndian : TextEncoding::Utf16BigEndian;
    const std::string_view sample = beginning.substr(0, kSampleBytes);
    if (sample.size() < kMinSampleBytes) return TextEncoding::Bytes;
    for (const TextEncoding encoding : {TextEncoding::Utf16LittleEndian, TextEncoding::Utf16BigEndian})
        if (isUnmarkedText({sample, encoding})) return encoding;
    return TextEncoding::Bytes;
}

std::string utf8FromUtf16(std::string_view bytes, TextEncoding encoding) {
    QUARN_ASSERT(encoding != TextEncoding::Bytes);
    const Units units(bytes, encoding);
    std::string text;
    std::wstring block;
    std::size_t i = units.count() > 0 && units.at(0) == kByteOrderMark ? 1 : 0;
    while (i < units.count()) {
        block.clear();
        for (; i < units.count() && block.size() < kBlockUnits; ++i)
            block += static_cast<wchar_t>(takeCharacter(units, i));
        text += toUtf8(block);
    }
    if (bytes.size() % 2 != 0) text += toUtf8(std::wstring(1, static_cast<wchar_t>(kReplacement)));
    return text;
}

}  // namespace quarn
