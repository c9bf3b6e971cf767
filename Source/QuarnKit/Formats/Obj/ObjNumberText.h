/// \file
/// Numbers in OBJ texts that the library reads back unchanged.
#pragma once

#include <string>

namespace quarn {

/// Returns the shortest number that OBJScreen reads as the float \p value. -0 is written as 0, as
/// which OBJScreen reads it.
///
/// Such a number exists for every float, although the reader does not convert correctly: this was
/// tested for all 2,139,095,039 positive floats.
/// \pre value is finite
[[nodiscard]] std::string objNumberText(float value);

}  // namespace quarn
