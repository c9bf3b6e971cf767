#include "ObjStream.h"

#include <algorithm>
#include <cstddef>

namespace quarn::detail {

namespace {

// Small enough that the bytes are still in the cache when the stream overwrites the zeros of a resize.
constexpr std::size_t kBlock = 256 * std::size_t{1024};

void readBytes(std::istream& in, std::size_t size, std::string& text) {
    text.reserve(size);
    while (text.size() < size && in) {
        const std::size_t start = text.size();
        const std::size_t count = std::min(kBlock, size - start);
        text.resize(start + count);
        in.read(text.data() + start, static_cast<std::streamsize>(count));
    }
    text.resize(size);
}

}  // namespace

void readWholeStream(std::istream& in, std::string& text) {
    text.clear();
    if (!in.good()) return;
    const std::istream::pos_type entry = in.tellg();
    if (entry == std::istream::pos_type(-1)) return;
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    in.seekg(0, std::ios::beg);
    if (in && size > 0) readBytes(in, static_cast<std::size_t>(size), text);
    in.seekg(entry);
}

}  // namespace quarn::detail
