/// \file
/// A mesh as a plot shows it.
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

/// What a plot says about a triangle.
struct TriangleMark {
    bool isFlipped = false;  ///< It turns its other side than most around it.
    bool isMirrored =
        false;  ///< Its UV runs the other way round than most around it, as seen from their side.
    bool isOutside = false;  ///< It has a UV outside of 0 to 1.
    bool hasUV = false;
    [[nodiscard]] bool hasFaultyUV() const { return isMirrored || isOutside; }
};

/// How many there are of what.
struct MeshCounts {
    std::size_t flipped = 0;
    std::size_t mirrored = 0;
    std::size_t outside = 0;
    std::size_t overlapping = 0;  ///< With another one in UV.
    std::size_t withoutUV = 0;
    std::size_t notFinite = 0;  ///< Triangles that are left out.
    std::size_t holes = 0;
    std::size_t components = 0;
};

/// The triangles and lines of a mesh. Positions are moved and scaled so that the bounds are centred on the origin and
/// their longest side is 1.
struct PlotMeshData {
    using Line = std::vector<Point<double, 3>>;

    Bounds<3> bounds;   ///< In the mesh's unit and frame.
    double size = 0.0;  ///< Longest side of the bounds; 0 where there is nothing to draw.

    std::vector<TriangleCorners> triangles;
    std::vector<TriangleUVs> uvs;
    std::vector<TriangleMark> marks;  ///< As many, but for a mesh that is not drawable.
    MeshCounts counts;
    UvOverlaps overlaps;
    bool isMapMirrored =
        false;  ///< Whether most UVs run the other way round than on a picture seen from the front.

    std::vector<Line> boundaries;  ///< The longest one first, as in the next list.
    std::vector<Line> holes;
    std::vector<Line> seams;
    std::vector<Line> grid;     ///< Lines of equal u and v.
    std::vector<Line> uvEdges;  ///< Where the UV layout ends, as positions (u, v, 0).

    [[nodiscard]] bool isDrawable() const { return size > 0.0; }
    [[nodiscard]] bool hasUV() const { return counts.withoutUV < triangles.size(); }
    [[nodiscard]] Point<double, 3> toScene(const Point<double, 3>& point) const;
    /// Areas of the moved and scaled triangles.
    [[nodiscard]] std::vector<StretchPatch> patches() const;
};

[[nodiscard]] PlotMeshData plotMeshData(const IScreenGeometry& mesh);

}  // namespace quarn
