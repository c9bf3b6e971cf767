#include "StlLayout.h"

#include <algorithm>
#include <cstring>

#include <QuarnKit/Base/ByteOrderMarks.h>

namespace quarn {

namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

std::string_view firstToken(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    return text.substr(0, text.find_first_of(kWhiteSpace));
}

// Returns true for a byte that does not occur in text.
bool isBinaryByte(char byte) {
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

// Four bytes of text would be a count of more than 150 million. A greater count is valid after a
// header that is padded with NUL.
bool beginsLikeStl(std::string_view beginning) {
    constexpr std::int32_t kMinTextCount = 0x09090909;
    constexpr std::ptrdiff_t kMinPaddingBytes = 8;
    if (isSolid(firstToken(beginning))) return true;
    const auto layout = stlLayoutOf(beginning);
    const std::string_view head = beginning.substr(0, StlLayout::kRecordsBegin);
    if (!layout || isMarkedUtf16(beginning)) return false;
    return layout->declaredCount < kMinTextCount
               ? std::any_of(head.begin(), head.end(), isBinaryByte)
               : std::count(head.begin(), head.end(), '\0') >= kMinPaddingBytes;
}

bool isBinaryStl(std::string_view text) {
    if (std::any_of(text.begin(), text.end(), isBinaryByte)) return true;
    return stlLayoutOf(text) && !isSolid(firstToken(text));
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
