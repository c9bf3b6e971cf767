/// \file
/// Exceptions of the library and of the XML parser as errors of the kit.
#pragma once

#include "Error.h"

namespace quarn {

/// Returns the exception that is being handled, of any type, as an Error.
/// \pre called within a catch block
[[nodiscard]] Error currentError();

}  // namespace quarn
