/// \file
/// Lines that the tool writes for people, on the standard error stream.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

/// The text with everything escaped that a terminal might obey or hide: control characters, line and
/// direction marks. A byte that is not UTF-8 becomes U+FFFD.
[[nodiscard]] std::string printable(std::string_view text);

/// The beginning of a text that was found somewhere, in quotes.
[[nodiscard]] std::string quotedExcerpt(std::string_view text);

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

/// `file:line: text`; without the line where it is 0, and without both where \p file is empty.
[[nodiscard]] std::string atPlace(std::string_view file, std::uint64_t line, std::string_view text);

}  // namespace quarn
