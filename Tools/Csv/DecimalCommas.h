/// \file
/// Finds numbers with decimal commas, to name them in errors.
#pragma once

#include <string_view>

namespace quarn::tool {

/// Returns true if a cell is a number with a decimal comma, as in "0,5".
[[nodiscard]] bool isDecimalComma(std::string_view cell);

/// Returns true if semicolons, tabs or blanks separate the text into at least two numbers, and some
/// of them have decimal commas, as in "0,5;0,5".
[[nodiscard]] bool hasDecimalCommas(std::string_view row);

}  // namespace quarn::tool
