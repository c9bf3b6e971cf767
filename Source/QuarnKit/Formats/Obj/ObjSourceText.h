/// \file
/// The lines of an OBJ text, split as the library splits them, and their numbers in the file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnScreen/Detail/Obj/ObjText.h>

#include "ObjLineMap.h"

namespace quarn {

/// An OBJ text whose continued lines are joined. Places in it are pointers.
struct ObjSourceText {
    std::string name;                           ///< Name in error messages.
    std::string_view text;                      ///< Followed by a NUL.
    std::vector<std::size_t> joinedLines = {};  ///< Ascending offsets of removed line feeds.
    ObjLineMap lineMap = {};                    ///< The lines of the file, if the text was changed.

    /// Returns the number of the line of the file that contains a place.
    [[nodiscard]] std::uint64_t lineOf(const char* place) const;
};

/// The end of a line that continues on the next one.
inline constexpr std::string_view kObjLineJoin = "\\\n";

/// Joins the lines of \p text that a backslash continues, in place.
/// \param text has to outlive the result
[[nodiscard]] ObjSourceText joinObjLines(std::string name, std::string& text);

/// Returns true if \p p is at the end of its line, which may be a carriage return.
[[nodiscard]] bool isAtLineEnd(const char* p);

/// Returns the word at \p p, up to a blank, a tab or the end of the line.
[[nodiscard]] std::string_view wordAt(const char* p);

/// Calls \p visit with the first byte of each line that is no blank.
template <class Visit>
void forEachObjLine(std::string_view text, Visit visit) {
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; ++p) {
        p = detail::skipBlanks(p);
        visit(p);
        p = detail::lineEnd(p);
    }
}

}  // namespace quarn
