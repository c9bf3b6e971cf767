/// \file
/// Flat screens.
#pragma once

#include <optional>

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::detail {
struct ScreenAccess;
}  // namespace quarn::detail

/// The parameters of a flat screen, in the screen's unit.
///
/// The digest covers the bytes of the record.
///
/// \code{.cpp}
/// const FlatScreenParams params{4.0, 2.5};
/// const FlatScreen screen(params.width, params.height);
/// assert(screen.getUniqueDataHash() == FlatScreen::calcUniqueDataHash(params));
/// \endcode
struct FlatScreenParams {
    double width = 0.0;   ///< Horizontal size.
    double height = 0.0;  ///< Vertical size.
};

/// A flat screen: a rectangle in the plane y = 0, centered at the origin and facing -Y, towards the
/// viewer.
///
/// Frame, unit and UV are those of IScreenGeometry. The rectangle is closed: a position is on the
/// screen if it lies within 1e-6 of the plane and of the rectangle. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv up to rounding.
///  2. mapInto3D() of the corners of the unit square gives the corners of the rectangle.
///  3. getClosestPoint() is the nearest position of the rectangle, up to rounding.
///
/// Degenerate parameters: a screen of zero width or height is valid, and its UV is NaN or infinite.
/// A negative width makes the screen invalid; queries then return unspecified values.
///
/// Thread-safety: const operations only read the parameters and are safe on any number of threads.
/// The mappings do not allocate memory.
///
/// \code{.cpp}
/// const FlatScreen screen(4.0, 2.0);
/// const IntersectionSet hits = screen.intersect({1.0, -3.0, 0.5}, {1.0, 0.0, 0.5});
/// assert(hits.count() == 1);
/// const Point<double, 2> uv = screen.mapInto2D(hits.first().point, false);
/// assert(uv[0] == 0.75 && uv[1] == 0.25);
/// \endcode
class QUARNSCREEN_EXPORT FlatScreen : public ScreenGeometry {
public:
    /// Creates a screen without parameters: width and height are -1, and isValid() is false.
    FlatScreen();
    /// Stores the sizes without validation.
    FlatScreen(double width, double height);
    /// Creates a screen with the width and height of \p config.
    /// \pre \p config is not null
    FlatScreen(IScreenConfig* config);
    FlatScreen(const FlatScreen&) = default;
    FlatScreen& operator=(const FlatScreen&) = default;
    ~FlatScreen() override;

    [[nodiscard]] double getWidth() const { return width; }
    [[nodiscard]] double getHeight() const { return height; }

    /// Returns "class FlatScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Screen_Width and Screen_Height.
    void serialize(std::wostream& out, int indent) override;
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Returns the hit on the screen, at most one. The hit may lie behind \p from. A ray with a
    /// coordinate that is NaN hits at NaN.
    /// \return the empty set for a miss, and for a ray with |(to - from) . normal| < 1e-6, which
    ///         counts as parallel; the limit does not scale with the ray's length
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// Returns the hit on the plane, at most one, with the limit of intersect().
    /// \note Intended: \p normalSign is ignored; a reader would expect hits of that side only.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Returns true if the position lies within 1e-6 of the plane and of the rectangle, ends
    /// included.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Returns (0, -1, 0) for every position.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// Returns the UV of the position's projection onto the plane. y is ignored, and the UV is not
    /// clamped.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Returns the positions column by column from the left, each column from top to bottom.
    /// \note Intended: a count of 1 gives NaN in that direction; a reader would expect the middle.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Generates two triangles on four vertices. Replaces \p indices and appends the rest.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Returns true.
    [[nodiscard]] bool isPlanar() const override;
    /// Returns true.
    [[nodiscard]] bool hasParameterization() const override;
    /// Returns the position at half the longer side before the center, towards -Y.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Returns (0, 1, 0).
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Returns the arc tangent of the diagonal over half the longer side.
    /// \note Intended: the whole diagonal is used; a reader would expect half of it, and so the
    ///       true half angle.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Returns true if the width is not negative.
    /// \note Intended: the height is not checked; a reader would expect both.
    [[nodiscard]] bool isValid() const override;
    /// Writes the bounds of the rectangle; y is 0 in both.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Returns the digest of the width and the height.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const FlatScreenParams& params);
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

protected:
    /// Replaces both sizes without validation.
    void reset(double newWidth, double newHeight);

private:
    friend struct quarn::detail::ScreenAccess;

    void computeCorners();
    [[nodiscard]] Point<double, 3> leftEdgeAt(double v) const;
    [[nodiscard]] Point<double, 3> rightEdgeAt(double v) const;
    [[nodiscard]] std::optional<Intersection> intersectWithExtrapolation(const Point<double, 3>& from,
                                                                         const Point<double, 3>& to) const;

    double width = -1.0;
    double height = -1.0;
    Point<double, 3> topLeft;      // UV (0, 0)
    Point<double, 3> topRight;     // UV (1, 0)
    Point<double, 3> bottomLeft;   // UV (0, 1)
    Point<double, 3> bottomRight;  // UV (1, 1)
};
