/// \file
/// Many queries of a screen at once.
///
/// Each function computes one result for each row of its inputs, for any number of threads and any
/// block size. Rows without a result are NaN. For the library's own classes, the results have the
/// bits of the single query on a screen that has just been loaded, and no query allocates memory,
/// except that of a UV that is extrapolated from a mesh. A screen of a derived class is queried as
/// it is. An Error is thrown before any result is written if the numbers of rows differ; exceptions
/// of a query pass through.
///
/// Thread-safety: as for the const operations of the screen. Outputs must not overlap with inputs,
/// with each other, or with themselves by a distance of 0 between rows.
#pragma once

#include <cstdint>

#include "BlockLoop.h"
#include "RowView.h"
#include "SingleQueries.h"

namespace quarn {

/// Rays, each through two positions, as IScreenGeometry::intersect() takes them.
struct RayRows {
    RowView<const double, 3> origins;
    RowView<const double, 3> targets;
};

/// The first hits of rays. Views that are empty are not written.
struct HitRows {
    RowView<double, 3> positions = {};
    RowView<double, 2> uvs = {};
    RowView<double, 1> distances = {};        ///< From the ray's origin, in the screen's unit.
    RowView<std::int32_t, 1> triangles = {};  ///< Index of the triangle, or -1.
    RowView<std::int8_t, 1> sides = {};       ///< Intersection::normalSign, or 0.
    RowView<Found, 1> found = {};
};

/// Computes the first hit of each ray: IScreenGeometry::intersect() and its first element.
///
/// \code{.cpp}
/// const FlatScreen wall(4.0, 2.0);
/// const std::vector<double> eyes = {0.0, -3.0, 0.0, 1.0, -3.0, 0.0};
/// const std::vector<double> targets = {0.0, 0.0, 0.5, 9.0, 0.0, 0.5};
/// std::vector<double> uvs(4);
/// quarn::firstHits(wall, {{eyes.data(), 2}, {targets.data(), 2}}, {.uvs = {uvs.data(), 2}});
/// assert(uvs[0] == 0.5 && uvs[1] == 0.25 && std::isnan(uvs[2]));
/// \endcode
BatchEnd firstHits(const IScreenGeometry& screen, const RayRows& rays, const HitRows& hits,
                   const BatchOptions& options = {});

/// Computes the position of each UV, as positionAt().
BatchEnd positionsAt(const IScreenGeometry& screen, const RowView<const double, 2>& uvs, BeyondScreen beyond,
                     const RowView<double, 3>& positions, const RowView<Found, 1>& found = {},
                     const BatchOptions& options = {});

/// Computes the UV of each position, as uvAt().
BatchEnd uvsAt(const IScreenGeometry& screen, const RowView<const double, 3>& positions, BeyondScreen beyond,
               const RowView<double, 2>& uvs, const RowView<Found, 1>& found = {},
               const BatchOptions& options = {});

/// Computes the unit normal at each position, as IScreenGeometry::getScreenNormal(); NaN where it
/// is zero.
BatchEnd normalsAt(const IScreenGeometry& screen, const RowView<const double, 3>& positions,
                   const RowView<double, 3>& normals, const BatchOptions& options = {});

/// Computes the closest point of each position, as IScreenGeometry::getClosestPoint().
BatchEnd closestPoints(const IScreenGeometry& screen, const RowView<const double, 3>& positions,
                       const RowView<double, 3>& closest, const BatchOptions& options = {});

}  // namespace quarn
