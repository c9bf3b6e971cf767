/// \file
/// Boundary of a mesh.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

/// The boundary of a triangle mesh: three parallel lists of equal length, one entry per point.
///
/// The points are stored in walking order. If the boundary closes, the first point is repeated as
/// the last. Two corners of triangles are one boundary point only if position and UV are equal
/// exactly. A seam in UV is therefore part of the boundary.
///
/// The record does not own the triangles. Its pointers become invalid with any change of the list
/// of triangles.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// std::vector<Triangle> mesh(1);
/// mesh[0].vertices[1].position = {1.0, 0.0, 0.0};
/// mesh[0].vertices[2].position = {0.0, 0.0, 1.0};
/// Boundary boundary;
/// MeshScreen::findBoundaryNew(mesh, boundary);
/// assert(boundary.points.size() == 4 && boundary.points.front() == boundary.points.back());
/// \endcode
struct Boundary {
    std::vector<Point<double, 3>> points;    ///< Positions, in the mesh's unit and frame.
    std::vector<Point<double, 2>> uvPoints;  ///< UV of each point; kNoUV in a mesh without UVs.
    /// For each point, the triangle of the edge by which the walk reached it. The first point has
    /// the triangle of the first edge.
    std::vector<const Triangle*> triangles;
};
