// Base64 compared with a loop over the bytes.
#include <Common/TextConversion.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <random>
#include <string>

#include "Reference/Formats/ReferenceBase64.h"

namespace {

using quarn::test::referenceDecodeBase64;
using quarn::test::referenceEncodeBase64;

// Not a multiple of three.
constexpr std::size_t kSize = 3'000'001;

std::string randomBytes() {
    std::mt19937 random(1);
    std::string bytes(kSize, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() % 128);
    return bytes;
}

// Freed memory stays with the process: whether the pages of a result are fresh depends on what ran
// before, and costs more than the conversion.
bool keepFreedMemory() {
    constexpr int kMost = 1 << 30;
    return mallopt(M_MMAP_THRESHOLD, kMost) == 1 && mallopt(M_TRIM_THRESHOLD, kMost) == 1;
}
const bool kIsMemoryKept = keepFreedMemory();

const std::string kBytes = randomBytes();
const std::string kText = referenceEncodeBase64(kBytes);
// The text that its UTF-8 form is; all bytes are ASCII.
const std::wstring kWideBytes(kBytes.begin(), kBytes.end());
const std::wstring kWideText(kText.begin(), kText.end());

std::string encode(const std::string& bytes) {
    return encodeBase64(reinterpret_cast<const unsigned char*>(bytes.data()),
                        static_cast<unsigned int>(bytes.size()));
}

std::wstring encodeWide(const std::wstring& text) {
    return encodeBase64Wide(text.data(), static_cast<unsigned int>(text.size()));
}

std::string narrowByReference(const std::wstring& text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        if (character >= 0x80) return {};
        bytes += static_cast<char>(character);
    }
    return bytes;
}

std::wstring widenByReference(const std::string& bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char byte : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    return text;
}

std::wstring encodeWideByReference(const std::wstring& text) {
    return widenByReference(referenceEncodeBase64(narrowByReference(text)));
}

std::wstring decodeWideByReference(const std::wstring& text) {
    return widenByReference(referenceDecodeBase64(narrowByReference(text)));
}

template <class Text>
void measure(benchmark::State& state, Text (*convert)(const Text&), const Text& text, const Text& expected) {
    if (convert(text) != expected) state.SkipWithError("another text");
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(convert(text));
}

BENCHMARK_CAPTURE(measure, base64, encode, kBytes, kText)->Name("base64/encode/library");
BENCHMARK_CAPTURE(measure, base64, referenceEncodeBase64, kBytes, kText)->Name("base64/encode/reference");
BENCHMARK_CAPTURE(measure, base64, decodeBase64, kText, kBytes)->Name("base64/decode/library");
BENCHMARK_CAPTURE(measure, base64, referenceDecodeBase64, kText, kBytes)->Name("base64/decode/reference");
BENCHMARK_CAPTURE(measure, base64, encodeWide, kWideBytes, kWideText)->Name("base64/encode-wide/library");
BENCHMARK_CAPTURE(measure, base64, encodeWideByReference, kWideBytes, kWideText)
    ->Name("base64/encode-wide/reference");
BENCHMARK_CAPTURE(measure, base64, decodeBase64Wide, kWideText, kWideBytes)
    ->Name("base64/decode-wide/library");
BENCHMARK_CAPTURE(measure, base64, decodeWideByReference, kWideText, kWideBytes)
    ->Name("base64/decode-wide/reference");

}  // namespace
