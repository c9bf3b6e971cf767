/// \file
/// Long texts inside of an XML element, as base64.
#pragma once

#include <ostream>
#include <string>

namespace quarn::detail {

/// Writes the base64 of \p bytes, piece by piece: the text would take several times their memory as a whole.
void writeBase64(std::wostream& out, const std::string& bytes);

/// The same as toUtf8(fromUtf8(bytes)), without the wide text in memory as a whole: what is UTF-8 stays.
[[nodiscard]] std::string throughWideText(const std::string& bytes);

}  // namespace quarn::detail
