/// \file
/// Closest points of two lines.
///
/// Positions are in any common unit and frame. The functions are safe on any number of threads.
///
/// \code{.cpp}
/// Point<double, 3> onA, onB;
/// assert(closestPointsBetweenLines({-1, 0, 0}, {1, 0, 0}, {0, -1, 2}, {0, 1, 2}, onA, onB));
/// assert(length(onB - onA) == 2.0);
/// \endcode
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// Finds the two closest points of the lines a0-a1 and b0-b1. A line is infinite in both directions
/// unless an end is clamped.
///
/// Source: Dan Sunday, "Distance between 3D Lines and Segments" (2001), the case of two lines.
///
/// \param a0, a1 two positions on line A
/// \param b0, b1 two positions on line B
/// \param[out] outA, outB the points on A and on B; written only if the function returns true
/// \param clampAStart, clampAEnd clamp the point on A to that end of its segment
/// \param clampBStart, clampBEnd clamp the point on B to that end of its segment
/// \return false if a segment is shorter than 1e-10, or if the lines are parallel: the squared area
///         of the parallelogram that both segments span is below 1e-10
/// \note Intended: a clamped parameter does not move the other parameter; a reader would expect the
///       closest points of two segments.
/// \note Intended: after a parameter is clamped to its start, its end is not checked.
/// \note Intended: the limits do not scale with the lengths, so short segments count as parallel; a
///       reader would expect relative limits.
QUARNSCREEN_EXPORT bool closestPointsBetweenLines(const Point<double, 3>& a0, const Point<double, 3>& a1,
                                                  const Point<double, 3>& b0, const Point<double, 3>& b1,
                                                  Point<double, 3>& outA, Point<double, 3>& outB,
                                                  bool clampAStart, bool clampAEnd, bool clampBStart,
                                                  bool clampBEnd);

/// Finds the two closest points of two infinite lines: the form above without clamping.
QUARNSCREEN_EXPORT bool closestPointsBetweenLines(const Point<double, 3>& a0, const Point<double, 3>& a1,
                                                  const Point<double, 3>& b0, const Point<double, 3>& b1,
                                                  Point<double, 3>& outA, Point<double, 3>& outB);
