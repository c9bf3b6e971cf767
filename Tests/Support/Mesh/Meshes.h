/// \file
/// Triangle meshes for tests and benchmarks, from a handful of triangles to millions.
#pragma once

#include <functional>
#include <vector>

#include <QuarnScreen/Triangle.h>

#include "Support/Rng.h"

namespace quarn::test {

using Mesh = std::vector<Triangle>;

/// Cells of a grid; each makes two triangles.
struct GridSize {
    int columns = 1;
    int rows = 1;
};

struct SheetSize {
    double width = 4.0;
    double height = 3.0;
};

/// Part of a sphere: azimuth from +Y towards +X, elevation above the XY plane, in radians.
struct DomeShape {
    double radius = 5.0;
    double minTheta = -1.0;
    double maxTheta = 1.0;
    double minPhi = -0.5;
    double maxPhi = 1.0;
};

/// The upper half of a sphere. Its cells shrink to thin triangles at the pole.
inline constexpr DomeShape kHalfSphere = {5.0, -3.141592653589793, 3.141592653589793, 0.0,
                                          1.5707963267948966};

// Every mesh below has all its derived fields, and the face's normal at each corner. Grids go row
// by row; their UV is the unit square, u to the right and v downwards, and their faces look at the
// viewer (towards -Y, or inwards).

/// A grid over a surface, a function from UV to a position.
[[nodiscard]] Mesh gridOnSurface(const GridSize& size,
                                 const std::function<Point<double, 3>(double, double)>& surface);
/// A grid in the plane y = 0 around the origin. Many centroids have equal coordinates.
[[nodiscard]] Mesh flatGrid(const GridSize& size, const SheetSize& sheet = {});
/// Part of a cylinder around the Z axis, \p angle radians wide.
[[nodiscard]] Mesh cylinderSection(const GridSize& size, double radius = 5.0, double height = 3.0,
                                   double angle = 2.0);
[[nodiscard]] Mesh dome(const GridSize& size, const DomeShape& shape = {});
/// A flat grid with bulges of the given height.
[[nodiscard]] Mesh wave(const GridSize& size, double height = 0.3);
/// A sheet folded like a fan into flat layers, at y = 0, gap, 2 gap and so on, with strips that
/// join them.
[[nodiscard]] Mesh foldedSheet(int layers, double gap, int rows, const SheetSize& sheet = {});
/// A flat grid of at least three rows without some cells of its middle row. \pre size.columns > 2 *
/// holes
[[nodiscard]] Mesh gridWithHoles(const GridSize& size, int holes);
/// A flat grid whose left and right halves share positions, but not UVs. \pre an even number of
/// columns
[[nodiscard]] Mesh gridWithSeam(const GridSize& size);
/// Flat grids side by side that do not touch, in space or in UV.
[[nodiscard]] Mesh separatePieces(int pieces, const GridSize& size);
/// Independent random triangles in the cube from -1 to 1, with corners up to \p reach from their
/// middle.
[[nodiscard]] Mesh soup(Rng& rng, int count, double reach = 0.3);

/// One triangle with all fields.
[[nodiscard]] Triangle wholeTriangle(const Point<double, 3>& p0, const Point<double, 3>& p1,
                                     const Point<double, 3>& p2);
/// Computes all fields from the corners' positions and UVs.
void computeFields(Triangle& triangle);
void computeFields(Mesh& mesh);

void shuffle(Mesh& mesh, int seed);
void stripUV(Mesh& mesh);
/// Twists the UV of a grid by half a turn from top to bottom, so that its boundary crosses itself.
void twistUV(Mesh& mesh);
/// Folds the UV of a grid at u = 1/2, so that each UV has two triangles.
void foldUV(Mesh& mesh);
/// Multiplies all positions.
void scale(Mesh& mesh, double factor);
/// Appends copies of random triangles, some of them turned over: several then share a centroid.
void duplicate(Mesh& mesh, Rng& rng, int count);

/// What is wrong with a triangle's stored fields.
enum class Stale {
    ZeroNormal,
    ScaledNormal,
    TurnedNormal,   // slightly or wholly
    SpecialNormal,  // NaN, infinite or denormal
    ZeroEdge,
    ScaledEdges,
    SpecialEdge,
    MovedCorners,  // with all other fields as they were
    MovedCentroid,
    SwappedCorners,
    Count
};

/// Spoils the stored fields of a triangle. Corners and centroids stay numbers.
void makeStale(Triangle& triangle, Stale kind, Rng& rng);
/// Spoils about \p share of the triangles.
void makeStale(Mesh& mesh, Rng& rng, double share);

}  // namespace quarn::test
