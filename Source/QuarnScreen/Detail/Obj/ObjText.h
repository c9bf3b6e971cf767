/// \file
/// The bytes and lines of an OBJ text.
#pragma once

#include <cstddef>
#include <cstring>
#include <istream>
#include <string>
#include <vector>

namespace quarn::detail {

/// Reads a stream from its start to its end, from any position, and restores the position.
///
/// A stream whose fail, bad or end-of-file flag is set, or that cannot seek, counts as empty. If
/// the stream returns fewer bytes than its end position states, the rest are NUL.
///
/// \param[out] text the bytes; replaced in any case
void readWholeStream(std::istream& in, std::string& text);

/// Bytes [first, last) of a text, which one thread searches for backslashes.
struct ObjRange {
    std::size_t first;
    std::size_t last;
};

/// Returns the ranges into which a text of \p size bytes is divided, one for each thread. A range
/// has at least a million bytes, except the last. There are about 257 ranges at most. The last byte
/// of the text needs no range, since no pair begins there.
///
/// Intended: the size counts as a signed number of 32 bits, so a text of 2 to 4 GiB has only empty
/// ranges.
[[nodiscard]] std::vector<ObjRange> continuationRanges(std::size_t size);

/// Overwrites each backslash before a line feed, and the line feed, with two blanks, on one thread
/// for each range. A backslash before a carriage return stays.
///
/// \throws std::system_error if a thread does not start; the threads that started have ended
void blankContinuations(std::string& text);

/// Returns the first byte from \p p on that is no blank. A tab is no blank.
/// \pre a NUL ends the text, here and below
[[nodiscard]] inline const char* skipBlanks(const char* p) {
    while (*p == ' ') ++p;
    return p;
}

/// Returns the next argument of a line: the first byte after the next run of blanks, or the line
/// feed or NUL that ends the line.
[[nodiscard]] inline const char* nextArgument(const char* p) {
    while (*p != ' ' && *p != '\n' && *p != '\0') ++p;
    return skipBlanks(p);
}

/// Returns the line feed or NUL that ends the line of \p p.
[[nodiscard]] inline const char* lineEnd(const char* p) {
    return *p == '\n' ? p : strchrnul(p, '\n');
}

}  // namespace quarn::detail
