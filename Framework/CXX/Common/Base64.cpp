#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>

#include <Common/TextConversion.h>

namespace {

constexpr std::size_t kBytesPerGroup = 3;
constexpr std::size_t kCharactersPerGroup = 4;
// OpenSSL's block coders count in int; a longer run goes through them in pieces of whole groups.
constexpr std::size_t kGroupsPerCall = (INT_MAX / kCharactersPerGroup) - 1;

unsigned char* asBytes(char* text) {
    return reinterpret_cast<unsigned char*>(text);
}
const unsigned char* asBytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

bool isBase64Digit(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/';
}

// Decodes whole groups of digits, appending three bytes for each.
void decodeGroups(const char* digits, std::size_t groups, std::string& bytes) {
    while (groups > 0) {
        const std::size_t piece = std::min(groups, kGroupsPerCall);
        const std::size_t start = bytes.size();
        bytes.resize(start + piece * kBytesPerGroup);
        EVP_DecodeBlock(asBytes(bytes.data() + start), asBytes(digits),
                        static_cast<int>(piece * kCharactersPerGroup));
        digits += piece * kCharactersPerGroup;
        groups -= piece;
    }
}

}  // namespace

std::string encodeBase64(const unsigned char* data, unsigned int size) {
    const std::size_t groups = (size + kBytesPerGroup - 1) / kBytesPerGroup;
    // EVP_EncodeBlock writes a NUL behind its output.
    std::string text(groups * kCharactersPerGroup + 1, '\0');
    std::size_t written = 0;
    for (std::size_t read = 0; read < size;) {
        const std::size_t piece = std::min(size - read, kGroupsPerCall * kBytesPerGroup);
        written += static_cast<std::size_t>(
            EVP_EncodeBlock(asBytes(text.data() + written), data + read, static_cast<int>(piece)));
        read += piece;
    }
    text.resize(written);
    return text;
}

std::string decodeBase64(const std::string& text) {
    const auto stop = std::find_if_not(text.begin(), text.end(), isBase64Digit);
    const auto digits = static_cast<std::size_t>(stop - text.begin());
    const std::size_t groups = digits / kCharactersPerGroup;
    const std::size_t rest = digits % kCharactersPerGroup;

    std::string bytes;
    bytes.reserve((groups + 1) * kBytesPerGroup);
    decodeGroups(text.data(), groups, bytes);
    if (rest > 1) {
        std::array<char, kCharactersPerGroup> last{};
        last.fill('A');  // the digit of value zero
        std::copy(stop - static_cast<std::ptrdiff_t>(rest), stop, last.begin());
        decodeGroups(last.data(), 1, bytes);
        bytes.resize(bytes.size() - (kCharactersPerGroup - rest));
    }
    return bytes;
}

std::wstring encodeBase64Wide(const wchar_t* text, unsigned int size) {
    const std::string bytes = toUtf8(std::wstring(text, size));
    return fromUtf8(encodeBase64(asBytes(bytes.data()), static_cast<unsigned int>(bytes.size())));
}

std::wstring decodeBase64Wide(const std::wstring& text) {
    return fromUtf8(decodeBase64(toUtf8(text)));
}
