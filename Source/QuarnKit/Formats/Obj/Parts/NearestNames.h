/// \file
/// Finds the names that are most similar to one that does not exist.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quarn {

/// Returns at most \p maxCount of \p names, the most similar first: those with the smallest
/// editDistance(), apart from the case of ASCII letters. Names of equal similarity keep
/// their order. Only the first 64 bytes of a name count, and only the first 10,000 names.
[[nodiscard]] std::vector<std::string> nearestNames(const std::string& name,
                                                    const std::vector<std::string>& names,
                                                    std::size_t maxCount);

}  // namespace quarn
