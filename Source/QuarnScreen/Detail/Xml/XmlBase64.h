/// \file
/// Base64 of long texts in XML elements.
#pragma once

#include <ostream>
#include <string>

namespace quarn::detail {

/// Writes the base64 of \p bytes piece by piece. The whole text would take several times their
/// memory.
void writeBase64(std::wostream& out, const std::string& bytes);

/// Returns toUtf8(fromUtf8(bytes)) without the whole wide text in memory. Valid UTF-8 is unchanged.
[[nodiscard]] std::string throughWideText(const std::string& bytes);

}  // namespace quarn::detail
