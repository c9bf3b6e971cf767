/// \file
/// The interface of every screen.
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

/// A physical display screen: an analytic screen (flat, cylinder, sphere, ruled) or a mesh.
///
/// **Frame.** Right-handed, +Z up. The viewer is on the -Y side and looks along +Y, with +X to the
/// right. Lengths are in one unit of the caller's choice; angles are in radians. Theta is the
/// azimuth about Z, from +Y towards +X. Phi is the elevation above the XY plane through the center.
///
/// **UV.** Every screen with a parameterization maps its surface onto the closed unit square. u
/// runs from 0 at the left to 1 at the right, v from 0 at the top to 1 at the bottom.
///
/// **Boundary.** Screens are closed: their boundary belongs to them. Tests against it have
/// tolerances, which each screen documents.
///
/// **Rays** are two positions; the direction is their difference. Each screen documents if a hit
/// behind the first position counts.
///
/// **extrapolate** means the same in every operation: true if results beyond the screen are wanted.
///
/// **No result** is reported by value: an empty IntersectionSet, false, or kNoUV. Queries throw
/// only std::bad_alloc, except those of a mesh that document more. NaN in an argument gives NaN or
/// no result.
///
/// **Threads.** All const operations of one screen may run on any number of threads at once.
/// serialize(), deserialize() and updateGeometry() must not overlap with another use of the same
/// screen.
///
/// **Cost.** Operations of analytic screens are O(1), or linear in the number of returned samples.
/// The cost on meshes is documented at MeshScreen.
///
/// \code{.cpp}
/// const std::shared_ptr<IScreenGeometry> screen = std::make_shared<FlatScreen>(4.0, 2.0);
/// Point<double, 3> point;
/// assert(screen->mapInto3D({0.75, 0.5}, point, IScreenGeometry::kNoExtrapolation));
/// assert(point[0] == 1.0 && point[2] == 0.0);
/// assert(screen->mapInto2D(point, IScreenGeometry::kNoExtrapolation)[0] == 0.75);
/// \endcode
class QUARNSCREEN_EXPORT IScreenGeometry : public IXmlSerializable, public ITypeid {
public:
    /// Value of the argument `extrapolate` for results on the screen only. It is false.
    static const bool kNoExtrapolation;

    /// Polylines, each a list of positions.
    using Polylines = std::vector<std::vector<Point<double, 3>>>;
    /// Rays, each as two positions.
    using PointPairs = std::vector<std::pair<Point<double, 3>, Point<double, 3>>>;
    /// Positions with the key (column, row).
    using GridSamples = std::map<Point<int, 2>, Point<double, 3>>;

    ~IScreenGeometry() override;

    /// Replaces all parameters by those of \p config. Meshes ignore the call.
    /// \pre \p config is not null
    virtual void updateGeometry(IScreenConfig* config) = 0;

    /// Samples the line of constant \p v at \p count evenly spaced values of u, both ends included.
    ///
    /// O(count log samples.size()) calls of the mapping.
    /// \param v, uStart, uEnd the line in UV; \p uEnd may be less than \p uStart
    /// \param count number of samples; nothing is written for less than 2
    /// \param row second part of the keys
    /// \param[in,out] samples receives each position under the key (index of the sample, \p row);
    ///        replaces entries with the same key and leaves all others unchanged
    /// \param extrapolate include samples outside of the unit square
    virtual void sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                    GridSamples& samples, bool extrapolate) const = 0;

    /// Returns the hits of the line from \p from through \p to on the screen.
    /// \return the empty set if the line misses or has no direction
    [[nodiscard]] virtual IntersectionSet intersect(const Point<double, 3>& from,
                                                    const Point<double, 3>& to) const = 0;

    /// Returns the hits of the line from \p from through \p to on the surface, continued beyond the
    /// screen.
    /// \param from, to two positions on the line
    /// \param normalSign side of the surface whose hits are returned
    /// \note Intended: the meaning of \p normalSign differs by screen; a reader would expect one
    ///       meaning. Flat and ruled screens ignore it. Cylinder and sphere return hits whose
    ///       Intersection::normalSign equals it, so that 0 returns exact tangents only. For a mesh,
    ///       0 means no filter.
    [[nodiscard]] virtual IntersectionSet intersectExtrapolatedWithSpecifiedNormal(
        const Point<double, 3>& from, const Point<double, 3>& to, int normalSign) const = 0;

    /// Returns the positions at which the boundary rays of a channel meet the screen or its
    /// continuation.
    ///
    /// All positions are on one side of the surface: the side of the first hit on the screen
    /// itself. Linear in the number of rays.
    /// \param rays rays to intersect
    /// \param extraRays rays that are used only to determine the side, after \p rays
    /// \return the first hit of each of \p rays in order, without rays that miss; empty if no ray
    ///         of either list hits the screen itself
    [[nodiscard]] virtual std::vector<Point<double, 3>> intersectChannelBoundary(
        const PointPairs& rays, const PointPairs& extraRays) const = 0;

    /// Returns true if a position lies on the screen, within a tolerance that each screen
    /// documents.
    [[nodiscard]] virtual bool isOnScreenSection(const Point<double, 3>& point) const = 0;

    /// Returns the unit normal of the surface at a position. Each screen documents its direction,
    /// and its result for a position off the surface.
    [[nodiscard]] virtual Point<double, 3> getScreenNormal(const Point<double, 3>& point) const = 0;

    /// Returns the screen's position at the UV of \p point, clamped to the unit square.
    ///
    /// The result is the nearest position in UV, which is not always the nearest position in space.
    /// NaN in the UV gives NaN. Meshes override the operation.
    [[nodiscard]] virtual Point<double, 3> getClosestPoint(const Point<double, 3>& point) const = 0;

    /// Returns the UV of a position.
    /// \return kNoUV if a mesh has no UV there; analytic screens always return a UV
    /// \note Intended: analytic screens ignore \p extrapolate, and return a UV outside of the unit
    ///       square for a position beyond the screen; a reader would expect kNoUV there.
    [[nodiscard]] virtual Point<double, 2> mapInto2D(const Point<double, 3>& point,
                                                     bool extrapolate) const = 0;

    /// Computes the position of a UV.
    /// \param uv the UV
    /// \param[out] point the position; analytic screens write it also if the function returns false
    /// \param extrapolate accept a position beyond the screen
    /// \return true with \p extrapolate, else true if the position is on the screen; always false
    ///         for a mesh without parameterization
    virtual bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const = 0;

    /// Returns a grid of positions for calibration. O(columns * rows) calls of the mapping.
    /// \return the positions; empty if a count is not positive
    [[nodiscard]] virtual std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                                    int rows) const = 0;

    /// Generates triangles for display, and a position from which to view them.
    /// \param[out] viewPoint position of the viewer
    /// \param[in,out] indices receives three indices per triangle, counted from 0
    /// \param[in,out] vertices, normals receive one entry per vertex, appended at the end
    /// \note Intended: \p vertices and \p normals are not cleared, and \p indices are replaced by
    ///       flat screens only; a reader would expect cleared lists. Pass empty lists.
    virtual void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                  std::vector<Point<double, 3>>& vertices,
                                  std::vector<Point<double, 3>>& normals) const = 0;

    /// Appends the boundary as polylines. Each screen documents their number, order and density.
    virtual void sampleBoundary(Polylines& boundary) const = 0;

    /// Replaces \p boundary by the boundary in UV. Analytic screens leave \p boundary unchanged.
    virtual void sampleBoundaryUV(std::vector<Point<double, 2>>& boundary) const = 0;

    /// Replaces \p grid by the lines of a regular grid. O(density) calls of the mapping.
    /// \param[out] grid the lines, as polylines
    /// \param density number of lines in each direction; analytic screens round it up to an odd
    ///        number
    virtual void sampleGrid(Polylines& grid, int density) const = 0;

    /// Returns true if the surface is a plane by its type.
    [[nodiscard]] virtual bool isPlanar() const = 0;

    /// Returns true if the screen maps between positions and UV.
    [[nodiscard]] virtual bool hasParameterization() const = 0;

    /// Returns a nominal eye position.
    [[nodiscard]] virtual Point<double, 3> getEyepoint() const = 0;

    /// Returns the unit direction towards the middle of the screen, as seen from the eye position.
    [[nodiscard]] virtual Point<double, 3> getCenterOfScreenHeading() const = 0;

    /// Returns half of the angle that the screen subtends about the heading, in radians. Each
    /// screen documents its deviations.
    [[nodiscard]] virtual double getMaxAngleFromHeading() const = 0;

    /// Returns true if the screen has parameters with which it can be used.
    [[nodiscard]] virtual bool isValid() const = 0;

    /// Returns the SHA-1 digest of the data that define the screen.
    [[nodiscard]] virtual std::array<unsigned char, 20> getUniqueDataHash() const = 0;

    /// Replaces \p triangles by a copy of a mesh's triangles. Analytic screens leave it unchanged.
    /// O(n).
    virtual void getTesselation(std::vector<Triangle>& triangles) const = 0;

    /// Returns true if getTesselation() yields at least one triangle.
    [[nodiscard]] virtual bool hasTesselation() const = 0;

    /// Writes the axis-aligned bounds. Cylinder and ruled screens have none and leave both
    /// positions unchanged.
    /// \pre neither pointer is null
    virtual void getBounds(Point<double, 3>* min, Point<double, 3>* max) const = 0;

    /// Returns the distance from a position to getClosestPoint(), in the screen's unit.
    [[nodiscard]] virtual double getShortestDistance(const Point<double, 3>& point) const = 0;
};
