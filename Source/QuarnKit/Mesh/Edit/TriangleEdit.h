/// \file
/// Edits of the corners of triangles.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn {

/// A change of positions: a scaling, then a rotation, then a translation.
struct PositionTransform {
    Point<double, 3> translation;
    Point<double, 3> rotation;  ///< In degrees, as MeshScreen::applyTransform() defines the angles.
    double scale = 1.0;

    /// Returns true if it changes positions.
    [[nodiscard]] bool moves() const {
        return translation != Point<double, 3>() || rotation != Point<double, 3>() || scale != 1.0;
    }
};

/// Transforms the positions of all corners as MeshScreen::applyTransform() does. All other fields,
/// including the derived ones, are unchanged.
void transformPositions(std::vector<Triangle>& triangles, const PositionTransform& transform);

/// A coordinate of a UV, by its index.
enum class UvAxis : std::size_t { U = 0, V = 1 };

/// Replaces a coordinate of all UVs by 1 minus it, as MeshScreen::applyParameterizationTransform()
/// does. All other fields are unchanged.
void flipUVs(std::vector<Triangle>& triangles, UvAxis axis);

}  // namespace quarn
