/// \file
/// Flat screens.
#pragma once

#include <optional>

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

/// What defines a flat screen. Its bytes in memory feed the digest.
struct FlatScreenParams {
    double width = 0.0;   ///< Horizontal size.
    double height = 0.0;  ///< Vertical size.
};

/// A rectangle in the plane y = 0, centred on the origin and facing -Y, towards the viewer.
///
/// A position is on the screen within 1e-6 of the plane and of the rectangle's edges. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv up to rounding.
///  2. mapInto3D() of the corners of the unit square gives the corners of the rectangle.
///  3. getClosestPoint() is the nearest position of the rectangle, up to rounding.
///
/// A screen of zero width or height is valid; its UV is NaN or infinite. Const operations read the fields
/// alone and are safe on any number of threads. None of the mappings allocates memory.
class QUARNSCREEN_EXPORT FlatScreen : public ScreenGeometry {
public:
    /// A screen without parameters: width and height are -1, and isValid() is false.
    FlatScreen();
    FlatScreen(double width, double height);
    /// A screen with the width and height of \p config.
    FlatScreen(IScreenConfig* config);
    FlatScreen(const FlatScreen&) = default;
    FlatScreen& operator=(const FlatScreen&) = default;
    ~FlatScreen() override;

    [[nodiscard]] double getWidth() const { return width; }
    [[nodiscard]] double getHeight() const { return height; }

    /// "class FlatScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Screen_Width and Screen_Height.
    void serialize(std::wostream& out, int indent) override;
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// The hit, where the screen holds it; it may lie behind \p from.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// The hit on the plane. Intended: \p normalSign is ignored.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// (0, -1, 0) for every position.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// UV of the position's foot in the plane, not clamped; y is ignored.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Column by column from the left, each from top to bottom. Intended: a count of 1 gives NaN in that
    /// direction.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    [[nodiscard]] bool isPlanar() const override;
    [[nodiscard]] bool hasParameterization() const override;
    /// Half the longer side in front of the centre.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Intended: the arc tangent of the whole diagonal over half the longer side, and not a true half angle.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Whether the width is not negative. Intended: the height is not looked at.
    [[nodiscard]] bool isValid() const override;
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Digest of width and height.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const FlatScreenParams& params);
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

protected:
    /// Replaces both sizes.
    void reset(double newWidth, double newHeight);

private:
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
