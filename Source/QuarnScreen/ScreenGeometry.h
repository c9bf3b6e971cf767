/// \file
/// What every screen can do through its contract alone.
#pragma once

#include <cstdint>
#include <log4cxx/logger.h>
#include <string>

#include <Common/Export.h>
#include <QuarnScreen/IScreenGeometry.h>

/// Base of every shape: sampling, closest points and digests that need only the contract.
///
/// It holds no data. Each operation is as safe on several threads as the virtual operations that it calls.
class QUARNSCREEN_EXPORT ScreenGeometry : public IScreenGeometry {
public:
    using DataHash = std::array<unsigned char, 20>;

    ~ScreenGeometry() override;

    /// Finds the hit nearest to a position along a line, looking both ways.
    ///
    /// \param from position to start at
    /// \param direction direction of the line. Intended: a vector and not a position as in intersect(); its
    ///        length does not matter
    /// \param screen screen to ask
    /// \param[out] result written where the answer is true, always with a UV
    /// \param extrapolate ask intersectExtrapolatedWithSpecifiedNormal() with a sign of 0 instead of
    ///        intersect(). Intended: on cylinders and spheres that keeps exact tangents alone, so the answer
    ///        is false in practice
    /// \return false without a hit, for a hit that equals a default Intersection, and for a hit that lies
    ///        farther from \p from than about sqrt(3) times the distance of getClosestPoint()
    static bool getClosestIntersection(const Point<double, 3>& from, const Point<double, 3>& direction,
                                       IScreenGeometry* screen, Intersection& result, bool extrapolate);

    /// SHA-1 of \p size bytes.
    [[nodiscard]] static DataHash calculateHash(const unsigned char* data, std::uint64_t size);

    /// SHA-1 of the string's bytes.
    [[nodiscard]] static DataHash calculateHash(const std::string& data);

    /// Writes the middle of getBounds(); (0, 0, 0) for a shape without bounds.
    /// \pre \p center is not null.
    void getCentreFromScreenBounds(Point<double, 3>* center) const;

    [[nodiscard]] std::vector<Point<double, 3>> intersectChannelBoundary(
        const PointPairs& rays, const PointPairs& extraRays) const override;
    [[nodiscard]] Point<double, 3> getClosestPoint(const Point<double, 3>& point) const override;
    [[nodiscard]] double getShortestDistance(const Point<double, 3>& point) const override;

    /// Four polylines of 20 positions each: left, bottom, right, top. Each begins at its corner and stops one
    /// step before the next. Appends nothing to a screen without UV mapping.
    void sampleBoundary(Polylines& boundary) const override;

    /// One closed polyline that traces every grid line, so that a pen draws the grid without lifting: 21
    /// positions on each line and 3 on each step between two lines. A screen without UV mapping leaves \p
    /// grid as it was. Intended: a density of 0 or 1 gives two lines of NaN, as 0 / 0 is not guarded.
    void sampleGrid(Polylines& grid, int density) const override;

    void sampleBoundaryUV(std::vector<Point<double, 2>>& boundary) const override;
    [[nodiscard]] bool isValid() const override;
    void getTesselation(std::vector<Triangle>& triangles) const override;
    [[nodiscard]] bool hasTesselation() const override;

protected:
    /// The logger of all shapes, "Quarn.QuarnScreen.ScreenGeometry". It exists before any call into the
    /// library.
    static log4cxx::LoggerPtr log;
};
