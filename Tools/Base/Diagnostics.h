/// \file
/// Lines for people on the standard error stream. For every part of the tool.
/// Bytes that a terminal would interpret are escaped. Safe on any number of threads; a stream that
/// fails is ignored.
#pragma once

#include <string>
#include <string_view>

namespace quarn::tool {

/// Writes "error: " and the text as one line.
void writeErrorLine(std::string_view text);

/// Writes "warning: " and the text as one line.
void writeWarningLine(std::string_view text);

/// Writes "note: " and the text as one line.
void writeNoteLine(std::string_view text);

/// Shows a status text below all lines, until the next line or status text replaces it. The text is
/// cut to the width of the narrowest terminal.
/// \pre standard error is a terminal
void writeStatusLine(std::string_view text);

/// Erases the text of writeStatusLine().
void clearStatusLine();

}  // namespace quarn::tool
