/// \file
/// Operations that every screen inherits.
#pragma once

#include <log4cxx/logger.h>
#include <cstdint>
#include <string>

#include <Common/Export.h>
#include <QuarnScreen/IScreenGeometry.h>

/// Base class of every screen: sampling, closest points and digests, implemented by the operations
/// of IScreenGeometry.
///
/// The class has no data. Frame, units and conventions are those of IScreenGeometry.
///
/// Thread-safety: each operation is as safe on several threads as the virtual operations that it
/// calls.
///
/// \code{.cpp}
/// FlatScreen screen(4.0, 2.0);
/// Intersection hit;
/// assert(ScreenGeometry::getClosestIntersection({1.0, -0.5, 0.0}, {0.0, 1.0, 0.0}, &screen, hit,
///                                               IScreenGeometry::kNoExtrapolation));
/// assert(hit.hasUV && hit.uv[0] == 0.75);
/// \endcode
class QUARNSCREEN_EXPORT ScreenGeometry : public IScreenGeometry {
public:
    /// A SHA-1 digest.
    using DataHash = std::array<unsigned char, 20>;

    ~ScreenGeometry() override;

    /// Finds the hit nearest to a position along a line, in both directions.
    ///
    /// The rays run from \p from through `from + direction` and through `from - direction`. The
    /// length of the direction therefore matters as far as it matters to the screen's rays:
    ///  - Sphere, and cylinder whose axis is the Z axis: the length does not matter, except for
    ///    rounding.
    ///  - Flat: a direction that advances less than 1e-6 along the normal counts as parallel and
    ///    hits nothing.
    ///  - Ruled: a direction shorter than 1e-10 hits nothing, and so does a direction that spans
    ///    with the ruling a parallelogram whose squared area is below 1e-10.
    ///  - Cylinder off the Z axis: the hits depend on the length, see CylinderScreen::intersect().
    ///  - Mesh: the length does not matter, except for rounding to single precision. If no triangle
    ///    is hit with \p extrapolate, the position may depend on `from + direction` and `from -
    ///    direction`.
    ///
    /// \param from start position
    /// \param direction direction of the line: a vector, not a position as in intersect()
    /// \param screen the screen to query
    /// \param[out] result the hit, always with a UV; written only if the function returns true
    /// \param extrapolate call intersectExtrapolatedWithSpecifiedNormal() with a sign of 0 instead
    ///        of intersect()
    /// \return false in three cases: no hit; a hit that equals a default Intersection; a hit at a
    ///         distance d from \p from with d^2 >= 3 c^2 + 1e-6, c being the distance of
    ///         getClosestPoint()
    /// \pre \p screen is not null
    /// \note Intended: with \p extrapolate, cylinders and spheres return exact tangents only, so
    ///       the result is false in practice; a reader would expect the hits of both sides.
    /// \note Intended: a hit that equals a default Intersection counts as none; a reader would
    ///       expect a flag.
    static bool getClosestIntersection(const Point<double, 3>& from, const Point<double, 3>& direction,
                                       IScreenGeometry* screen, Intersection& result, bool extrapolate);

    /// Returns the SHA-1 digest of \p size bytes. O(size).
    [[nodiscard]] static DataHash calculateHash(const unsigned char* data, std::uint64_t size);

    /// Returns the SHA-1 digest of the string's bytes. O(n).
    [[nodiscard]] static DataHash calculateHash(const std::string& data);

    /// Writes the center of getBounds(), or (0, 0, 0) for a screen without bounds.
    /// \pre \p center is not null
    void getCentreFromScreenBounds(Point<double, 3>* center) const;

    [[nodiscard]] std::vector<Point<double, 3>> intersectChannelBoundary(
        const PointPairs& rays, const PointPairs& extraRays) const override;
    [[nodiscard]] Point<double, 3> getClosestPoint(const Point<double, 3>& point) const override;
    [[nodiscard]] double getShortestDistance(const Point<double, 3>& point) const override;

    /// Appends four polylines of 20 positions each, counterclockwise as the viewer sees them: left,
    /// bottom, right, top. Each starts at its corner and stops one step before the next corner.
    /// Appends nothing for a screen without parameterization.
    void sampleBoundary(Polylines& boundary) const override;

    /// Replaces \p grid by one closed polyline that traces every grid line, so that a pen draws the
    /// grid without lifting. It has 21 positions on each line and 3 on each step between two lines.
    /// Leaves \p grid unchanged for a screen without parameterization.
    /// \note Intended: a density of 0 or 1 gives two lines of NaN, as 0 / 0 is not guarded; a
    ///       reader would expect no lines.
    void sampleGrid(Polylines& grid, int density) const override;

    void sampleBoundaryUV(std::vector<Point<double, 2>>& boundary) const override;
    [[nodiscard]] bool isValid() const override;
    void getTesselation(std::vector<Triangle>& triangles) const override;
    [[nodiscard]] bool hasTesselation() const override;

protected:
    /// The logger of all screens, "Quarn.QuarnScreen.ScreenGeometry". It is initialized before any
    /// call into the library.
    static log4cxx::LoggerPtr log;
};
