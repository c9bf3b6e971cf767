/// \file
/// Builds meshes of analytic screens.
#pragma once

#include <optional>
#include <string>

#include <QuarnKit/Formats/Obj/MeshDocument.h>
#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Numbers of rows and columns of cells of a grid in UV.
struct GridSize {
    int rows = 32;
    int columns = 64;
};

/// Returns the size below which the mesh of a screen has no similarity with it: each cell spans
/// less than half a turn, so that a full circle has at least three columns.
[[nodiscard]] GridSize minGridSizeOf(const IScreenGeometry& screen);

/// Returns the valid sizes if a grid is below minGridSizeOf() the screen; otherwise nothing.
[[nodiscard]] std::optional<std::string> expectedInsteadOf(const GridSize& size,
                                                           const IScreenGeometry& screen);

/// Returns a mesh with a vertex at each crossing of a grid that covers UV from 0 to 1, two
/// triangles a cell.
///
/// The triangles face the viewer, and their vertices have the screen's normals. If the edges u = 0
/// and u = 1 meet, as in a full dome, they share vertices but no UVs. A pole is one vertex. It has
/// a UV in the middle of each column, so that half of the UVs of its row belong to no triangle.
/// \pre the screen maps every UV from 0 to 1
[[nodiscard]] MeshDocument gridMeshOf(const IScreenGeometry& screen, const GridSize& size);

}  // namespace quarn
