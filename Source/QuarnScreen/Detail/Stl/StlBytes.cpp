#include "StlBytes.h"

#include <algorithm>
#include <cstddef>
#include <streambuf>

namespace quarn::detail {

std::string readRest(std::istream& in) {
    constexpr std::size_t kBlock = std::size_t{1} << 16U;
    using Traits = std::streambuf::traits_type;
    std::string bytes;
    std::streambuf* const buffer = in.rdbuf();
    if (buffer == nullptr) return bytes;
    // A file tells all that it has, so that the bytes need not move.
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

}  // namespace quarn::detail
