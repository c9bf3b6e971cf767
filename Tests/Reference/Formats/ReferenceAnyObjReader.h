/// \file
/// Reference implementation of the reader for OBJ texts of any program.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quarn::test {

struct ReferenceAnyObjCorner {
    std::array<float, 3> position{};
    std::optional<std::array<float, 2>> uv;
};

struct ReferenceAnyObjTriangle {
    std::array<ReferenceAnyObjCorner, 3> corners;
    std::uint64_t line = 0;
};

/// The triangles of a text in which all references to vertices are right.
[[nodiscard]] std::vector<ReferenceAnyObjTriangle> referenceAnyObjTriangles(const std::string& text);

}  // namespace quarn::test
