/// \file
/// Conversion between wide strings, UTF-8 and base64.
///
/// None of these functions throws anything but std::bad_alloc, depends on the process's locale or stops at a
/// NUL. All are safe on any number of threads.
#pragma once

#include <string>

#include <Common/Export.h>

/// UTF-8 bytes of a wide string.
/// \return the empty string where \p text holds a surrogate or a value beyond U+10FFFF.
[[nodiscard]] QUARNSCREEN_EXPORT std::string toUtf8(const std::wstring& text);

/// Wide string from UTF-8 bytes. Each byte that is no part of a well-formed sequence becomes one U+FFFD;
/// overlong forms and encoded surrogates are not well-formed.
[[nodiscard]] QUARNSCREEN_EXPORT std::wstring fromUtf8(const std::string& bytes);

/// Standard base64 (RFC 4648, section 4) of \p size bytes, padded with "=", in one run without line breaks.
[[nodiscard]] QUARNSCREEN_EXPORT std::string encodeBase64(const unsigned char* data, unsigned int size);

/// Bytes from base64 text.
///
/// Reading stops at the first "=" and at the first character outside of the alphabet. A last group of 2 or 3
/// characters gives 1 or 2 bytes, a single left-over character none.
///
/// Intended: what follows the stop is ignored without an error, a line break or blank included.
[[nodiscard]] QUARNSCREEN_EXPORT std::string decodeBase64(const std::string& text);

/// Base64 of the UTF-8 form of \p size wide characters.
[[nodiscard]] QUARNSCREEN_EXPORT std::wstring encodeBase64Wide(const wchar_t* text, unsigned int size);

/// Wide string from the base64 of its UTF-8 form; bytes that are not UTF-8 are replaced as by fromUtf8().
[[nodiscard]] QUARNSCREEN_EXPORT std::wstring decodeBase64Wide(const std::wstring& text);
