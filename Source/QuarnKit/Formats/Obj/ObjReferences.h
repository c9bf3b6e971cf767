/// \file
/// Finds faces of an OBJ text that refer to something that does not exist.
#pragma once

#include <cstdint>

#include <QuarnScreen/Detail/Obj/ObjData.h>

#include "ObjSourceText.h"
#include "ObjValidation.h"

namespace quarn {

/// Throws an Error that names the first corner whose vertex or normal does not exist.
/// \param objData data of the text
void requireValidReferences(const ObjSourceText& text, const detail::ObjData& objData);

/// Returns the line of the first face with a corner without UV; 0 if there is none.
[[nodiscard]] std::uint64_t findLineWithoutUV(const ObjSourceText& text, const ObjCounts& counts);

/// Returns the line of the first face with a corner whose UV is outside of 0 to 1; 0 if there is
/// none.
[[nodiscard]] std::uint64_t findLineWithUVOutside(const ObjSourceText& text, const ObjCounts& counts);

}  // namespace quarn
