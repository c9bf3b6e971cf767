#include <Common/TextConversion.h>
#include <gtest/gtest.h>

#include <string>

#include "Reference/Formats/ReferenceBase64.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

std::string encode(const std::string& bytes) {
    return encodeBase64(reinterpret_cast<const unsigned char*>(bytes.data()),
                        static_cast<unsigned int>(bytes.size()));
}

std::string randomBytes(Rng& rng, std::size_t size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(rng.bits());
    return bytes;
}

TEST(Base64, KeepsTheVectorsOfTheStandard) {
    const std::string bytes = "foobar";
    const std::string texts[] = {"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        EXPECT_EQ(encode(bytes.substr(0, size)), texts[size]);
        EXPECT_EQ(decodeBase64(texts[size]), bytes.substr(0, size));
    }
}

TEST(Base64, DecodesFullAndPaddedGroups) {
    EXPECT_EQ(decodeBase64("Zm9v"), "foo");
    EXPECT_EQ(decodeBase64("Zm8="), "fo");
    EXPECT_EQ(decodeBase64("Zg=="), "f");
}

TEST(Base64, StopsAtALineBreak) {
    EXPECT_EQ(decodeBase64("Zm9v\nYmFy"), "foo");
    EXPECT_EQ(decodeBase64("Zm9v\r\nYmFy"), "foo");
    EXPECT_EQ(decodeBase64(" Zm9v"), "");
}

TEST(Base64, NoBytesAreNoText) {
    EXPECT_EQ(encodeBase64(nullptr, 0), "");
    EXPECT_EQ(decodeBase64(""), "");
}

TEST(Base64, EncodesAsManyBytesAsSpecified) {
    const std::string bytes = "foobar";
    EXPECT_EQ(encodeBase64(reinterpret_cast<const unsigned char*>(bytes.data()), 2), "Zm8=");
}

TEST(Base64, MissingPaddingLosesNothing) {
    EXPECT_EQ(decodeBase64("Zm8"), "fo");
    EXPECT_EQ(decodeBase64("Zg"), "f");
    EXPECT_EQ(decodeBase64("Zm9vYg"), "foob");
}

TEST(Base64, ASingleLeftOverCharacterGivesNoByte) {
    EXPECT_EQ(decodeBase64("Z"), "");
    EXPECT_EQ(decodeBase64("Z==="), "");
    EXPECT_EQ(decodeBase64("Zm9vY"), "foo");
    EXPECT_EQ(decodeBase64("Zm9vY==="), "foo");
}

TEST(Base64, NothingBehindTheFirstEqualsSignCounts) {
    EXPECT_EQ(decodeBase64("Zg==Zm9v"), "f");
    EXPECT_EQ(decodeBase64("=Zm9v"), "");
    EXPECT_EQ(decodeBase64("Zm=v"), "f");
    EXPECT_EQ(decodeBase64("Zm9v=Zm9v"), "foo");
}

TEST(Base64, UnusedBitsOfALastGroupAreIgnored) {
    EXPECT_EQ(decodeBase64("Zh=="), "f");
    EXPECT_EQ(decodeBase64("Zm9="), "fo");
}

TEST(Base64, TheUrlAlphabetStopsTheReading) {
    EXPECT_EQ(decodeBase64("Zm9v-mFy"), "foo");
    EXPECT_EQ(decodeBase64("Zm9v_mFy"), "foo");
}

TEST(Base64, ANulStopsTheReadingButIsEncodedLikeAnyByte) {
    EXPECT_EQ(decodeBase64(std::string("Zm9v\0YmFy", 9)), "foo");
    const std::string bytes("a\0b\0", 4);
    EXPECT_EQ(encode(bytes), "YQBiAA==");
    EXPECT_EQ(decodeBase64("YQBiAA=="), bytes);
}

// Texts of 0 to 8 digits with each of the 256 bytes put in at each place, and cut behind it or not.
TEST(Base64, EachByteAtEachPlaceIsADigitOrStopsTheReading) {
    const std::string digits = "Q+x/9Zas";
    for (std::size_t length = 0; length <= digits.size(); ++length) {
        for (std::size_t place = 0; place <= length; ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = digits.substr(0, length);
                text.insert(place, 1, static_cast<char>(byte));
                const std::string head = text.substr(0, place + 1);
                ASSERT_EQ(decodeBase64(text), referenceDecodeBase64(text)) << place << " " << byte;
                ASSERT_EQ(decodeBase64(head), referenceDecodeBase64(head)) << place << " " << byte;
            }
        }
    }
}

// Each form that digits, "=" and a foreign character can take in up to six places.
TEST(Base64, EachMixOfDigitsPaddingAndForeignCharactersReadsAsBitByBit) {
    constexpr std::string_view kKinds = "Z/=\n";
    for (int length = 0; length <= 6; ++length) {
        for (int code = 0; code < 1 << (2 * length); ++code) {
            std::string text;
            for (int place = 0; place < length; ++place)
                text += kKinds[static_cast<std::size_t>((code >> (2 * place)) & 3)];
            ASSERT_EQ(decodeBase64(text), referenceDecodeBase64(text)) << text;
        }
    }
}

TEST(Base64, EachOneAndTwoBytesComeBack) {
    for (int first = 0; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(encode(one), referenceEncodeBase64(one));
        ASSERT_EQ(decodeBase64(encode(one)), one);
        for (int second = 0; second < 256; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(encode(two), referenceEncodeBase64(two));
            ASSERT_EQ(decodeBase64(encode(two)), two);
        }
    }
}

TEST(Base64, EachGroupOfThreeBytesComesBack) {
    for (int first = 0; first < 256; ++first) {
        std::string bytes;
        for (int rest = 0; rest < 65536; ++rest)
            bytes += {static_cast<char>(first), static_cast<char>(rest >> 8), static_cast<char>(rest)};
        const std::string text = encode(bytes);
        ASSERT_EQ(text.size(), 65536U * 4);
        ASSERT_TRUE(decodeBase64(text) == bytes) << first;
    }
}

TEST(Base64, RandomBytesComeBackAndReadAsBitByBit) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const std::string bytes = randomBytes(rng, static_cast<std::size_t>(rng.integer(0, 200)));
        const std::string text = encode(bytes);
        ASSERT_EQ(text, referenceEncodeBase64(bytes));
        ASSERT_EQ(decodeBase64(text), bytes);
    }
}

TEST(Base64, MegabytesComeBackInOneRun) {
    Rng rng(0);
    const std::string bytes = randomBytes(rng, 5 * 1024 * 1024);
    const std::string text = encode(bytes);
    EXPECT_EQ(text.find_first_not_of(kBase64Alphabet), text.size() - 1);  // two bytes over: one "="
    EXPECT_TRUE(text == referenceEncodeBase64(bytes));
    EXPECT_TRUE(decodeBase64(text) == bytes);
}

}  // namespace
}  // namespace quarn::test
