#include <QuarnKit/Base/InputStream.h>

#include <gtest/gtest.h>

#include <array>

#include <QuarnKit/Base/Error.h>
#include "Support/TemporaryFolder.h"

namespace quarn::test {
namespace {

std::string restOf(InputStream& input) {
    std::string text;
    std::array<char, 4> buffer{};
    for (std::size_t count = 1; count > 0;) {
        count = input.read(buffer.data(), buffer.size());
        text.append(buffer.data(), count);
    }
    return text;
}

TEST(InputStream, BytesThatWereComparedAreReadAgain) {
    const TemporaryFolder folder;
    const std::string path = folder.write("input", "abcdefgh");
    for (const char* prefix : {"", "a", "abcdefgh", "abX", "X", "abcdefghi"}) {
        InputStream input(path, "a file");
        EXPECT_EQ(input.startsWith(prefix), std::string("abcdefgh").starts_with(prefix)) << prefix;
        ASSERT_TRUE(input.rest().has_value());
        EXPECT_EQ(input.rest()->begin, 0U);
        EXPECT_EQ(input.rest()->size, 8U);
        EXPECT_TRUE(input.startsWith("abc"));
        EXPECT_EQ(restOf(input), "abcdefgh");
        EXPECT_EQ(input.rest()->size, 0U);
    }
}

TEST(InputStream, AFileIsReadAtAnyOffset) {
    const TemporaryFolder folder;
    InputStream input(folder.write("input", "abcdefgh"), "a file");
    std::array<char, 3> buffer{};
    input.readAt(4, buffer.data(), buffer.size());
    EXPECT_EQ(std::string(buffer.data(), buffer.size()), "efg");
    EXPECT_THROW(input.readAt(6, buffer.data(), buffer.size()), Error);
    EXPECT_EQ(restOf(input), "abcdefgh");
}

TEST(InputStream, ADeviceHasNoRest) {
    EXPECT_FALSE(InputStream("/dev/null", "a file").rest().has_value());
}

}  // namespace
}  // namespace quarn::test
