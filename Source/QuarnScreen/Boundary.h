/// \file
/// The outline of a mesh.
#pragma once

#include <vector>

#include <QuarnScreen/Triangle.h>

/// The outline of a triangle mesh: three parallel lists of equal length, one entry for each outline point.
///
/// The points stand in walking order; where the outline closes, the first one is repeated as the last. Two
/// corners of triangles are one outline point only if position and UV agree exactly, so a seam in UV is a
/// part of the outline. The record does not own the triangles: its pointers die with any change of their
/// list.
///
/// Thread-safety: that of a value.
struct Boundary {
    std::vector<Point<double, 3>> points;    ///< Positions, in the mesh's unit and frame.
    std::vector<Point<double, 2>> uvPoints;  ///< UV of each point; kNoUV in a mesh without UVs.
    /// For each point the triangle of the edge by which the walk reached it; the first point has the
    /// triangle of the first edge.
    std::vector<const Triangle*> triangles;
};
