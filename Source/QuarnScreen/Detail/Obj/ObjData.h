/// \file
/// The data that the parser reads from an OBJ text.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quarn::detail {

/// One corner of a face: indices from zero, -1 for each that the text does not specify.
struct ObjCorner {
    std::int32_t vertex = -1;
    std::int32_t textureCoordinate = -1;
    std::int32_t normal = -1;
};

/// A triangle by its corners. A polygon of the text is several triangles.
using ObjFace = std::array<ObjCorner, 3>;

/// The values of the lines "v", "vt" and "vn", in the order of the text.
struct ObjVertexData {
    std::vector<std::array<float, 3>> vertices;
    std::vector<std::array<float, 2>> textureCoordinates;
    /// Number of normals. Their values are not stored, since no triangle uses them.
    std::size_t normalCount = 0;
};

/// All that is read from an OBJ text. An index of a face may be out of range.
struct ObjData {
    ObjVertexData vertexData;
    std::vector<ObjFace> faces;
};

/// Returns true if an index from zero refers to one of \p count lines. A negative index is greater
/// than any count.
[[nodiscard]] constexpr bool isObjIndexInRange(std::int32_t index, std::size_t count) {
    return static_cast<std::size_t>(index) < count;
}

/// Returns a number of lines of one kind that a text of \p size bytes rarely exceeds, so that its
/// lists rarely grow. A mesh of a million triangles has about 105 bytes for each face if vertices
/// are shared, and for each vertex if they are not.
[[nodiscard]] constexpr std::size_t expectedLineCount(std::size_t size) {
    return size / 96;
}

}  // namespace quarn::detail
