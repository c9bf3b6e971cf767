/// \file
/// Lines of an OBJ text that go on behind a backslash.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quarn::detail {

/// Bytes [first, last) of a text, in which one thread looks for backslashes.
struct ObjRange {
    std::size_t first;
    std::size_t last;
};

/// How a text of \p size bytes is cut, one range for each thread: pieces of at least a million bytes, about
/// 257 at the most. The last byte of the text needs no range, since a pair has no room there.
///
/// Intended: the size counts as a signed number of 32 bits, so a text of 2 to 4 GiB has no range that holds a
/// byte.
[[nodiscard]] std::vector<ObjRange> continuationRanges(std::size_t size);

/// Overwrites each backslash that a line feed follows, and the line feed, with two blanks, on a thread for
/// each range. A backslash before a carriage return stays.
///
/// \throws std::system_error where a thread does not start; those that did have ended before
void blankContinuations(std::string& text);

}  // namespace quarn::detail
