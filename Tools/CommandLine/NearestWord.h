/// \file
/// The word that was probably meant by a misspelled one.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::tool {

/// Returns the candidate with the smallest number of inserted, removed, replaced and swapped
/// letters, regardless of their case. The beginning of a candidate counts as one letter.
/// \return nothing if each candidate differs in more than a quarter of the letters, but at least
/// one
[[nodiscard]] std::optional<std::string> nearestWord(std::string_view word,
                                                     const std::vector<std::string>& candidates);

}  // namespace quarn::tool
