#include <Common/TextConversion.h>

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

static_assert(sizeof(wchar_t) == 4, "a wide character is one code point here");

namespace {

constexpr wchar_t kReplacementCharacter = 0xFFFD;

// Most text is ASCII; so many characters of it are converted at once.
constexpr std::size_t kAsciiBlock = 256;

template <class Character>
bool isAscii(Character character) {
    return static_cast<char32_t>(character) < 0x80;
}

// Without a branch, so that it takes many characters at once.
template <class Character>
bool isAsciiBlock(const Character* block) {
    Character all = 0;
    for (std::size_t i = 0; i < kAsciiBlock; ++i) all = static_cast<Character>(all | block[i]);
    return isAscii(all);
}

// Appends the leading ASCII characters of `text`, and removes them there.
template <class From, class To>
void moveAscii(std::basic_string_view<From>& text, std::basic_string<To>& output) {
    while (text.size() >= kAsciiBlock && isAscii(text.front()) && isAsciiBlock(text.data())) {
        std::array<To, kAsciiBlock> block{};
        for (std::size_t i = 0; i < kAsciiBlock; ++i) block[i] = static_cast<To>(text[i]);
        output.append(block.data(), kAsciiBlock);
        text.remove_prefix(kAsciiBlock);
    }
    while (!text.empty() && isAscii(text.front())) {
        output.push_back(static_cast<To>(text.front()));
        text.remove_prefix(1);
    }
}

// Appends bytes of which none is ASCII.
void appendSequences(std::string_view bytes, std::wstring& text) {
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end) {
        const char* const invalid = utf8::find_invalid(position, end);
        utf8::unchecked::utf8to32(position, invalid, std::back_inserter(text));
        position = invalid;
        if (position != end) {
            text.push_back(kReplacementCharacter);
            ++position;
        }
    }
}

}  // namespace

std::string toUtf8(const std::wstring& text) {
    std::string bytes;
    bytes.reserve(text.size());
    try {
        std::wstring_view rest = text;
        for (moveAscii(rest, bytes); !rest.empty(); moveAscii(rest, bytes)) {
            utf8::append(static_cast<char32_t>(rest.front()), std::back_inserter(bytes));
            rest.remove_prefix(1);
        }
    } catch (const utf8::invalid_code_point&) {
        return {};
    }
    return bytes;
}

std::wstring fromUtf8(const std::string& bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    std::string_view rest = bytes;
    for (moveAscii(rest, text); !rest.empty(); moveAscii(rest, text)) {
        // No sequence goes on behind an ASCII byte.
        const auto end = std::find_if(rest.begin(), rest.end(), isAscii<char>);
        const auto size = static_cast<std::size_t>(end - rest.begin());
        appendSequences(rest.substr(0, size), text);
        rest.remove_prefix(size);
    }
    return text;
}
