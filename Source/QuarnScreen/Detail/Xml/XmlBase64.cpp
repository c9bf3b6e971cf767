#include "XmlBase64.h"

#include <algorithm>
#include <cstddef>

#include <Common/TextConversion.h>

namespace quarn::detail {
namespace {

// A multiple of the three bytes of a base64 group, so that only the last piece is padded.
constexpr std::size_t kPiece = 3 * (std::size_t{1} << 16U);

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

}  // namespace

void writeBase64(std::wostream& out, const std::string& bytes) {
    const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
    for (std::size_t start = 0; start < bytes.size(); start += kPiece) {
        const std::size_t size = std::min(kPiece, bytes.size() - start);
        const std::wstring text = fromUtf8(encodeBase64(data + start, static_cast<unsigned int>(size)));
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
}

std::string throughWideText(const std::string& bytes) {
    std::string result;
    result.reserve(bytes.size());
    auto start = bytes.begin();
    while (start != bytes.end()) {
        const auto remaining = bytes.end() - start;
        // Split only before an ASCII byte, so that no multi-byte sequence is cut.
        const auto end =
            std::find_if(start + std::min<std::ptrdiff_t>(remaining, kPiece), bytes.end(), isAscii);
        result += toUtf8(fromUtf8(std::string(start, end)));
        start = end;
    }
    return result;
}

}  // namespace quarn::detail
