/// \file
/// The lines of an OBJ text from whatever program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

/// A line of an OBJ text. Lines of vertices and faces have those with them that a backslash joins to them.
struct ObjLogicalLine {
    std::uint64_t line = 0;    ///< Number of the first line.
    std::string_view text;     ///< All of it, without the line end.
    std::string_view lineEnd;  ///< Empty at the end of the text, also behind a backslash that ends it.
    std::vector<std::string_view> words;  ///< The keyword and what follows it, without a comment.
    std::string_view comment;             ///< From its "#" on; empty where there is none.
    bool isContinued = false;             ///< Whether other lines are joined to the first.
};

/// Goes through a text logicalLine by logicalLine. Line ends are LF, CRLF, CR and CRCRLF, which a conversion too many makes; words are
/// separated by any white space, NUL, and the byte that ends a text on old systems.
class ObjLogicalLines {
public:
    /// \param text it has to outlive the object
    explicit ObjLogicalLines(std::string_view text) : rest(text) {}

    /// Sets \p logicalLine to the next one; false at the end. Its views hold until the next call.
    bool next(ObjLogicalLine& logicalLine);

private:
    std::string_view takeLine(std::string_view& lineEnd);
    void joinLines(ObjLogicalLine& logicalLine);

    std::string_view rest;
    std::uint64_t lineCount = 0;
    std::string joined;
};

/// Whether a byte separates words.
[[nodiscard]] constexpr bool isObjSpace(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\v' || byte == '\f' || byte == '\0' || byte == '\x1A';
}

}  // namespace quarn
