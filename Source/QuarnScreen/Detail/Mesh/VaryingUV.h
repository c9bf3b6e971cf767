/// \file
/// Whether a mesh has a parameterization at all.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// Whether the UV of some corner differs from that of the very first one. It says nothing about the quality
/// of the UVs; a NaN differs from everything, itself included. False for an empty list.
[[nodiscard]] bool hasVaryingUV(const std::vector<Triangle>& triangles);

}  // namespace quarn::detail
