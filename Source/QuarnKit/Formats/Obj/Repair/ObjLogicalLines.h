/// \file
/// The lines of the OBJ text of any program.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

/// A line of an OBJ text. A line of a vertex or face includes the lines that backslashes join to
/// it.
struct ObjLogicalLine {
    std::uint64_t line = 0;               ///< Number of the first line.
    std::string_view text;                ///< The whole line, without the line end.
    std::string_view lineEnd;             ///< Empty at the end of the text.
    std::vector<std::string_view> words;  ///< The keyword and its arguments, without a comment.
    std::string_view comment;             ///< From its "#" on; empty if there is none.
    bool isContinued = false;             ///< True if other lines are joined to the first.
};

/// Iterates over the lines of a text. Line ends are LF, CRLF, CR and CRCRLF, which a repeated
/// conversion produces. Words are separated by any white space, NUL, and the byte 0x1A, which ends
/// a text on old systems.
class ObjLogicalLines {
public:
    /// \param text has to outlive the object
    explicit ObjLogicalLines(std::string_view text)
        : rest(text), nextFeed(text.data() + std::min(text.size(), text.find('\n'))) {}

    /// Sets \p logicalLine to the next one, and returns false at the end. Its views are valid until
    /// the next call.
    bool next(ObjLogicalLine& logicalLine);

private:
    std::string_view takeLine(std::string_view& lineEnd);
    void joinLines(ObjLogicalLine& logicalLine);

    std::string_view rest;
    const char* nextFeed;  // at or after the start of the rest; the end of the text if there is none
    std::uint64_t lineCount = 0;
    std::string joined;
};

/// Returns true if a byte separates words.
[[nodiscard]] constexpr bool isObjSpace(char byte) {
    // Most bytes need one comparison.
    if (static_cast<unsigned char>(byte) > ' ') return false;
    return byte == ' ' || byte == '\t' || byte == '\v' || byte == '\f' || byte == '\0' || byte == '\x1A';
}

}  // namespace quarn
