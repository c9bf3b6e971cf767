#include <Common/TextConversion.h>

#include <utf8.h>

#include <iterator>

static_assert(sizeof(wchar_t) == 4, "a wide character is one code point here");

namespace {
constexpr wchar_t kReplacementCharacter = 0xFFFD;
}

std::string toUtf8(const std::wstring& text) {
    std::string bytes;
    bytes.reserve(text.size());
    try {
        for (const wchar_t character : text)
            utf8::append(static_cast<char32_t>(character), std::back_inserter(bytes));
    } catch (const utf8::invalid_code_point&) {
        return {};
    }
    return bytes;
}

std::wstring fromUtf8(const std::string& bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    auto position = bytes.begin();
    while (position != bytes.end()) {
        const auto invalid = utf8::find_invalid(position, bytes.end());
        utf8::unchecked::utf8to32(position, invalid, std::back_inserter(text));
        position = invalid;
        if (position != bytes.end()) {
            text.push_back(kReplacementCharacter);
            ++position;
        }
    }
    return text;
}
