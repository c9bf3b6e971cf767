/// \file
/// Conversion between wide strings, UTF-8 and base64.
///
/// All functions are O(n) and safe on any number of threads. They throw only std::bad_alloc, do not
/// depend on the locale of the process, and do not stop at a NUL.
///
/// \code{.cpp}
/// assert(toUtf8(L"\u00e9") == "\xc3\xa9");
/// const unsigned char bytes[] = {'b', 'a', 'r'};
/// assert(encodeBase64(bytes, 3) == "YmFy");
/// assert(decodeBase64("YmFy") == "bar");
/// \endcode
#pragma once

#include <string>

#include <Common/Export.h>

/// Converts a wide string to UTF-8.
/// \return the bytes; empty if \p text contains a surrogate or a value beyond U+10FFFF
[[nodiscard]] QUARNSCREEN_EXPORT std::string toUtf8(const std::wstring& text);

/// Converts UTF-8 to a wide string.
///
/// Each byte that is not part of a well-formed sequence becomes one U+FFFD. Overlong forms and
/// encoded surrogates are not well-formed.
[[nodiscard]] QUARNSCREEN_EXPORT std::wstring fromUtf8(const std::string& bytes);

/// Returns the base64 of \p size bytes, padded with "=" and without line breaks.
///
/// Source: RFC 4648, section 4.
[[nodiscard]] QUARNSCREEN_EXPORT std::string encodeBase64(const unsigned char* data, unsigned int size);

/// Returns the bytes of a base64 text.
///
/// Decoding stops at the first "=" and at the first character outside of the alphabet. A last group
/// of 2 or 3 characters gives 1 or 2 bytes, and a last group of one character gives none.
/// \note Intended: everything after the stop is ignored without an error, also after a line break
///       or a blank; a reader would expect blanks to be skipped.
[[nodiscard]] QUARNSCREEN_EXPORT std::string decodeBase64(const std::string& text);

/// Returns the base64 of the UTF-8 form of \p size wide characters; empty if toUtf8() returns
/// nothing.
[[nodiscard]] QUARNSCREEN_EXPORT std::wstring encodeBase64Wide(const wchar_t* text, unsigned int size);

/// Returns the wide string whose UTF-8 form is the base64 text. Bytes that are not UTF-8 are
/// replaced as by fromUtf8().
[[nodiscard]] QUARNSCREEN_EXPORT std::wstring decodeBase64Wide(const std::wstring& text);
