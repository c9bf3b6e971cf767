/// \file
/// The reader's units on one text, and comparison with the plain reader.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include <QuarnScreen/Detail/Obj/ObjData.h>

#include "Reference/Formats/ReferenceObjReader.h"

namespace quarn::test {

/// What both scans leave of a text; run on the calling thread.
struct ScannedText {
    detail::ObjData lists;
    bool isEndless = false;  ///< The face scan threw std::bad_alloc.
};

[[nodiscard]] ScannedText scannedText(const std::string& text);

/// Vertices, texture coordinates and faces bit for bit, and the number of normals.
[[nodiscard]] ::testing::AssertionResult sameLists(const detail::ObjData& lists,
                                                   const ReferenceObjData& plain);

/// Whether the scans of a text agree with the plain reader, and the triangles too where its faces
/// end.
[[nodiscard]] ::testing::AssertionResult isReadAsByReference(
    const std::string& text, const Matrix<float, 4>& transform = Matrix<float, 4>::identity());

}  // namespace quarn::test
