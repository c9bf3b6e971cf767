#include "StlLayout.h"

#include <algorithm>
#include <cstring>

namespace quarn {

namespace {

// Triangles contain far more control characters than this: at least the zeros of their numbers.
constexpr std::size_t kMaxControlPercent = 3;
// Bytes of a file that decide about its form.
constexpr std::size_t kSampleBytes = 65536;

constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

std::string_view firstToken(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    return text.substr(0, text.find_first_of(kWhiteSpace));
}

// Returns true for a control character other than a tab or a line end.
bool isControl(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value < 0x09U || (value > 0x0DU && value < 0x20U);
}

bool isSolid(std::string_view token) {
    constexpr std::string_view kSolid = "solid";
    return token.size() == kSolid.size() &&
           std::equal(token.begin(), token.end(), kSolid.begin(),
                      [](char byte, char small) { return (byte | 0x20) == small; });
}

}  // namespace

std::uint64_t StlLayout::count() const {
    return std::min<std::uint64_t>(recordCount,
                                   declaredCount < 0 ? 0 : static_cast<std::uint64_t>(declaredCount));
}

std::optional<StlLayout> stlLayoutOf(std::string_view text) {
    if (text.size() < StlLayout::kRecordsBegin) return {};
    StlLayout layout;
    std::memcpy(&layout.declaredCount, text.data() + StlLayout::kHeaderSize, sizeof layout.declaredCount);
    layout.recordCount = (text.size() - StlLayout::kRecordsBegin) / StlLayout::kRecordSize;
    return layout;
}

bool beginsWithSolid(std::string_view text) {
    return isSolid(firstToken(text));
}

bool isTextLike(std::string_view bytes) {
    const auto count = static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), isControl));
    return count * 100 <= bytes.size() * kMaxControlPercent;
}

bool isBinaryStl(std::string_view text) {
    const std::size_t begin = text.size() > StlLayout::kRecordsBegin ? StlLayout::kHeaderSize : 0;
    if (!isTextLike(text.substr(begin, kSampleBytes))) return true;
    return stlLayoutOf(text) && !beginsWithSolid(text);
}

// A line of 80 bytes and more after the word does not fit the buffer of the library.
bool isStlTextToLibrary(std::string_view text) {
    constexpr std::size_t kMaxLineBytes = 79;
    const std::string_view token = firstToken(text);
    if (token != "solid") return false;
    const std::string_view rest = text.substr(static_cast<std::size_t>(token.end() - text.begin()));
    const std::size_t length = rest.find('\n');
    return length != std::string_view::npos ? length <= kMaxLineBytes
                                            : !rest.empty() && rest.size() <= kMaxLineBytes;
}

}  // namespace quarn
