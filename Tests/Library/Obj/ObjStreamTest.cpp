#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjText.h>

#include <algorithm>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>

using namespace quarn;

namespace {

std::string wholeOf(std::istream& in) {
    std::string text = "what was there before";
    detail::readWholeStream(in, text);
    return text;
}

// Reads like a pipe: no position is ever known.
class Pipe : public std::streambuf {
public:
    explicit Pipe(std::string contents) : bytes(std::move(contents)) {
        setg(bytes.data(), bytes.data(), bytes.data() + bytes.size());
    }

private:
    std::string bytes;
};

// Reports more bytes than it returns.
class ShortBuffer : public std::stringbuf {
public:
    ShortBuffer(const std::string& contents, std::streamoff toldBytes)
        : std::stringbuf(contents, std::ios::in), told(toldBytes) {}

protected:
    pos_type seekoff(off_type offset, std::ios::seekdir direction, std::ios::openmode which) override {
        const bool isQuestion = direction == std::ios::cur && offset == 0;
        if (!isQuestion) isAtEnd = direction == std::ios::end;
        return isAtEnd ? pos_type(told) : std::stringbuf::seekoff(offset, direction, which);
    }

private:
    bool isAtEnd = false;
    std::streamoff told;
};

}  // namespace

TEST(ObjStream, WholeStreamIsReadWhereverItStands) {
    std::istringstream in("v 1 2 3\nv 4 5 6\n");
    for (const int position : {0, 5, 16}) {
        in.seekg(position);
        EXPECT_EQ(wholeOf(in), in.str());
        EXPECT_TRUE(in.good());
        EXPECT_EQ(in.tellg(), std::streampos(position));
    }
}

TEST(ObjStream, AllBytesStay) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    std::istringstream in(bytes + "\r\n");
    EXPECT_EQ(wholeOf(in), bytes + "\r\n");
}

TEST(ObjStream, LargeStreamIsReadWhole) {
    std::string bytes(3000001, ' ');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>('a' + i % 23);
    std::istringstream in(bytes);
    EXPECT_TRUE(wholeOf(in) == bytes);
    EXPECT_TRUE(in.good());
}

TEST(ObjStream, EmptyStreamIsEmpty) {
    std::istringstream in("");
    EXPECT_EQ(wholeOf(in), "");
    EXPECT_TRUE(in.good());
}

TEST(ObjStream, StreamWithAFlagSetCountsAsEmptyAndKeepsIt) {
    for (const auto flag : {std::ios::failbit, std::ios::badbit, std::ios::eofbit}) {
        std::istringstream in("v 1 2 3\n");
        in.setstate(flag);
        EXPECT_EQ(wholeOf(in), "");
        EXPECT_EQ(in.rdstate(), flag);
        in.clear();
        EXPECT_EQ(wholeOf(in), "v 1 2 3\n");
    }
}

TEST(ObjStream, StreamWithoutABufferCountsAsEmpty) {
    std::istream in(nullptr);
    EXPECT_EQ(wholeOf(in), "");
}

TEST(ObjStream, StreamThatCannotSeekCountsAsEmpty) {
    Pipe pipe("v 1 2 3\n");
    std::istream in(&pipe);
    EXPECT_EQ(wholeOf(in), "");
    // Nothing was taken out of it.
    EXPECT_EQ(in.get(), 'v');
}

TEST(ObjStream, BytesThatDoNotComeAreNul) {
    ShortBuffer buffer("v 1 2 3\n", 10);
    std::istream in(&buffer);
    EXPECT_EQ(wholeOf(in), std::string("v 1 2 3\n\0\0", 10));
    EXPECT_TRUE(in.fail());
}

TEST(ObjStream, OnlyTheSpecifiedBytesAreRead) {
    ShortBuffer buffer("v 1 2 3\n", 3);
    std::istream in(&buffer);
    EXPECT_EQ(wholeOf(in), "v 1");
}
