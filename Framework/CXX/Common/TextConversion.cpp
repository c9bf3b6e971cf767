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

// Most text is ASCII. This many characters of it are converted at once.
constexpr std::size_t kAsciiBlock = 256;

template <class Character>
bool isAscii(Character character) {
    return static_cast<char32_t>(character) < 0x80;
}

// Appends the first characters of `text` if all of them are ASCII. The loop has no branch, so that
// the compiler vectorizes it.
template <class From, class To>
bool appendAsciiBlock(std::basic_string_view<From> text, std::basic_string<To>& output) {
    if (text.size() < kAsciiBlock || !isAscii(text.front())) return false;
    std::array<To, kAsciiBlock> block{};
    From all = 0;
    for (std::size_t i = 0; i < kAsciiBlock; ++i) {
        all = static_cast<From>(all | text[i]);
        block[i] = static_cast<To>(text[i]);
    }
    if (!isAscii(all)) return false;
    output.append(block.data(), kAsciiBlock);
    return true;
}

std::string utf8Of(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    try {
        for (; !text.empty(); text.remove_prefix(std::min(kAsciiBlock, text.size()))) {
            if (appendAsciiBlock(text, bytes)) continue;
            for (const wchar_t character : text.substr(0, kAsciiBlock))
                utf8::append(static_cast<char32_t>(character), std::back_inserter(bytes));
        }
    } catch (const utf8::invalid_code_point&) {
        return {};
    }
    return bytes;
}

void appendFromUtf8(std::string_view bytes, std::wstring& text) {
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
    return utf8Of(text);
}

std::wstring fromUtf8(const std::string& bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    std::string_view rest = bytes;
    while (!rest.empty()) {
        std::size_t size = std::min(kAsciiBlock, rest.size());
        if (!appendAsciiBlock(rest, text)) {
            // Split only before an ASCII byte, so that no multi-byte sequence is cut.
            while (size < rest.size() && !isAscii(rest[size])) ++size;
            appendFromUtf8(rest.substr(0, size), text);
        }
        rest.remove_prefix(size);
    }
    return text;
}

std::wstring encodeBase64Wide(const wchar_t* text, unsigned int size) {
    const std::string bytes = utf8Of({text, size});
    return fromUtf8(encodeBase64(reinterpret_cast<const unsigned char*>(bytes.data()),
                                 static_cast<unsigned int>(bytes.size())));
}

std::wstring decodeBase64Wide(const std::wstring& text) {
    return fromUtf8(decodeBase64(toUtf8(text)));
}
