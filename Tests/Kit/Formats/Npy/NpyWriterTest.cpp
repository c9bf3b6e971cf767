#include <QuarnKit/Formats/Npy/NpyWriter.h>

#include <gtest/gtest.h>

#include <filesystem>

#include <QuarnKit/Formats/Npy/NpyReader.h>
#include "Support/NumberBytes.h"
#include "Support/Rng.h"
#include "Support/TemporaryFolder.h"

namespace quarn::test {
namespace {

using Numbers = std::vector<double>;

void writeArray(const std::string& path, const Numbers& numbers, std::uint64_t columns,
                std::size_t rowsAtOnce) {
    OutputFile output(path, {});
    NpyWriter writer(output, columns);
    const std::size_t step = rowsAtOnce * columns;
    for (std::size_t i = 0; i < numbers.size(); i += step)
        writer.write(std::span(numbers).subspan(i, std::min(step, numbers.size() - i)));
    writer.finish();
    output.finish();
}

TEST(NpyWriter, WrittenArraysAreReadAgainBitForBit) {
    const TemporaryFolder folder;
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        const std::uint64_t columns = static_cast<std::uint64_t>(rng.integer(1, 12));
        Numbers numbers;
        const std::uint64_t count = columns * static_cast<std::uint64_t>(rng.integer(0, 20000));
        for (std::uint64_t j = 0; j < count; ++j) numbers.push_back(rng.spread());
        writeArray(folder.path("a.npy"), numbers, columns, static_cast<std::size_t>(rng.integer(1, 5000)));
        NpyReader reader(InputStream(folder.path("a.npy"), "a NumPy array"));
        EXPECT_EQ(reader.header().columnCount, columns);
        EXPECT_EQ(reader.header().rowCount, numbers.size() / columns);
        Numbers found;
        reader.next(1000000, found);
        EXPECT_TRUE(numberBytes(found) == numberBytes(numbers));
    }
}

TEST(NpyWriter, TheHeaderIsTheOneOfNumPyWithMorePadding) {
    const TemporaryFolder folder;
    writeArray(folder.path("a.npy"), {1.0, 2.0}, 2, 1);
    const std::string text = bytesOf(folder.path("a.npy"));
    const std::string header = "{'descr': '<f8', 'fortran_order': False, 'shape': (1, 2), }";
    ASSERT_EQ(text.size(), 144U);
    EXPECT_EQ(text.substr(0, 127),
              std::string("\x93NUMPY\x01\x00\x76\x00", 10) + header + std::string(117 - header.size(), ' '));
    EXPECT_EQ(text.substr(127), std::string("\n\0\0\0\0\0\0\xF0\x3F\0\0\0\0\0\0\0\x40", 17));
}

TEST(NpyWriter, AnArrayThatIsNotFinishedLeavesNoFile) {
    const TemporaryFolder folder;
    {
        OutputFile output(folder.path("a.npy"), {});
        NpyWriter writer(output, 2);
        writer.write(Numbers(100000, 1.0));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

}  // namespace
}  // namespace quarn::test
