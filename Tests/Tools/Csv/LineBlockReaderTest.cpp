#include "Csv/LineBlockReader.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>

#include "Support/Rng.h"
#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using Blocks = std::vector<std::string>;
using Sizes = std::vector<std::size_t>;

constexpr std::size_t kBlockSize = 65536;

Blocks blocksOf(const std::string& text, std::size_t size = kBlockSize) {
    const TemporaryFile file(text);
    tool::LineBlockReader input(InputStream(file.path(), "a file"), size);
    Blocks blocks;
    for (std::string_view lines; input.next(lines);) blocks.emplace_back(lines);
    return blocks;
}

Sizes sizesOf(const Blocks& blocks) {
    Sizes sizes;
    for (const std::string& block : blocks) sizes.push_back(block.size());
    return sizes;
}

std::string lineOf(std::size_t length) {
    return std::string(length - 1, 'x') + "\n";
}

TEST(LineBlockReader, AnEmptyInputHasNoBlock) {
    EXPECT_THAT(blocksOf(""), ElementsAre());
}

TEST(LineBlockReader, ASmallInputIsOneBlock) {
    EXPECT_THAT(blocksOf("\n"), ElementsAre("\n"));
    EXPECT_THAT(blocksOf("a\nb\n"), ElementsAre("a\nb\n"));
}

TEST(LineBlockReader, TheLastLineNeedsNoLineFeed) {
    const Blocks blocks = blocksOf("a\nb");
    std::string joined;
    for (const std::string& block : blocks) joined += block;
    EXPECT_EQ(joined, "a\nb");
}

TEST(LineBlockReader, ABlockEndsBetweenLines) {
    const std::string line = lineOf(40000);
    EXPECT_THAT(sizesOf(blocksOf(line + line + line)), ElementsAre(40000, 40000, 40000));
}

TEST(LineBlockReader, LinesThatFillABlockExactlyAreOne) {
    const std::string block = lineOf(kBlockSize / 2) + lineOf(kBlockSize / 2);
    EXPECT_THAT(sizesOf(blocksOf(block)), ElementsAre(kBlockSize));
    EXPECT_THAT(sizesOf(blocksOf(block + "a\n")), ElementsAre(kBlockSize, 2));
    EXPECT_THAT(sizesOf(blocksOf(block + block)), ElementsAre(kBlockSize, kBlockSize));
}

TEST(LineBlockReader, ALongerLineMakesItsBlockLonger) {
    const std::string line = lineOf(3 * kBlockSize);
    const Blocks blocks = blocksOf("a\n" + line + "b\n");
    ASSERT_GE(blocks.size(), 2U);
    EXPECT_EQ(blocks[0], "a\n");
    EXPECT_TRUE(blocks[1].starts_with(line));
}

TEST(LineBlockReader, AnEndlessLineIsCut) {
    const Blocks blocks = blocksOf(std::string(3 * tool::kMaxLineBytes, 'x'));
    ASSERT_GT(blocks.size(), 1U);
    EXPECT_GT(blocks.front().size(), tool::kMaxLineBytes);
    EXPECT_LT(blocks.front().size(), 2 * tool::kMaxLineBytes);
}

TEST(LineBlockReader, AnyLinesComeWholeAndInTheirOrder) {
    for (int i = 0; i < seedCount(50); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::string text;
        while (text.size() < 400000)
            text += lineOf(static_cast<std::size_t>(rng.integer(1, i % 2 == 0 ? 100 : 90000)));
        std::string joined;
        for (const std::string& block : blocksOf(text, static_cast<std::size_t>(rng.integer(1, 200000)))) {
            EXPECT_EQ(block.back(), '\n');
            joined += block;
        }
        ASSERT_TRUE(joined == text);
    }
}

TEST(LineBlockReader, WholeLinesAreNotKeptBackWhileTheInputWaits) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const FileHandle reader(ends[0]);
    const FileHandle writer(ends[1]);
    tool::LineBlockReader input(InputStream("/dev/fd/" + std::to_string(reader.get()), "a pipe"), kBlockSize);
    std::string_view lines;
    ASSERT_EQ(::write(writer.get(), "a\nb\nc", 5), 5);
    ASSERT_TRUE(input.next(lines));
    EXPECT_EQ(lines, "a\nb\n");
    ASSERT_EQ(::write(writer.get(), "d\n", 2), 2);
    ASSERT_TRUE(input.next(lines));
    EXPECT_EQ(lines, "cd\n");
}

}  // namespace
}  // namespace quarn::test
