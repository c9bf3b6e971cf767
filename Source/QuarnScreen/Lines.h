/// \file
/// Closest points of two lines.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// Finds the two closest points of the lines a0-a1 and b0-b1, each taken as endless unless an end is clamped.
///
/// Source: Dan Sunday, "Distance between 3D Lines and Segments" (2001), the case of two lines.
///
/// Intended: a clamped parameter does not move the other one, so the points are not the closest ones of two
/// segments, as a reader would expect. Where `clampAStart` took effect, `clampAEnd` is not looked at,
/// likewise for B.
///
/// \param[out] outA, outB the points on A and on B; written where the answer is true
/// \param clampAStart, clampAEnd, clampBStart, clampBEnd keep the point from passing that end of its segment
/// \return false for segments shorter than 1e-10, and where the squared area between both is below 1e-10.
///        Intended: that limit does not follow the lengths, so short segments count as parallel
QUARNSCREEN_EXPORT bool closestPointsBetweenLines(const Point<double, 3>& a0, const Point<double, 3>& a1,
                                                  const Point<double, 3>& b0, const Point<double, 3>& b1,
                                                  Point<double, 3>& outA, Point<double, 3>& outB,
                                                  bool clampAStart, bool clampAEnd, bool clampBStart,
                                                  bool clampBEnd);

/// The form for two endless lines.
QUARNSCREEN_EXPORT bool closestPointsBetweenLines(const Point<double, 3>& a0, const Point<double, 3>& a1,
                                                  const Point<double, 3>& b0, const Point<double, 3>& b1,
                                                  Point<double, 3>& outA, Point<double, 3>& outB);
