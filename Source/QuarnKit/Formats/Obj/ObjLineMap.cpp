#include "ObjLineMap.h"

#include <algorithm>

namespace quarn {

void ObjLineMap::append(std::uint64_t original) {
    ++count;
    const std::uint64_t next = jumps.empty() ? count : jumps.back().original + (count - jumps.back().line);
    if (original != next) jumps.push_back({.line = count, .original = original});
}

void ObjLineMap::insert(std::uint64_t line, std::uint64_t insertedCount) {
    const std::uint64_t original = originalOf(line);
    const auto first = std::lower_bound(jumps.begin(), jumps.end(), line,
                                        [](const Jump& jump, std::uint64_t at) { return jump.line < at; });
    const bool beginsWithJump = first != jumps.end() && first->line == line;
    for (auto jump = first; jump != jumps.end(); ++jump) jump->line += insertedCount;
    if (!beginsWithJump) jumps.insert(first, {.line = line + insertedCount, .original = original});
    count += insertedCount;
}

std::uint64_t ObjLineMap::originalOf(std::uint64_t line) const {
    const auto next = std::upper_bound(jumps.begin(), jumps.end(), line,
                                       [](std::uint64_t at, const Jump& jump) { return at < jump.line; });
    if (next == jumps.begin()) return line;
    const Jump& jump = *(next - 1);
    return jump.original + (line - jump.line);
}

}  // namespace quarn
