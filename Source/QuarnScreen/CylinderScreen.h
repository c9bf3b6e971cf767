/// \file
/// Cylindrical screens.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::detail {
class HitPair;
}

/// What defines a cylindrical screen. Its bytes in memory feed the digest.
struct CylinderScreenParams {
    Point<double, 3> center;  ///< A position on the axis; the section's height is centred on its z.
    double radius = 0.0;      ///< Radius of the cylinder; negative means "not yet defined".
    double minTheta = 0.0;    ///< Azimuth of u = 0, in radians.
    double maxTheta = 0.0;    ///< Azimuth of u = 1, in radians.
    double height = 0.0;      ///< Length of the section along Z.
};

/// A section of a right circular cylinder whose axis is parallel to Z.
///
/// A position at azimuth theta is (center.x + radius sin theta, center.y + radius cos theta, z). The limits
/// are not restricted to a principal range: they may be negative, pass pi, or span a full circle and more.
/// The normal points towards the axis. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv up to rounding inside the unit square, for limits within [-pi, 2 pi]
///     that span less than a circle. On the very edge of a section that passes pi, rounding can take u a turn
///     lower.
///  2. u is linear in theta and v in z.
///  3. Swapped limits describe the same section for isOnScreenSection(), and run u backwards.
///
/// Degenerate parameters (zero height, equal limits, zero radius) give NaN or infinite UV. Const operations
/// read the parameters alone and are safe on any number of threads. Nothing but the results of queries takes
/// memory.
///
/// \warning isOnScreenSection() takes a step for each turn that the limits lie away from the principal range,
///        and does not end for limits so large that a turn does not change them, also where the other limit is
///        NaN.
class QUARNSCREEN_EXPORT CylinderScreen : public ScreenGeometry {
public:
    /// A screen without parameters: the radius is -1, and isValid() is false.
    CylinderScreen();
    /// A screen with the centre, radius, azimuth limits and height of \p config.
    CylinderScreen(IScreenConfig* config);
    /// Stores the parameters as they are; angles are in radians.
    CylinderScreen(Point<double, 3> center, double radius, double minTheta, double maxTheta, double height);
    CylinderScreen(const CylinderScreen&) = default;
    CylinderScreen& operator=(const CylinderScreen&) = default;
    ~CylinderScreen() override;

    /// The parameters as they are now.
    [[nodiscard]] const CylinderScreenParams& getParams() const { return params; }

    /// "class CylinderScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Center_Point, Screen_Height, Screen_Radius, Screen_MinTheta and Screen_MaxTheta.
    void serialize(std::wostream& out, int indent) override;
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Hits on the section, in front of \p from alone, nearest first.
    ///
    /// Intended: the second position is not shifted by the centre where the quadratic is formed, so with a
    /// centre off the Z axis the roots are not those of the geometry, as a reader would expect.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// Hits on the endless cylinder whose Intersection::normalSign is \p normalSign: 1 where the ray enters
    /// the cylinder, -1 where it leaves it, 0 where it is exactly tangent.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Within 1e-6 of the edges in z and radians, and of the wall in the square of the distance from the
    /// axis.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Unit vector towards the axis; zero on the axis itself.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// UV of the position's azimuth and height, not clamped. Intended: only a negative azimuth is taken a
    /// turn further, so a section that lies wholly above 2 pi gets UV outside of the unit square.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Column by column from u = 0, each from top to bottom. Intended: relative to the centre, unlike
    /// mapInto3D(), and NaN for a count of 1.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// A grid of 100 by 100 vertices. Intended: relative to the centre, and nothing is cleared.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Four polylines: top, right, bottom, left, walked once around; top and bottom with one position for two
    /// degrees. Right and left are empty on a full circle, top and bottom below two degrees.
    void sampleBoundary(Polylines& boundary) const override;
    [[nodiscard]] bool isPlanar() const override;
    [[nodiscard]] bool hasParameterization() const override;
    /// Intended: (0, 0, 0), whatever the centre is.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// From the axis towards the middle of the section.
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Intended: the larger limit is measured from +Y and not from the heading.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Whether the radius is not negative.
    [[nodiscard]] bool isValid() const override;
    /// Does nothing.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Digest of the parameters.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const CylinderScreenParams& record);
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

private:
    [[nodiscard]] quarn::detail::HitPair intersectWithExtrapolation(const Point<double, 3>& from,
                                                                    const Point<double, 3>& to) const;

    CylinderScreenParams params{{}, -1.0, 0.0, 0.0, 0.0};
};
