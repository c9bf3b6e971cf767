/// \file
/// Triangles that are small enough for a curved view.
#pragma once

#include <cstdint>
#include <vector>

#include <QuarnKit/Mesh/TriangleCorners.h>
#include <QuarnKit/Plot/Views/PlotCamera.h>

namespace quarn {

/// The triangles of a mesh in a view. If the view curves straight lines, large triangles are
/// divided into pieces whose sides look straight. Refers to the mesh, which has to outlive it.
class ViewTriangles {
public:
    ViewTriangles(const std::vector<TriangleCorners>& meshTriangles, const Camera& camera);

    [[nodiscard]] const std::vector<TriangleCorners>& pieces() const {
        return sources.empty() ? triangles : divided;
    }
    /// Returns the number of the triangle that contains a piece.
    [[nodiscard]] std::uint32_t sourceOf(std::uint32_t piece) const {
        return sources.empty() ? piece : sources[piece];
    }

private:
    void divide(std::uint32_t triangle, const Camera& camera);

    const std::vector<TriangleCorners>& triangles;
    std::vector<TriangleCorners> divided;
    std::vector<std::uint32_t> sources;  // of the pieces; empty if no triangle is divided
};

}  // namespace quarn
