/// \file
/// Where an OBJ text refers to something that it does not hold.
#pragma once

#include <cstdint>

#include <QuarnKit/Base/Error.h>

#include "ObjText.h"
#include "ObjValidation.h"

namespace quarn {

/// An error that names the first corner whose vertex or normal does not exist.
/// \pre the library found one
[[nodiscard]] Error badReferenceError(const ObjText& text, const ObjCounts& counts);

/// Line of the first face with a corner without UV; 0 where there is none.
[[nodiscard]] std::uint64_t lineWithoutUV(const ObjText& text, const ObjCounts& counts);

/// Line of the first face with a corner whose UV lies outside of 0 to 1; 0 where there is none.
[[nodiscard]] std::uint64_t lineWithUVOutside(const ObjText& text, const ObjCounts& counts);

}  // namespace quarn
