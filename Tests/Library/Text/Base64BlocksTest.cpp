// Base64 of many bytes at once, next to a loop over single bytes.
#include <Common/TextConversion.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Reference/Formats/ReferenceBase64.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

// Bytes that go through the conversion at one go; the tests are about its borders.
constexpr std::size_t kEncodedBlock = 3 * 2048;
constexpr std::size_t kDecodedBlock = 4 * 2048;

std::string randomBytes(Rng& rng, std::size_t size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(rng.bits());
    return bytes;
}

std::string randomDigits(Rng& rng, std::size_t size) {
    std::string digits(size, '\0');
    for (char& digit : digits) digit = kBase64Alphabet[rng.bits() % kBase64Alphabet.size()];
    return digits;
}

// The neighbors of the digits' ranges, and frequent characters of texts.
const std::string kForeign("=\n\r \0-_,.:@[`{*~\x7F\x80\xC1\xFF", 20);

std::vector<std::size_t> sizesAround(std::size_t middle) {
    std::vector<std::size_t> sizes;
    for (std::size_t size = middle - 9; size <= middle + 9; ++size) sizes.push_back(size);
    return sizes;
}

TEST(Base64Blocks, EachLengthIsEncodedFromEachAddress) {
    Rng rng(0);
    const std::string bytes = randomBytes(rng, 64);
    for (std::size_t start = 0; start < 16; ++start) {
        for (unsigned int size = 0; size <= 48; ++size) {
            const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data()) + start;
            ASSERT_EQ(encodeBase64(data, size), referenceEncodeBase64(bytes.substr(start, size)))
                << start << " " << size;
        }
    }
}

TEST(Base64Blocks, EachForeignByteStopsTheReadingAtEachPlace) {
    ASSERT_EQ(kForeign.find_first_of(kBase64Alphabet), std::string::npos);
    Rng rng(1);
    const std::string digits = randomDigits(rng, 40);
    for (std::size_t place = 0; place < digits.size(); ++place) {
        for (const char foreign : kForeign) {
            std::string text = digits;
            text[place] = foreign;
            ASSERT_EQ(decodeBase64(text), referenceDecodeBase64(digits.substr(0, place)))
                << place << " " << +foreign;
        }
    }
}

TEST(Base64Blocks, SeveralForeignBytesStopTheReadingAtTheFirst) {
    for (int i = 0; i < seedCount(20000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::string text = randomDigits(rng, static_cast<std::size_t>(rng.integer(0, 60)));
        for (int left = rng.integer(0, 4); left > 0 && !text.empty(); --left)
            text[rng.bits() % text.size()] = kForeign[rng.bits() % kForeign.size()];
        ASSERT_EQ(decodeBase64(text), referenceDecodeBase64(text));
    }
}

TEST(Base64Blocks, NoBorderShowsInWhatIsEncoded) {
    Rng rng(2);
    const std::string bytes = randomBytes(rng, 2 * kEncodedBlock + 9);
    for (const std::size_t middle : {kEncodedBlock, 2 * kEncodedBlock}) {
        for (const std::size_t size : sizesAround(middle)) {
            const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
            ASSERT_TRUE(encodeBase64(data, static_cast<unsigned int>(size)) ==
                        referenceEncodeBase64(bytes.substr(0, size)))
                << size;
        }
    }
}

TEST(Base64Blocks, NoBorderShowsWhereTextEndsOrStops) {
    Rng rng(3);
    const std::string digits = randomDigits(rng, 2 * kDecodedBlock + 20);
    for (const std::size_t middle : {kDecodedBlock, 2 * kDecodedBlock}) {
        for (const std::size_t size : sizesAround(middle)) {
            const std::string expected = referenceDecodeBase64(digits.substr(0, size));
            ASSERT_TRUE(decodeBase64(digits.substr(0, size)) == expected) << size;
            std::string text = digits;
            text[size] = '=';
            ASSERT_TRUE(decodeBase64(text) == expected) << size;
        }
    }
}

// One odd character in a long text of letters.
TEST(Base64Blocks, WideTextIsConvertedLikeItsUtf8Form) {
    for (int i = 0; i < seedCount(2000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        std::wstring text(static_cast<std::size_t>(rng.integer(1, 1200)), L'v');
        const std::vector<wchar_t> odd = {L'\0', L'\x7F', L'\x80', L'\u20AC', L'\U0001F5B5'};
        text[rng.bits() % text.size()] = odd[rng.bits() % odd.size()];
        const std::wstring encoded = encodeBase64Wide(text.data(), static_cast<unsigned int>(text.size()));
        const std::string expected = referenceEncodeBase64(toUtf8(text));
        ASSERT_EQ(encoded, std::wstring(expected.begin(), expected.end()));
        ASSERT_EQ(decodeBase64Wide(encoded), text);

        std::wstring broken = encoded;
        const std::size_t place = rng.bits() % broken.size();
        broken[place] = odd[rng.bits() % odd.size()];
        ASSERT_EQ(decodeBase64Wide(broken), fromUtf8(referenceDecodeBase64(expected.substr(0, place))));
        broken.back() = static_cast<wchar_t>(0xD800);
        ASSERT_EQ(decodeBase64Wide(broken), L"");
    }
}

}  // namespace
}  // namespace quarn::test
