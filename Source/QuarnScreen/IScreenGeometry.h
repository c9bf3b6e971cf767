/// \file
/// The contract of every screen.
#pragma once

#include <array>
#include <map>
#include <ostream>
#include <utility>
#include <vector>
#include <xercesc/dom/DOMNode.hpp>

#include <Common/Export.h>
#include <QuarnScreen/IScreenConfig.h>
#include <QuarnScreen/ITypeid.h>
#include <QuarnScreen/IXmlSerializable.h>
#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Point.h>
#include <QuarnScreen/Triangle.h>

/// A physical display screen of any shape.
///
/// **Frame.** Right-handed, +Z up. The viewer stands on the -Y side and looks along +Y, with +X to the right.
/// Lengths are in one unit of the caller's choice; angles are in radians. Theta is the azimuth about Z from
/// +Y towards +X, phi the elevation above the XY plane through the centre.
///
/// **UV.** Every screen maps its surface onto the unit square: u runs from 0 at the left to 1 at the right, v
/// from 0 at the top to 1 at the bottom.
///
/// **Rays** are two positions; the direction is their difference. A hit behind the first position counts.
///
/// **extrapolate** means the same in every operation: whether answers beyond the screen are wanted.
///
/// **No answer** is told by value: an empty IntersectionSet, false, or kNoUV. Queries throw
/// nothing but what containers throw when memory runs out.
///
/// **Threads.** All const operations of one screen may run on any number of threads at once. serialize(),
/// deserialize() and updateGeometry() must not overlap with anything else on the same screen.
class QUARNSCREEN_EXPORT IScreenGeometry : public IXmlSerializable, public ITypeid {
public:
    /// Name for the argument `extrapolate` of a caller who wants answers on the screen alone. It is false.
    static const bool kNoExtrapolation;

    /// Polylines, each a row of positions.
    using Polylines = std::vector<std::vector<Point<double, 3>>>;
    /// Rays, each as two positions on it.
    using PointPairs = std::vector<std::pair<Point<double, 3>, Point<double, 3>>>;
    /// Positions by (column, row).
    using GridSamples = std::map<Point<int, 2>, Point<double, 3>>;

    ~IScreenGeometry() override;

    /// Replaces all parameters by those of \p config. Meshes ignore it.
    virtual void updateGeometry(IScreenConfig* config) = 0;

    /// Samples the line of constant \p v from \p uStart to \p uEnd at \p count equal steps.
    /// \param count number of samples; below 2 nothing is written
    /// \param row second part of the keys
    /// \param[in,out] samples gets each position under (number of the sample, \p row), entries with that key
    ///        replaced
    /// \param extrapolate keep samples outside of the unit square too
    virtual void sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                    GridSamples& samples, bool extrapolate) const = 0;

    /// Hits on the screen of the line from \p from through \p to.
    [[nodiscard]] virtual IntersectionSet intersect(const Point<double, 3>& from,
                                                    const Point<double, 3>& to) const = 0;

    /// Hits on the surface continued beyond the screen.
    /// \param normalSign side of the surface to keep. Intended: its meaning differs by shape. Flat and ruled
    ///        screens ignore it; cylinder and sphere keep hits whose Intersection::normalSign equals it, so
    ///        that 0 keeps exact tangents alone; for a mesh 0 means no filter.
    [[nodiscard]] virtual IntersectionSet intersectExtrapolatedWithSpecifiedNormal(
        const Point<double, 3>& from, const Point<double, 3>& to, int normalSign) const = 0;

    /// Where the boundary rays of a channel meet the screen or its continuation, all on the side of the
    /// surface that the first hit on the screen shows.
    /// \param rays rays to answer
    /// \param extraRays rays that only help to find the side
    /// \return the first hit of each ray in order, rays without a hit left out; nothing where no ray of
    ///        either list hits the screen itself
    [[nodiscard]] virtual std::vector<Point<double, 3>> intersectChannelBoundary(
        const PointPairs& rays, const PointPairs& extraRays) const = 0;

    /// Whether a position lies on the screen, within a tolerance of the shape's own.
    [[nodiscard]] virtual bool isOnScreenSection(const Point<double, 3>& point) const = 0;

    /// Unit normal of the surface at a position.
    [[nodiscard]] virtual Point<double, 3> getScreenNormal(const Point<double, 3>& point) const = 0;

    /// The screen's position for a point whose UV is clamped to the unit square: nearest in UV, and not
    /// always in space.
    [[nodiscard]] virtual Point<double, 3> getClosestPoint(const Point<double, 3>& point) const = 0;

    /// UV of a position. Intended: analytic shapes ignore \p extrapolate and answer for any position, with UV
    /// outside of the unit square where it lies beyond the screen.
    [[nodiscard]] virtual Point<double, 2> mapInto2D(const Point<double, 3>& point,
                                                     bool extrapolate) const = 0;

    /// Position of a UV.
    /// \param[out] point always written by the analytic shapes, also where the answer is false
    /// \return true with \p extrapolate; else whether the position is on the screen
    virtual bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const = 0;

    /// A grid of positions to calibrate at; empty where a count is not positive.
    [[nodiscard]] virtual std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                                    int rows) const = 0;

    /// A list of triangles to display, and a position to view it from.
    /// \param[out] viewPoint where to view it from
    /// \param[in,out] indices three for each triangle, counted from 0. Intended: replaced by the flat screen,
    ///        appended to by the others
    /// \param[in,out] vertices, normals appended to. Intended: nothing is cleared; pass empty ones
    virtual void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                  std::vector<Point<double, 3>>& vertices,
                                  std::vector<Point<double, 3>>& normals) const = 0;

    /// Appends the outline, anticlockwise as the viewer sees it.
    virtual void sampleBoundary(Polylines& boundary) const = 0;

    /// Replaces \p boundary by the outline in UV; other shapes than meshes leave it alone.
    virtual void sampleBoundaryUV(std::vector<Point<double, 2>>& boundary) const = 0;

    /// Replaces \p grid by the lines of a regular grid.
    /// \param density number of lines in each direction, rounded up to an odd number
    virtual void sampleGrid(Polylines& grid, int density) const = 0;

    /// Whether the surface is a plane.
    [[nodiscard]] virtual bool isPlanar() const = 0;

    /// Whether the screen maps between 3D and UV.
    [[nodiscard]] virtual bool hasParameterization() const = 0;

    /// A nominal position of the eye.
    [[nodiscard]] virtual Point<double, 3> getEyepoint() const = 0;

    /// Direction towards the screen's centre.
    [[nodiscard]] virtual Point<double, 3> getCenterOfScreenHeading() const = 0;

    /// Half of the angle that the screen subtends about the heading, in radians.
    [[nodiscard]] virtual double getMaxAngleFromHeading() const = 0;

    /// Whether the screen has parameters that it can be used with.
    [[nodiscard]] virtual bool isValid() const = 0;

    /// SHA-1 digest of the data that define the screen.
    [[nodiscard]] virtual std::array<unsigned char, 20> getUniqueDataHash() const = 0;

    /// Hands out the triangles of a mesh; other shapes leave \p triangles alone.
    virtual void getTesselation(std::vector<Triangle>& triangles) const = 0;

    /// Whether getTesselation() yields anything.
    [[nodiscard]] virtual bool hasTesselation() const = 0;

    /// Axis-aligned bounds; shapes without them leave both positions untouched.
    /// \pre neither pointer is null.
    virtual void getBounds(Point<double, 3>* min, Point<double, 3>* max) const = 0;

    /// Distance to getClosestPoint().
    [[nodiscard]] virtual double getShortestDistance(const Point<double, 3>& point) const = 0;
};
