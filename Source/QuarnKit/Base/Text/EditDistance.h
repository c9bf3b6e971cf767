/// \file
/// How much two names differ.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quarn {

/// Returns the minimum number of bytes that have to be inserted, removed, replaced or swapped with
/// their neighbor to change one text into the other. O(a.size() * b.size()).
[[nodiscard]] std::size_t editDistance(std::string_view a, std::string_view b);

/// Returns a text with its ASCII letters in lower case.
[[nodiscard]] std::string inLowerCase(std::string_view text);

}  // namespace quarn
