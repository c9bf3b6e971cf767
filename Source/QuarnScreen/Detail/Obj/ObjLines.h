/// \file
/// Steps through the lines of an OBJ text. Each stops at a NUL at the latest, which the text must end with.
#pragma once

#include <cstring>

namespace quarn::detail {

/// The first byte from \p p on that is no blank. A tab is none.
[[nodiscard]] inline const char* skipBlanks(const char* p) {
    while (*p == ' ') ++p;
    return p;
}

/// The next argument of a line: goes to the next blank and behind the run of blanks there. Stops at the end
/// of the line.
[[nodiscard]] inline const char* nextArgument(const char* p) {
    while (*p != ' ' && *p != '\n' && *p != '\0') ++p;
    return skipBlanks(p);
}

/// The line feed or NUL that ends the line of \p p.
[[nodiscard]] inline const char* lineEnd(const char* p) {
    return *p == '\n' ? p : strchrnul(p, '\n');
}

}  // namespace quarn::detail
