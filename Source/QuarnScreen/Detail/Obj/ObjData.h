/// \file
/// What the scans of an OBJ text leave for the building of triangles.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quarn::detail {

/// One corner of a face: indices from zero, -1 where the text gives none.
struct ObjCorner {
    std::int32_t vertex = -1;
    std::int32_t textureCoordinate = -1;
    std::int32_t normal = -1;
};

/// A triangle by its corners. A polygon of the text is several of them.
using ObjFace = std::array<ObjCorner, 3>;

/// The records of the lines "v", "vt" and "vn", in the order of the text.
struct ObjVertexData {
    std::vector<std::array<float, 3>> vertices;
    std::vector<std::array<float, 2>> textureCoordinates;
    /// The normals are counted and not kept: they are only referred to, and no triangle takes their values.
    std::size_t normalCount = 0;
};

/// How many records of one kind a text of \p size bytes hardly exceeds, so that its lists need not grow. In a
/// mesh of a million triangles there are about 105 bytes for each face where vertices are shared, and for
/// each vertex where they are not.
[[nodiscard]] constexpr std::size_t expectedLineCount(std::size_t size) {
    return size / 96;
}

/// All that is read of an OBJ text. An index of a face may lie outside of its list.
struct ObjData {
    ObjVertexData vertexData;
    std::vector<ObjFace> faces;
};

}  // namespace quarn::detail
