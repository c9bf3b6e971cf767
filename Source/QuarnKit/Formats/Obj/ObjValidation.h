/// \file
/// Checks that the library can load an OBJ text.
#pragma once

#include <cstdint>

#include <QuarnScreen/Detail/Obj/ObjData.h>

#include "ObjSourceText.h"

namespace quarn {

/// Numbers of the lines of a text by kind, and of the triangles of its faces.
struct ObjCounts {
    std::uint64_t vertices = 0;
    std::uint64_t uvs = 0;
    std::uint64_t normals = 0;
    std::uint64_t triangles = 0;
};

[[nodiscard]] ObjCounts countsOf(const detail::ObjData& objData);

/// A tenth of the range of a float, so that no rounding makes a number infinite. An infinite number
/// becomes NaN in the transform, and the boundary of such a mesh does not close.
inline constexpr double kMaxObjNumber = 1e37;

/// Parses a text and returns its data, of which only the references may be invalid.
///
/// Throws an Error, with the line if there is one, for a text that the library could not load: a
/// face line without line feed, numbers that are not finite as floats or would not be after the
/// transform, no vertex, no normal or no face; and for words that it would misread as numbers, see
/// ObjWordCheck. Throws an Error if the mesh could need more than \p maxMemory bytes, see
/// refuseMeshAbove().
/// \param scale factor of all positions
[[nodiscard]] detail::ObjData parseValidObj(const ObjSourceText& text, float scale, std::uint64_t maxMemory);

}  // namespace quarn
