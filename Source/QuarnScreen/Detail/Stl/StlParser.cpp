#include "StlParser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>
#include <streambuf>
#include <string>

#include "StlBinary.h"

namespace quarn::detail {
namespace {

// Capacity for the rest of a line and its terminator.
constexpr std::streamsize kLineBufferSize = 80;

// Parses the text form token by token. Throws error messages as strings, which readStl() catches.
class StlParser {
public:
    StlParser(std::istream& stream, std::size_t streamSize, std::vector<Triangle>& output)
        : in(stream), size(streamSize), triangles(output) {}

    void parse() {
        while (state != State::End) {
            if (in.eof()) throw std::string("Error: unexpected EOF\n");
            const std::string token = nextToken();
            switch (state) {
                case State::Start:
                    start(token);
                    break;
                case State::InSolid:
                    inSolid(token);
                    break;
                case State::InFacet:
                    inFacet(token);
                    break;
                default:
                    inLoop(token);
                    break;
            }
        }
    }

private:
    enum class State { Start, InSolid, InFacet, InLoop, End };

    [[noreturn]] static void fail(const std::string& token, const char* expected) {
        throw "Error: got \"" + token + "\" while expecting " + expected + "\n";
    }

    // Returns an empty string if no token is left.
    [[nodiscard]] std::string nextToken() {
        std::string token;
        in >> token;
        return token;
    }

    void skipThreeNumbers() {
        float ignored = 0.0F;
        in >> ignored >> ignored >> ignored;
    }

    void start(const std::string& token) {
        if (token != "solid") {
            if (!readStlBinary(in, size, triangles)) fail(token, "\"solid\"");
            state = State::End;
            return;
        }
        std::array<char, kLineBufferSize> line{};
        in.getline(line.data(), kLineBufferSize);
        state = State::InSolid;
        if (!in.fail()) return;
        // Binary files may also begin with "solid".
        if (!readStlBinary(in, size, triangles)) throw std::string("Error: solid name exceeded limit\n");
        state = State::End;
    }

    void inSolid(const std::string& token) {
        if (token == "endsolid") {
            state = State::End;
        } else if (token == "facet") {
            state = State::Start;
            if (nextToken() != "normal") return;
            skipThreeNumbers();
            state = State::InFacet;
        } else {
            fail(token, R"("facet" or "endsolid")");
        }
    }

    void inFacet(const std::string& token) {
        // Intended: vertices are not counted, so no facet is ever complete.
        if (token == "endfacet") throw std::string("Error:  vertex count for triangle wasn't 3 (got 0)\n");
        if (token != "outer") fail(token, R"("outer" or "endfacet")");
        const std::string next = nextToken();
        if (next != "loop") fail(next, "\"loop\"");
        state = State::InLoop;
    }

    void inLoop(const std::string& token) {
        if (token == "endloop")
            state = State::InFacet;
        else if (token == "vertex")
            skipThreeNumbers();
        else
            fail(token, R"("vertex" or "endloop")");
    }

    std::istream& in;
    std::size_t size;
    std::vector<Triangle>& triangles;
    State state = State::Start;
};

}  // namespace

std::string readRest(std::istream& in) {
    constexpr std::size_t kBlock = std::size_t{1} << 16U;
    using Traits = std::streambuf::traits_type;
    std::string bytes;
    std::streambuf* const buffer = in.rdbuf();
    if (buffer == nullptr) return bytes;
    // A file reports its remaining size, so that the string is not reallocated.
    bytes.reserve(static_cast<std::size_t>(std::max<std::streamsize>(buffer->in_avail(), 0)));
    while (!Traits::eq_int_type(buffer->sgetc(), Traits::eof())) {
        const std::size_t start = bytes.size();
        const std::size_t available = bytes.capacity() - start;
        bytes.resize(start + (available == 0 ? kBlock : std::min(kBlock, available)));
        const std::streamsize count =
            buffer->sgetn(bytes.data() + start, static_cast<std::streamsize>(bytes.size() - start));
        bytes.resize(start + static_cast<std::size_t>(count));
    }
    return bytes;
}

bool readStl(std::istream& in, std::size_t size, std::vector<Triangle>& triangles) {
    try {
        StlParser(in, size, triangles).parse();
        return true;
    } catch (const std::string& message) {
        std::cerr << message;
    } catch (...) {
        std::cerr << "Error: unknown exception...\n";
    }
    return false;
}

}  // namespace quarn::detail
