#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Stl/StlParser.h>

#include <algorithm>
#include <istream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

using quarn::detail::readRest;

namespace {

std::string someBytes(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 251);
    return bytes;
}

// Gives a few bytes at a time for requests of any size, and reports a number of bytes that it does
// not have.
class SlowBuffer : public std::streambuf {
public:
    SlowBuffer(std::string contents, std::size_t atATime, std::streamsize told)
        : bytes(std::move(contents)), step(atATime), toldBytes(told) {}

protected:
    int_type underflow() override {
        if (place == bytes.size()) return atEnd();
        const std::size_t count = std::min(step, bytes.size() - place);
        setg(bytes.data() + place, bytes.data() + place, bytes.data() + place + count);
        place += count;
        return traits_type::to_int_type(*gptr());
    }
    std::streamsize xsgetn(char* to, std::streamsize most) override {
        if (gptr() == egptr() && traits_type::eq_int_type(underflow(), traits_type::eof())) return 0;
        const std::streamsize count = std::min<std::streamsize>(most, egptr() - gptr());
        std::copy_n(gptr(), count, to);
        gbump(static_cast<int>(count));
        return count;
    }
    std::streamsize showmanyc() override { return toldBytes; }
    virtual int_type atEnd() { return traits_type::eof(); }

private:
    std::string bytes;
    std::size_t step;
    std::streamsize toldBytes;
    std::size_t place = 0;
};

class BrokenBuffer : public SlowBuffer {
public:
    using SlowBuffer::SlowBuffer;

protected:
    int_type atEnd() override { throw std::runtime_error("broken"); }
};

}  // namespace

TEST(StlBytes, GoFromWhereTheStreamStandsToItsEnd) {
    const std::string bytes = someBytes(200001);
    for (const std::size_t start : {0U, 1U, 65536U, 200000U, 200001U}) {
        std::istringstream in(bytes);
        in.seekg(static_cast<std::streamoff>(start));
        EXPECT_TRUE(readRest(in) == bytes.substr(start)) << start;
        EXPECT_TRUE(in.good());
        EXPECT_EQ(readRest(in), "");
    }
}

TEST(StlBytes, AreThoseOfAStreamBufferIteration) {
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 131072U, 131073U}) {
        const std::string bytes = someBytes(size);
        std::istringstream in(bytes);
        std::istringstream iterated(bytes);
        EXPECT_TRUE(readRest(in) ==
                    std::string(std::istreambuf_iterator<char>(iterated), std::istreambuf_iterator<char>()))
            << size;
    }
}

TEST(StlBytes, AreReadWhateverTheStateOfTheStream) {
    for (const std::ios::iostate state : {std::ios::failbit, std::ios::badbit, std::ios::eofbit}) {
        std::istringstream in("solid");
        in.setstate(state);
        EXPECT_EQ(readRest(in), "solid");
        EXPECT_EQ(in.rdstate(), state);
    }
}

TEST(StlBytes, OfAStreamWithoutABufferAreNone) {
    std::istream in(nullptr);
    EXPECT_EQ(readRest(in), "");
}

TEST(StlBytes, OfABufferThatGivesFewAtATimeAreAll) {
    const std::string bytes = someBytes(70001);
    for (const std::size_t atATime : {1U, 7U, 4096U, 70000U}) {
        for (const std::streamsize told : {-1, 0, 1, 100000}) {
            SlowBuffer buffer(bytes, atATime, told);
            std::istream in(&buffer);
            EXPECT_TRUE(readRest(in) == bytes) << atATime << " " << told;
        }
    }
}

TEST(StlBytes, OfABufferThatThrowsDoNotCome) {
    for (const std::size_t size : {0U, 5U, 65536U}) {
        BrokenBuffer buffer(someBytes(size), 100, 0);
        std::istream in(&buffer);
        EXPECT_THROW((void)readRest(in), std::runtime_error);
    }
}
