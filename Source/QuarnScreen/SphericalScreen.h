/// \file
/// Spherical screens.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::detail {
class HitPair;
struct ScreenAccess;
}  // namespace quarn::detail

/// The parameters of a spherical screen. Lengths are in the screen's unit.
///
/// The digest covers the bytes of the record.
///
/// \code{.cpp}
/// const SphericalScreenParams params{{0.0, 0.0, 0.0}, 6.0, -1.5, 1.5, 0.0, 1.5};
/// const SphericalScreen screen(params.center, 6.0, -1.5, 1.5, 0.0, 1.5);
/// assert(screen.getUniqueDataHash() == SphericalScreen::calcUniqueDataHash(params));
/// \endcode
struct SphericalScreenParams {
    Point<double, 3> center;  ///< Center of the sphere.
    double radius = 0.0;      ///< Radius of the sphere; negative means "not yet defined".
    double minTheta = 0.0;    ///< Azimuth of u = 0, in radians.
    double maxTheta = 0.0;    ///< Azimuth of u = 1, in radians.
    double minPhi = 0.0;      ///< Elevation of v = 1, the bottom edge, in radians.
    double maxPhi = 0.0;      ///< Elevation of v = 0, the top edge, in radians.
};

/// A spherical screen: a section of a sphere between two azimuths and two elevations, such as a
/// dome.
///
/// Frame, unit and UV are those of IScreenGeometry. A position is center + radius (sin theta cos
/// phi, cos theta cos phi, sin phi). The section is closed. The normal points to the center.
/// Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv up to rounding inside the unit square, for minTheta <
///     maxTheta within [-pi, 2 pi] that span less than a circle, and for elevations within (-pi /
///     2, pi / 2). On the edge of a section that passes pi, rounding can reduce u by a full turn.
///  2. u is linear in theta and v in phi.
///
/// Degenerate parameters (equal limits, zero radius) give NaN or infinite UV. A position higher or
/// lower than the sphere has no elevation: its UV and its closest point are NaN.
///
/// Thread-safety: const operations only read the parameters and are safe on any number of threads.
/// Only the results of queries allocate memory.
///
/// \warning The limits are not validated. Every query terminates for any limits, but the memory and
///          time of sampleBoundary() and getMaxAngleFromHeading() grow with their spans: one
///          position per two degrees on each of four edges, up to 2^30 positions per edge at 3.7e7
///          radians.
///
/// \code{.cpp}
/// const double quarterTurn = std::acos(0.0);
/// const SphericalScreen dome({0.0, 0.0, 0.0}, 6.0, -quarterTurn, quarterTurn, 0.0, quarterTurn);
/// const IntersectionSet hits = dome.intersect({0.0, 0.0, 0.0}, {0.0, 2.0, 0.0});
/// assert(hits.count() == 1 && hits.first().point[1] == 6.0);
/// assert(dome.mapInto2D(hits.first().point, false)[1] == 1.0);
/// \endcode
class QUARNSCREEN_EXPORT SphericalScreen : public ScreenGeometry {
public:
    /// Creates a screen without parameters: the radius is -1, and isValid() is false.
    SphericalScreen();
    /// Creates a screen with the center, radius and limits of \p config.
    /// \pre \p config is not null
    SphericalScreen(IScreenConfig* config);
    /// Stores the parameters without validation. Angles are in radians.
    SphericalScreen(Point<double, 3> center, double radius, double minTheta, double maxTheta, double minPhi,
                    double maxPhi);
    SphericalScreen(const SphericalScreen&) = default;
    SphericalScreen& operator=(const SphericalScreen&) = default;
    ~SphericalScreen() override;

    /// Returns the current parameters.
    [[nodiscard]] const SphericalScreenParams& getParams() const { return params; }

    /// Returns "class SphericalScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Center_Point, Screen_Radius, Screen_MinTheta, Screen_MaxTheta, Screen_MinPhi
    /// and Screen_MaxPhi.
    void serialize(std::wostream& out, int indent) override;
    /// Reads the tags that serialize() writes, as IXmlSerializable::deserialize() specifies.
    /// \pre \p node is not null
    /// \warning The limits are not validated. Every query terminates, but the memory and time of
    ///          sampleBoundary() and getMaxAngleFromHeading() grow with the spans of the limits, up
    ///          to 2^30 positions on each of four edges. Check the limits of an untrusted document
    ///          with getParams() before these two queries.
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Returns the hits on the section that lie after \p from, nearest first, at most two.
    /// \return the empty set for a miss, and for a ray without direction
    /// \note Intended: an exactly tangent ray hits twice at the same position; a reader would
    ///       expect one hit.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// Returns the hits on the whole sphere whose Intersection::normalSign equals \p normalSign: 1
    /// if the ray enters the sphere, -1 if it leaves the sphere, 0 if it is exactly tangent.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Returns true if the position lies in the section, within a tolerance of 1e-6 for both angles
    /// in radians, and for the square of (distance from the center / radius).
    /// \note Intended: a negative azimuth that a full turn does not bring into the range is not
    ///       compared with maxTheta, so a section with two negative azimuth limits contains
    ///       everything up to azimuth 0; a reader would expect both limits to be checked.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Returns the unit vector to the center; zero if the position is less than 1e-6 from the
    /// center.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// Returns the UV of the position's azimuth, and of the elevation at which the sphere has the
    /// position's height. The UV is not clamped.
    /// \return NaN for a position higher or lower than the sphere
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Returns the positions column by column from u = 0, each column from top to bottom.
    /// \note Intended: the positions are relative to the center, unlike those of mapInto3D(); a
    ///       reader would expect the center to be added. A count of 1 gives NaN.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Generates a grid of 100 by 100 vertices. The center is added to the positions.
    /// \note Intended: no list is cleared; a reader would expect cleared lists.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Appends four polylines, which walk once around the section: u = 0, v = 1, u = 1, v = 0. Each
    /// has one position per two degrees. A span above 3.7e7 radians gives empty polylines.
    ///
    /// O(sum of the spans of the limits).
    /// \note Intended: the edges along which v changes take their count from the azimuth span, and
    ///       the other edges from the elevation span; a reader would expect the opposite. Reversed
    ///       limits give empty polylines.
    void sampleBoundary(Polylines& boundary) const override;
    /// Returns false.
    [[nodiscard]] bool isPlanar() const override;
    /// Returns true.
    [[nodiscard]] bool hasParameterization() const override;
    /// Returns (0, 0, 0).
    /// \note Intended: the center is ignored; a reader would expect it to be added.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Returns the direction towards the middle azimuth if the gap between the azimuth limits is
    /// the widest gap, else the direction to the pole opposite to the wider gap in elevation.
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Returns the largest angle between the heading and a position of sampleBoundary(), as seen
    /// from the origin of the frame.
    ///
    /// O(sum of the spans of the limits), in time and memory.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Returns true if the radius is not negative.
    [[nodiscard]] bool isValid() const override;
    /// Writes the bounds of the whole sphere, regardless of the section.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Returns the digest of the parameters.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const SphericalScreenParams& record);
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

private:
    friend struct quarn::detail::ScreenAccess;

    [[nodiscard]] quarn::detail::HitPair intersectWithExtrapolation(const Point<double, 3>& from,
                                                                    const Point<double, 3>& to) const;

    SphericalScreenParams params{{}, -1.0, 0.0, 0.0, 0.0, 0.0};
};
