/// \file
/// Reference implementation of the transform of a mesh: three by three numbers.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::test {

[[nodiscard]] std::vector<Triangle> referenceTransform(std::vector<Triangle> triangles,
                                                       const Point<double, 3>& translation,
                                                       const Point<double, 3>& rotation, double scale);

}  // namespace quarn::test
