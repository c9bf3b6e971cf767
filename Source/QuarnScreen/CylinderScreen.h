/// \file
/// Cylindrical screens.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::detail {
class HitPair;
struct ScreenAccess;
}  // namespace quarn::detail

/// The parameters of a cylindrical screen. Lengths are in the screen's unit.
///
/// The digest covers the bytes of the record.
///
/// \code{.cpp}
/// const CylinderScreenParams params{{0.0, 0.0, 0.0}, 3.0, -1.0, 1.0, 2.0};
/// const CylinderScreen screen(params.center, 3.0, -1.0, 1.0, 2.0);
/// assert(screen.getUniqueDataHash() == CylinderScreen::calcUniqueDataHash(params));
/// \endcode
struct CylinderScreenParams {
    Point<double, 3> center;  ///< A position on the axis; the section is centered at its z.
    double radius = 0.0;      ///< Radius of the cylinder; negative means "not yet defined".
    double minTheta = 0.0;    ///< Azimuth of u = 0, in radians.
    double maxTheta = 0.0;    ///< Azimuth of u = 1, in radians.
    double height = 0.0;      ///< Length of the section along Z.
};

/// A cylindrical screen: a section of a right circular cylinder whose axis is parallel to Z.
///
/// Frame, unit and UV are those of IScreenGeometry. A position at azimuth theta is (center.x +
/// radius sin theta, center.y + radius cos theta, z). The limits are not restricted to a principal
/// range: they may be negative, pass pi, or span a full circle and more. The section is closed. The
/// normal points towards the axis. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv up to rounding inside the unit square, for limits within
///     [-pi, 2 pi] that span less than a circle. On the edge of a section that passes pi, rounding
///     can reduce u by a full turn.
///  2. u is linear in theta and v in z.
///  3. Swapped limits describe the same section for isOnScreenSection(), and reverse u.
///
/// Degenerate parameters (zero height, equal limits, zero radius) give NaN or infinite UV.
///
/// Thread-safety: const operations only read the parameters and are safe on any number of threads.
/// Only the results of queries allocate memory.
///
/// \warning The azimuth limits are not validated, and queries with large limits may not terminate.
///          isOnScreenSection() takes one step per full turn between the principal range and the
///          limits. That is 1.6e9 steps if both limits are near 1e10. The operation does not
///          terminate if both limits are above 7.2e16 or both are below -7.2e16, as a full turn no
///          longer changes a double of that size. It does not terminate for such a minTheta either
///          if maxTheta is NaN. The same applies to all operations that call it: intersect(),
///          mapInto3D() without extrapolation, getClosestPoint(), getShortestDistance(),
///          getClosestIntersection(), intersectChannelBoundary() and
///          ScreenUtils::estimateAspectRatioUV().
/// \warning The memory of sampleBoundary() grows with the span of the limits: one position per two
///          degrees on each of two edges, up to 2^31 positions per edge at 7.5e7 radians.
///
/// \code{.cpp}
/// const double quarterTurn = std::acos(0.0);
/// const CylinderScreen screen({0.0, 0.0, 0.0}, 3.0, -quarterTurn, quarterTurn, 2.0);
/// const IntersectionSet hits = screen.intersect({0.0, 0.0, 0.5}, {0.0, 1.0, 0.5});
/// assert(hits.count() == 1 && hits.first().point[1] == 3.0);
/// assert(screen.mapInto2D(hits.first().point, false)[0] == 0.5);
/// \endcode
class QUARNSCREEN_EXPORT CylinderScreen : public ScreenGeometry {
public:
    /// Creates a screen without parameters: the radius is -1, and isValid() is false.
    CylinderScreen();
    /// Creates a screen with the center, radius, azimuth limits and height of \p config.
    /// \pre \p config is not null
    CylinderScreen(IScreenConfig* config);
    /// Stores the parameters without validation. Angles are in radians.
    CylinderScreen(Point<double, 3> center, double radius, double minTheta, double maxTheta, double height);
    CylinderScreen(const CylinderScreen&) = default;
    CylinderScreen& operator=(const CylinderScreen&) = default;
    ~CylinderScreen() override;

    /// Returns the current parameters.
    [[nodiscard]] const CylinderScreenParams& getParams() const { return params; }

    /// Returns "class CylinderScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Center_Point, Screen_Height, Screen_Radius, Screen_MinTheta and
    /// Screen_MaxTheta.
    void serialize(std::wostream& out, int indent) override;
    /// Reads the tags that serialize() writes, as IXmlSerializable::deserialize() specifies.
    /// \pre \p node is not null
    /// \warning The limits are not validated. isOnScreenSection() and the queries that call it take
    ///          a time in proportion to the limits; they do not terminate if both limits are above
    ///          7.2e16 or both below -7.2e16. The memory of sampleBoundary() grows with the span of
    ///          the limits, to 2^31 positions on each of two edges. Check the limits of an
    ///          untrusted document with getParams() before any other query.
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Returns the hits on the section that lie after \p from, nearest first, at most two.
    /// \return the empty set for a miss, and for a ray parallel to the axis
    /// \note Intended: the quadratic equation uses the second position without subtracting the
    ///       center. For a center off the Z axis its roots, and so the hits, are not those of the
    ///       geometry and depend on the distance between both positions; a reader would expect the
    ///       geometric hits.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// Returns the hits on the infinite cylinder whose Intersection::normalSign equals
    /// \p normalSign: 1 if the ray enters the cylinder, -1 if it leaves the cylinder, 0 if it is
    /// exactly tangent.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Returns true if the position lies in the section, within a tolerance of 1e-6 for z, for the
    /// azimuth in radians, and for the squared distance from the axis.
    ///
    /// O(number of full turns between the principal range and the limits).
    /// \warning Does not terminate if both limits are above 7.2e16 or both are below -7.2e16.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Returns the unit vector towards the axis; zero if the position is less than 1e-6 from the
    /// axis.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// Returns the UV of the position's azimuth and height, not clamped.
    /// \note Intended: a full turn is added to negative azimuths only, so a section that lies
    ///       completely above 2 pi has UV outside of the unit square; a reader would expect UV
    ///       inside of it.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Returns the positions column by column from u = 0, each column from top to bottom.
    /// \note Intended: the positions are relative to the center, unlike those of mapInto3D(); a
    ///       reader would expect the center to be added. A count of 1 gives NaN.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Generates a grid of 100 by 100 vertices.
    /// \note Intended: the positions are relative to the center, and no list is cleared; a reader
    ///       would expect neither.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Appends four polylines, which walk once around the section: top, right, bottom, left. Top
    /// and bottom have one position per two degrees, right and left have 20. Right and left are
    /// empty if the limits span a full circle. Top and bottom are empty below two degrees, and
    /// above 7.5e7 radians.
    ///
    /// O(span of the limits).
    void sampleBoundary(Polylines& boundary) const override;
    /// Returns false.
    [[nodiscard]] bool isPlanar() const override;
    /// Returns true.
    [[nodiscard]] bool hasParameterization() const override;
    /// Returns (0, 0, 0).
    /// \note Intended: the center is ignored; a reader would expect it to be added.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Returns the direction from the axis towards the middle azimuth of the section.
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Returns the angle between the heading and the corner at the limit with the larger magnitude.
    /// \note Intended: the azimuth of the corner is the magnitude of the limit, measured from +Y; a
    ///       reader would expect the angle from the heading.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Returns true if the radius is not negative.
    [[nodiscard]] bool isValid() const override;
    /// Leaves both positions unchanged.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Returns the digest of the parameters.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const CylinderScreenParams& record);
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

private:
    friend struct quarn::detail::ScreenAccess;

    [[nodiscard]] quarn::detail::HitPair intersectWithExtrapolation(const Point<double, 3>& from,
                                                                    const Point<double, 3>& to) const;

    CylinderScreenParams params{{}, -1.0, 0.0, 0.0, 0.0};
};
