/// \file
/// The lines of an OBJ text, cut as the library cuts them, and where they stand in its file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

/// An OBJ text whose continued lines are joined. Places in it are pointers.
struct ObjText {
    std::string name;                           ///< What error lines call it.
    std::string_view text;                      ///< With a NUL behind its last byte.
    std::vector<std::size_t> joinedLines = {};  ///< Where line feeds were until lines were joined, in order.

    /// Number of the line of the file that holds a place.
    [[nodiscard]] std::uint64_t lineOf(const char* place) const;
};

/// Joins the lines of \p text that a backslash continues, in place.
/// \param text it has to outlive the result
[[nodiscard]] ObjText joinObjLines(std::string name, std::string& text);

/// The first byte from \p p on that is no blank. A tab is none.
[[nodiscard]] const char* skipBlanks(const char* p);

/// The next word of a line, or its end: a line feed or NUL.
[[nodiscard]] const char* nextWord(const char* p);

/// Whether \p p stands at the end of its line, a carriage return counted.
[[nodiscard]] bool isAtEnd(const char* p);

/// The word at \p p, up to a blank, a tab or the end of the line.
[[nodiscard]] std::string_view wordAt(const char* p);

/// Calls \p visit with the first byte of each line that is no blank.
template <class Visit>
void forEachObjLine(std::string_view text, Visit visit) {
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = skipBlanks(p);
        visit(p);
        while (*p != '\n' && *p != '\0') ++p;
    }
}

/// A number as the library's scan reads it. Text that is no number gives 0.
struct ObjNumber {
    std::uint32_t mantissa = 0;
    std::int32_t tens = 0;  ///< Power of ten that the mantissa is multiplied by.
    bool isNegative = false;

    [[nodiscard]] double value() const;
    /// Whether the number is larger than \p limit, either way. A mantissa alone is below 2e8.
    [[nodiscard]] bool exceeds(double limit) const;
};

[[nodiscard]] ObjNumber scanObjNumber(const char* p);

/// Reads a run of digits, which wraps at 32 bits; none gives 0. \p p moves behind it.
[[nodiscard]] std::uint32_t scanObjIndex(const char*& p);

}  // namespace quarn
