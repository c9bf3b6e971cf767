#include "ObjVertexScan.h"

#include <cstddef>

#include "ObjLines.h"
#include "ObjNumbers.h"

namespace quarn::detail {

namespace {

// Appends a record of N floats. The line's end is left for the caller to find, from the place returned.
template <std::size_t N>
const char* scanValues(const char* keyword, const char* end, std::vector<std::array<float, N>>& list) {
    std::array<float, N> values{};
    const char* p = keyword;
    for (float& value : values) {
        const ScannedFloat scanned = scanFloat(nextArgument(p), end);
        value = scanned.value;
        p = scanned.stop;
    }
    list.push_back(values);
    return p;
}

}  // namespace

void scanVertexData(std::string_view text, ObjVertexData& data) {
    data.vertices.reserve(expectedLineCount(text.size()));
    data.textureCoordinates.reserve(expectedLineCount(text.size()));
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = skipBlanks(p);
        if (*p == 'v') {
            const char kind = p[1];
            if (kind == ' ')
                p = scanValues(p, end, data.vertices);
            else if (kind == 't')
                p = scanValues(p, end, data.textureCoordinates);
            else if (kind == 'n')
                ++data.normalCount;
        }
        p = lineEnd(p);
    }
}

}  // namespace quarn::detail
