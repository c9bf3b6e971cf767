/// \file
/// Numbers for OBJ texts that the library reads back as they were.
#pragma once

#include <string>

namespace quarn {

/// A number as short as it can be that OBJScreen reads as the float \p value. -0 is written as 0, which it reads alike.
///
/// There is one for every float, although the reader's arithmetic is not that of a correct conversion: this was
/// tried for all 2,139,095,039 positive ones.
/// \pre value is finite
[[nodiscard]] std::string objNumberText(float value);

}  // namespace quarn
