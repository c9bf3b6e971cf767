/// \file
/// Reference implementation of calibration points, headings and creases of a mesh.
#pragma once

#include <utility>
#include <vector>

#include "Reference/Mesh/ReferenceGrid.h"

namespace quarn::test {

/// Calibration points of a screen that maps UVs.
[[nodiscard]] std::vector<Point3> referencePointsByUV(const IScreenGeometry& screen, int columns, int rows);

/// Calibration points of a mesh without UVs, given its boundary.
[[nodiscard]] std::vector<Point3> referencePointsOfBoundary(const Lines& outline,
                                                            const std::vector<Triangle>& triangles,
                                                            int columns, int rows);

[[nodiscard]] Point3 referenceHeading(const std::vector<Triangle>& triangles, const Point3& eye);
[[nodiscard]] double referenceMaxAngle(const std::vector<Triangle>& triangles, const Point3& eye,
                                       const Point3& heading);

/// The ends of the sharpest edge that two of the triangles share; two zero positions where there is
/// none.
[[nodiscard]] std::pair<Point3, Point3> referenceCrease(const std::vector<const Triangle*>& triangles);

/// A position pulled onto a crease. \param uvTreeDepth greatest depth that the tree over UVs ever
/// had
[[nodiscard]] Point3 referencePointOnEdge(const std::vector<Triangle>& triangles, int uvTreeDepth,
                                          const Point3& point);

/// Depth of a tree over the UVs of a mesh.
[[nodiscard]] int referenceUVTreeDepth(const std::vector<Triangle>& triangles);

}  // namespace quarn::test
