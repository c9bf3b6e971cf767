/// \file
/// Detects and decodes UTF-16 texts.
#pragma once

#include <string>
#include <string_view>

namespace quarn {

/// Encoding of a text file. Bytes is UTF-8, or any other encoding with one byte for each ASCII
/// character.
enum class TextEncoding { Bytes, Utf16LittleEndian, Utf16BigEndian };

/// Returns the encoding of a file with this beginning. UTF-16 is recognized by its byte order mark,
/// or, without one, if at least half of the characters are ASCII and none is a control character
/// except tab and line ends.
[[nodiscard]] TextEncoding textEncodingOf(std::string_view beginning);

/// Returns a UTF-16 text as UTF-8, without its byte order mark. An unpaired surrogate, and an odd
/// byte at the end, become U+FFFD.
/// \param encoding other than Bytes
[[nodiscard]] std::string utf8FromUtf16(std::string_view bytes, TextEncoding encoding);

}  // namespace quarn
