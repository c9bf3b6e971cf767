/// \file
/// Texts of inputs in messages and pictures.
#pragma once

#include <string>
#include <string_view>

namespace quarn {

/// Returns the text with everything escaped that a terminal may interpret or hide: control
/// characters, line separators and direction marks. A byte that is not UTF-8 becomes U+FFFD.
[[nodiscard]] std::string printable(std::string_view text);

/// Returns the beginning of a text in quotes.
[[nodiscard]] std::string quotedExcerpt(std::string_view text);

}  // namespace quarn
