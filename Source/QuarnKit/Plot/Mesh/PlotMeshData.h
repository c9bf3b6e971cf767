/// \file
/// The triangles, lines and counts of a plot of a mesh.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Mesh/TriangleCorners.h>
#include <QuarnKit/Mesh/UvOverlap.h>
#include <QuarnKit/Plot/Views/PlotStretch.h>
#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Marks of a triangle in a plot.
struct TriangleMark {
    bool isFlipped = false;   ///< With the opposite winding of most of its patch.
    bool isMirrored = false;  ///< With the opposite UV orientation of most of its patch.
    bool isOutside = false;   ///< With a UV outside of 0 to 1.
    bool hasUV = false;
    [[nodiscard]] bool hasBadUV() const { return isMirrored || isOutside; }
};

/// Numbers of triangles with a defect, of holes and of components.
struct MeshCounts {
    std::size_t flipped = 0;
    std::size_t mirrored = 0;
    std::size_t outside = 0;
    std::size_t overlapping = 0;  ///< With another triangle in UV.
    std::size_t withoutUV = 0;
    std::size_t notFinite = 0;  ///< Triangles that are omitted.
    std::size_t holes = 0;
    std::size_t components = 0;
};

/// The triangles and lines of a mesh, translated and scaled so that the bounds are centered at the
/// origin and their longest side is 1.
struct PlotMeshData {
    using Line = std::vector<Point<double, 3>>;

    Bounds<3> bounds;   ///< In the mesh's unit and frame.
    double size = 0.0;  ///< Longest side of the bounds; 0 if there is nothing to draw.

    std::vector<TriangleCorners> triangles;
    std::vector<TriangleUVs> uvs;
    std::vector<TriangleMark> marks;  ///< One for each triangle; none if the mesh is not drawable.
    MeshCounts counts;
    UvOverlaps overlaps;
    bool isMapMirrored = false;  ///< True if most UVs are mirrored, seen from the front.

    std::vector<Line> boundaries;  ///< The longest one first, as in `holes`.
    std::vector<Line> holes;
    std::vector<Line> seams;
    std::vector<Line> grid;     ///< Lines of equal u and v.
    std::vector<Line> uvEdges;  ///< Boundary of the UV layout, as positions (u, v, 0).

    [[nodiscard]] bool isDrawable() const { return size > 0.0; }
    [[nodiscard]] bool hasUV() const { return counts.withoutUV < triangles.size(); }
    /// Translates and scales a position of the mesh.
    [[nodiscard]] Point<double, 3> toScene(const Point<double, 3>& point) const;
    /// Returns the areas of the scaled triangles in space and in UV.
    [[nodiscard]] std::vector<StretchPatch> patches() const;
};

/// Prepares a mesh for a plot. Omits triangles with positions that are not finite.
[[nodiscard]] PlotMeshData buildPlotMeshData(const IScreenGeometry& mesh);

}  // namespace quarn
