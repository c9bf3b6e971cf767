/// \file
/// The lines of an OBJ text, cut as the library cuts them, and where they stand in its file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnScreen/Detail/Obj/ObjLines.h>

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

/// Whether \p p stands at the end of its line, a carriage return counted.
[[nodiscard]] bool isAtLineEnd(const char* p);

/// The word at \p p, up to a blank, a tab or the end of the line.
[[nodiscard]] std::string_view wordAt(const char* p);

/// Calls \p visit with the first byte of each line that is no blank.
template <class Visit>
void forEachObjLine(std::string_view text, Visit visit) {
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = detail::skipBlanks(p);
        visit(p);
        while (*p != '\n' && *p != '\0') ++p;
    }
}

}  // namespace quarn
