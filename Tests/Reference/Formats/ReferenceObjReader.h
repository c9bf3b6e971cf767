/// \file
/// Reference implementation of the load of an OBJ text, one step after the other.
#pragma once

#include <array>
#include <string>
#include <vector>

#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/Triangle.h>

#include "Reference/Formats/ReferenceObjNumbers.h"

namespace quarn::test {

/// The four lists of a text.
struct ReferenceObjData {
    std::vector<std::array<float, 3>> vertices;
    std::vector<std::array<float, 2>> textureCoordinates;
    std::vector<std::array<float, 3>> normals;
    std::vector<std::array<ReferenceObjCorner, 3>> faces;
    bool isEndless = false;  ///< A face line went on for ever; the faces stop there.
};

/// What a load leaves, its text and digest excepted.
struct ReferenceObjResult {
    int status = 0;
    int failureKind = 0;  ///< 0 for none.
    std::wstring failure;
    std::vector<Triangle> triangles;
};

/// Blanks each backslash before a line feed, by one loop over the text.
[[nodiscard]] std::string referenceBlanked(std::string text);

[[nodiscard]] ReferenceObjData referenceObjData(const std::string& text);

[[nodiscard]] ReferenceObjResult referenceObjResult(const ReferenceObjData& lists,
                                                    const Matrix<float, 4>& transform);

}  // namespace quarn::test
