#include "PrintableText.h"

#include <array>
#include <cwchar>

#include <Common/TextConversion.h>

namespace quarn {

namespace {

// Enough of a text to recognize it.
constexpr std::size_t kExcerptLength = 40;

struct Range {
    wchar_t first;
    wchar_t last;
};

// C0 controls, DEL with the C1 controls, line and paragraph separators with the direction marks,
// isolates.
constexpr std::array kEscaped = {Range{0, 0x1F}, Range{0x7F, 0x9F}, Range{0x200E, 0x200F},
                                 Range{0x2028, 0x202E}, Range{0x2066, 0x2069}};

bool isEscaped(wchar_t character) {
    for (const Range& range : kEscaped)
        if (character >= range.first && character <= range.last) return true;
    return false;
}

}  // namespace

std::string printable(std::string_view text) {
    std::wstring result;
    for (const wchar_t character : fromUtf8(std::string(text))) {
        if (!isEscaped(character)) {
            result += character;
            continue;
        }
        std::array<wchar_t, 16> escape{};
        const wchar_t* pattern = character < 0x100 ? L"\\x%02x" : L"\\u%04x";
        std::swprintf(escape.data(), escape.size(), pattern, static_cast<unsigned int>(character));
        result += escape.data();
    }
    return toUtf8(result);
}

std::string quotedExcerpt(std::string_view text) {
    std::string result = '"' + std::string(text.substr(0, kExcerptLength));
    return result + (text.size() > kExcerptLength ? "...\"" : "\"");
}

}  // namespace quarn
