#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <bit>
#include <cstddef>
#include <limits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/Bits.h"
#include "Support/FixedConfig.h"
#include "Support/HashText.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

struct SizedHash {
    double width;
    double height;
    const char* hex;
};

// hashlib.sha1(struct.pack("<dd", width, height)).hexdigest() in Python.
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr SizedHash kFlatHashes[] = {
    {4.0, 3.0, "0fbc620c393c8baa53190e35e8cab90e1149cc10"},
    {3.0, 4.0, "aa6492ba14f6078e808e5b44f426279dbbc4feac"},
    {-1.0, -1.0, "2e7751e04170c6186a30e107953f7fe7ba624eb0"},
    {0.0, 0.0, "e129f27c5103bc5cc44bcdf0a15e160d445066ff"},
    {-0.0, 0.0, "e8ab38ce041edad592b19aa555963310535c47ec"},
    {0.0, -0.0, "6195934e10f310a7e24f73c6ee5eb2866a2fd6ca"},
    {0.1, 0.2, "e729bd852e8e6ba07c63bbca79d106542d60c88a"},
    {2.0, -3.0, "e4bc3f94289e46ef489becc5d660b3e9d17beb0f"},
    {kInfinity, -kInfinity, "3f95577b368c67fba37853783b788ce5a691761e"},
    {5e-324, 1.7976931348623157e308, "ee1c544df77a365e3b4e405d6ad7b9fc17801581"},
    {3.141592653589793, 2.718281828459045, "1e2e323db2bd6ceb4d15a48d3d1ef639290efde5"},
};

}  // namespace

TEST(DataHash, RecordHasNoPadding) {
    EXPECT_EQ(sizeof(FlatScreenParams), 16U);
    EXPECT_EQ(offsetof(FlatScreenParams, width), 0U);
    EXPECT_EQ(offsetof(FlatScreenParams, height), 8U);
}

TEST(DataHash, FlatScreenIsNamedByItsTwoNumbersOnEveryRoad) {
    for (const SizedHash& expected : kFlatHashes) {
        SCOPED_TRACE(expected.hex);
        FixedConfig config(expected.width, expected.height);
        EXPECT_EQ(hexOf(FlatScreen(expected.width, expected.height).getUniqueDataHash()), expected.hex);
        EXPECT_EQ(hexOf(FlatScreen(&config).getUniqueDataHash()), expected.hex);
        EXPECT_EQ(hexOf(FlatScreen::calcUniqueDataHash(&config)), expected.hex);
        EXPECT_EQ(hexOf(FlatScreen::calcUniqueDataHash(FlatScreenParams{expected.width, expected.height})),
                  expected.hex);
    }
}

TEST(DataHash, DefaultConstructedFlatScreenHashesMinusOne) {
    EXPECT_EQ(hexOf(FlatScreen().getUniqueDataHash()), "2e7751e04170c6186a30e107953f7fe7ba624eb0");
}

TEST(DataHash, MinusZeroIsAnotherSizeThanZero) {
    EXPECT_NE(FlatScreen(-0.0, 0.0).getUniqueDataHash(), FlatScreen(0.0, 0.0).getUniqueDataHash());
    EXPECT_NE(FlatScreen(0.0, -0.0).getUniqueDataHash(), FlatScreen(0.0, 0.0).getUniqueDataHash());
}

TEST(DataHash, PayloadOfNaNCounts) {
    const auto hashOfNaN = [](std::uint64_t bits) {
        return hexOf(FlatScreen(std::bit_cast<double>(bits), 1.0).getUniqueDataHash());
    };
    EXPECT_EQ(hashOfNaN(0x7ff8000000000000), "a5415e613a104244abb44d1d133e964d75e883b4");
    EXPECT_EQ(hashOfNaN(0x7ff8000000000001), "3e959ff20273372d5b9581b55594e1c6f27e7d77");
}

TEST(DataHash, EqualScreensHaveEqualHashesAndOthersDiffer) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double size[2] = {wildNumber(rng), wildNumber(rng)};
        const FlatScreen screen(size[0], size[1]);
        const FlatScreen same(size[0], size[1]);
        const FlatScreen turned(size[1], size[0]);
        EXPECT_EQ(screen.getUniqueDataHash(), same.getUniqueDataHash());
        const std::string bytes(reinterpret_cast<const char*>(size), sizeof size);
        EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(bytes));
        const bool isSquare = static_cast<bool>(sameBits(size[0], size[1]));
        EXPECT_EQ(screen.getUniqueDataHash() == turned.getUniqueDataHash(), isSquare);
    }
}

TEST(DataHash, UpdateGeometryChangesTheHash) {
    FixedConfig config(4.0, 3.0);
    FlatScreen screen(1.0, 1.0);
    screen.updateGeometry(&config);
    EXPECT_EQ(screen.getUniqueDataHash(), FlatScreen::calcUniqueDataHash(&config));
}

TEST(DataHash, BytesAroundABlockOfSHA1) {
    // hashlib.sha1(b"a" * size).hexdigest()
    const std::pair<std::size_t, const char*> cases[] = {
        {0, "da39a3ee5e6b4b0d3255bfef95601890afd80709"},   {1, "86f7e437faa5a7fce15d1ddcb9eaeaea377667b8"},
        {55, "c1c8bbdc22796e28c0e15163d20899b65621d65a"},  {56, "c2db330f6083854c99d4b5bfb6e8f29f201be699"},
        {63, "03f09f5b158a7a8cdad920bddc29b81c18a551f5"},  {64, "0098ba824b5c16427bd7a1122a5a442a25ec644d"},
        {65, "11655326c708d70319be2610e8a57d9a5b959d3b"},  {119, "ee971065aaa017e0632a8ca6c77bb3bf8b1dfc56"},
        {120, "f34c1488385346a55709ba056ddd08280dd4c6d6"}, {1000, "291e9a6c66994949b57ba5e650361e98fc36b1ba"},
    };
    for (const auto& [size, hex] : cases) {
        const std::string data(size, 'a');
        EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(data)), hex);
        const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
        EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(bytes, size)), hex);
    }
}

TEST(DataHash, StringCountsWithItsZeroBytesAndWithoutItsTerminator) {
    const std::string data("abc\0def", 7);
    EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(data)), "487b1975d97215516d7267dff3557c0676956056");
    std::string allBytes;
    for (int i = 0; i < 256; ++i) allBytes += static_cast<char>(i);
    EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(allBytes)), "4916d6bdb7f78e6803698cab32d1586ea457dfc8");
}

TEST(DataHash, ReadsNoMoreThanItsSize) {
    const unsigned char data[] = {'a', 'b', 'c'};
    EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(data, 1)), "86f7e437faa5a7fce15d1ddcb9eaeaea377667b8");
    EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(data, 0)), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
    EXPECT_EQ(hexOf(ScreenGeometry::calculateHash(nullptr, 0)), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

// Nothing reports it, so the digest is what it was before: that of a mesh without contents.
TEST(DataHash, IsZeroWhereOpenSSLOffersNoSHA1) {
    const FlatScreen screen(4.0, 3.0);
    ASSERT_EQ(EVP_set_default_properties(nullptr, "provider=none"), 1);
    const auto hash = screen.getUniqueDataHash();
    ASSERT_EQ(EVP_set_default_properties(nullptr, ""), 1);
    EXPECT_EQ(hash, ScreenGeometry::DataHash{});
    EXPECT_EQ(hexOf(screen.getUniqueDataHash()), "0fbc620c393c8baa53190e35e8cab90e1149cc10");
}
