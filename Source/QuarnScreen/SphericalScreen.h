/// \file
/// Spherical screens.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::detail {
class HitPair;
}

/// What defines a spherical screen. Its bytes in memory feed the digest.
struct SphericalScreenParams {
    Point<double, 3> center;  ///< Centre of the sphere.
    double radius = 0.0;      ///< Radius of the sphere; negative means "not yet defined".
    double minTheta = 0.0;    ///< Azimuth of u = 0, in radians.
    double maxTheta = 0.0;    ///< Azimuth of u = 1, in radians.
    double minPhi = 0.0;      ///< Elevation of v = 1, the bottom edge, in radians.
    double maxPhi = 0.0;      ///< Elevation of v = 0, the top edge, in radians.
};

/// A section of a sphere between two azimuths and two elevations, such as a dome.
///
/// A position is center + radius (sin theta cos phi, cos theta cos phi, sin phi). The normal points to the
/// centre. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv up to rounding inside the unit square, for minTheta < maxTheta within
///     [-pi, 2 pi] that span less than a circle, and elevations within (-pi / 2, pi / 2). On the very edge of a
///     section that passes pi, rounding can take u a turn lower.
///  2. u is linear in theta and v in phi.
///
/// Degenerate parameters (equal limits, zero radius) give NaN or infinite UV. Const operations read the
/// parameters alone and are safe on any number of threads. Nothing but the results of queries takes memory.
class QUARNSCREEN_EXPORT SphericalScreen : public ScreenGeometry {
public:
    /// A screen without parameters: the radius is -1, and isValid() is false.
    SphericalScreen();
    /// A screen with the centre, radius and limits of \p config.
    SphericalScreen(IScreenConfig* config);
    /// Stores the parameters as they are; angles are in radians.
    SphericalScreen(Point<double, 3> center, double radius, double minTheta, double maxTheta, double minPhi,
                    double maxPhi);
    SphericalScreen(const SphericalScreen&) = default;
    SphericalScreen& operator=(const SphericalScreen&) = default;
    ~SphericalScreen() override;

    /// The parameters as they are now.
    [[nodiscard]] const SphericalScreenParams& getParams() const { return params; }

    /// "class SphericalScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Center_Point, Screen_Radius, Screen_MinTheta, Screen_MaxTheta, Screen_MinPhi and
    /// Screen_MaxPhi.
    void serialize(std::wostream& out, int indent) override;
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Hits on the section, in front of \p from alone, nearest first. Intended: an exactly tangent ray hits
    /// twice at the same position.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// Hits on the whole sphere whose Intersection::normalSign is \p normalSign: 1 where the ray enters the
    /// sphere, -1 where it leaves it, 0 where it is exactly tangent.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Within 1e-6 of the edges in radians, and of the sphere in the square of distance over radius.
    /// Intended: a negative azimuth that no turn brings into the range is not tested against `maxTheta`, so a
    /// section whose two azimuths are negative holds everything up to azimuth 0.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Unit vector to the centre; zero at the centre itself.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// UV of the position's azimuth and of the elevation that its height has on the sphere, not clamped.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Column by column from u = 0, each from top to bottom. Intended: relative to the centre, unlike
    /// mapInto3D(), and NaN for a count of 1.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// A grid of 100 by 100 vertices, the centre included. Intended: nothing is cleared.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Four polylines: u = 0, v = 1, u = 1, v = 0, walked once around with one position for two degrees.
    /// Intended: the edges along which v changes take their count from the azimuth range, and the others from
    /// the elevation range; reversed limits give empty polylines.
    void sampleBoundary(Polylines& boundary) const override;
    [[nodiscard]] bool isPlanar() const override;
    [[nodiscard]] bool hasParameterization() const override;
    /// Intended: (0, 0, 0), whatever the centre is.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Towards the middle azimuth, or a pole where the section leaves a wider gap at the other pole.
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Greatest angle of the outline from the heading, seen from the origin of the frame.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Whether the radius is not negative.
    [[nodiscard]] bool isValid() const override;
    /// The box of the whole sphere, whatever the section is.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Digest of the parameters.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const SphericalScreenParams& record);
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

private:
    [[nodiscard]] quarn::detail::HitPair intersectWithExtrapolation(const Point<double, 3>& from,
                                                                    const Point<double, 3>& to) const;

    SphericalScreenParams params{{}, -1.0, 0.0, 0.0, 0.0, 0.0};
};
