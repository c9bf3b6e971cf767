#include <QuarnKit/Formats/Npy/NpyReader.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <thread>

#include <QuarnKit/Base/Error.h>
#include "Support/NumberBytes.h"
#include "Support/Rng.h"
#include "Support/TemporaryFolder.h"

namespace quarn::test {
namespace {

using Numbers = std::vector<double>;

std::string arrayText(const std::string& number, const std::string& order, const std::string& shape) {
    return "{'descr': '" + number + "', 'fortran_order': " + order + ", 'shape': " + shape + ", }\n";
}

std::string fileText(const std::string& header, const std::string& data, int version = 1) {
    std::string text = "\x93NUMPY";
    text += static_cast<char>(version);
    text += '\0';
    const std::size_t lengthBytes = version == 1 ? 2 : 4;
    for (std::size_t i = 0; i < lengthBytes; ++i)
        text += static_cast<char>((header.size() >> (8 * i)) & 0xFFU);
    return text + header + data;
}

std::string bigEndianText(const Numbers& numbers) {
    std::string text = numberBytes(numbers);
    for (std::size_t i = 0; i < text.size(); i += sizeof(double))
        std::reverse(text.begin() + static_cast<std::ptrdiff_t>(i),
                     text.begin() + static_cast<std::ptrdiff_t>(i + sizeof(double)));
    return text;
}

Numbers numbersOf(NpyReader& reader, std::uint64_t maxRows) {
    Numbers all;
    Numbers block;
    while (reader.next(maxRows, block) > 0) {
        EXPECT_LE(block.size(), maxRows * reader.header().columnCount);
        all.insert(all.end(), block.begin(), block.end());
    }
    return all;
}

Numbers numbersOfText(const std::string& text, std::uint64_t maxRows = 2) {
    const TemporaryFolder folder;
    NpyReader reader(InputStream(folder.write("a.npy", text), "a NumPy array"));
    return numbersOf(reader, maxRows);
}

// The same bytes as a stream, in pieces.
Numbers numbersOfStream(const std::string& text, std::size_t pieceBytes) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
    std::jthread writer([&] {
        std::ofstream pipe(path, std::ios::binary);
        for (std::size_t i = 0; i < text.size(); i += pieceBytes)
            pipe << text.substr(i, pieceBytes) << std::flush;
    });
    NpyReader reader(InputStream(path, "a NumPy array"));
    return numbersOf(reader, 3);
}

ErrorDetails errorOf(const std::string& text) {
    try {
        static_cast<void>(numbersOfText(text));
    } catch (const Error& error) {
        EXPECT_NE(error.details().file.find("a.npy"), std::string::npos);
        return error.details();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

const Numbers kNumbers = {1.5, -2.0, 0.0, 4.25, -0.0, 1e300, 7.0, 8.0, 9.0, 10.0};
const Numbers kByColumns = {1.5, 0.0, -0.0, 7.0, 9.0, -2.0, 4.25, 1e300, 8.0, 10.0};

TEST(NpyReader, AllVersionsNumbersAndOrdersAreRead) {
    for (const int version : {1, 2, 3}) {
        const std::string little =
            fileText(arrayText("<f8", "False", "(5, 2)"), numberBytes(kNumbers), version);
        EXPECT_TRUE(numberBytes(numbersOfText(little)) == numberBytes(kNumbers));
        const std::string big =
            fileText(arrayText(">f8", "False", "(5, 2)"), bigEndianText(kNumbers), version);
        EXPECT_TRUE(numberBytes(numbersOfText(big)) == numberBytes(kNumbers));
        const std::string columns =
            fileText(arrayText("<f8", "True", "(5, 2)"), numberBytes(kByColumns), version);
        for (const std::uint64_t maxRows : {1U, 2U, 5U, 100U})
            EXPECT_TRUE(numberBytes(numbersOfText(columns, maxRows)) == numberBytes(kNumbers));
    }
    const std::vector<float> floats = {0.1F, -2.5F, 3e38F};
    EXPECT_EQ(numbersOfText(fileText(arrayText("<f4", "False", "(3,)"), numberBytes(floats))),
              Numbers(floats.begin(), floats.end()));
    EXPECT_EQ(numbersOfText(fileText(arrayText("<f4", "True", "(1, 3)"), numberBytes(floats))),
              Numbers(floats.begin(), floats.end()));
}

TEST(NpyReader, RandomBitsAreKept) {
    for (int i = 0; i < seedCount(20); ++i) {
        Rng rng(i);
        Numbers numbers;
        const int count = 3 * rng.integer(0, 2000);
        for (int j = 0; j < count; ++j) numbers.push_back(rng.spread());
        const std::string shape = "(" + std::to_string(numbers.size() / 3) + ", 3)";
        const std::string text = fileText(arrayText("<f8", "False", shape), numberBytes(numbers));
        EXPECT_TRUE(numberBytes(numbersOfText(text, static_cast<std::uint64_t>(rng.integer(1, 500)))) ==
                    numberBytes(numbers));
    }
}

TEST(NpyReader, StreamsAreReadInPiecesOfAnySize) {
    const std::string text = fileText(arrayText("<f8", "False", "(5, 2)"), numberBytes(kNumbers));
    for (const std::size_t pieceBytes : {1U, 7U, 16U, 1000U})
        EXPECT_EQ(numbersOfStream(text, pieceBytes), kNumbers);
}

TEST(NpyReader, AStreamHasToHaveTheSizeOfItsArray) {
    const std::string header = arrayText("<f8", "False", "(5, 2)");
    EXPECT_THROW(numbersOfStream(fileText(header, numberBytes(kNumbers) + "x"), 1000), Error);
    EXPECT_THROW(numbersOfStream(fileText(header, numberBytes(kNumbers).substr(1)), 1000), Error);
    EXPECT_THROW(numbersOfStream(fileText(header, ""), 1000), Error);
    EXPECT_THROW(numbersOfStream(fileText(arrayText("<f8", "True", "(5, 2)"), numberBytes(kByColumns)), 1000),
                 Error);
}

TEST(NpyReader, AFileHasToHaveTheSizeOfItsArray) {
    const std::string header = arrayText("<f8", "False", "(5, 2)");
    EXPECT_EQ(errorOf(fileText(header, numberBytes(kNumbers) + "x")).found,
              "found 81 bytes after the NumPy header");
    EXPECT_EQ(errorOf(fileText(header, numberBytes(kNumbers).substr(1))).expected,
              "80 (5 x 2 numbers of 8 bytes)");
    EXPECT_EQ(errorOf(fileText(arrayText("<f8", "True", "(2305843009213693951, 1)"), "")).found,
              "found 0 bytes after the NumPy header");
}

TEST(NpyReader, HostileBeginningsAreErrors) {
    const std::string good = fileText(arrayText("<f8", "False", "(5, 2)"), "");
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_NE(errorOf(good.substr(0, length)).found, "");
    EXPECT_EQ(errorOf(fileText("", "", 4)).found, "found the version 4.0 of the NumPy array format");
    EXPECT_EQ(errorOf(fileText("", "", 0)).expected, "1.0, 2.0 or 3.0");
    EXPECT_EQ(errorOf(std::string("\x93NUMPY\x02\x00\xFF\xFF\xFF\xFF", 12)).found,
              "found a NumPy header of 4294967295 bytes");
    EXPECT_EQ(errorOf(std::string("\x93NUMPY\x01\x00\xFF\xFF{", 11)).found,
              "found the end of the input in its header");
    EXPECT_EQ(errorOf("1,2\n").expected, "a NumPy array (.npy)");
}

TEST(NpyReader, AnArrayMayHaveNoRows) {
    EXPECT_TRUE(numbersOfText(fileText(arrayText("<f8", "False", "(0, 3)"), "")).empty());
    EXPECT_TRUE(numbersOfText(fileText(arrayText("<f8", "True", "(0, 3)"), "")).empty());
}

}  // namespace
}  // namespace quarn::test
