/// \file
/// The numbers by which arrays state the status of a row.
#pragma once

#include <string_view>

namespace quarn::tool {

/// Returns the number of a status, for results as a NumPy array: above 0 if the row has a result,
/// 0 if it has none, and -1 for kEmptyRow.
[[nodiscard]] double statusNumber(std::string_view status);

}  // namespace quarn::tool
