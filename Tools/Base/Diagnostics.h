/// \file
/// Lines that the tool writes for people, on the standard error stream.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn::tool {

/// Writes "error: " and the text as one line.
void writeErrorLine(std::string_view text);

/// Writes "warning: " and the text as one line.
void writeWarningLine(std::string_view text);

/// Writes "note: " and the text as one line.
void writeNoteLine(std::string_view text);

/// Shows a text below all lines, in the place of the one that was shown before. It is cut to the width that a terminal
/// has at least, and a line that follows takes its place. For terminals alone.
void writeStatusLine(std::string_view text);

/// Takes the text of writeStatusLine() away.
void clearStatusLine();

}  // namespace quarn::tool
