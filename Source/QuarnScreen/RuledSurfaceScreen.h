/// \file
/// Ruled screens between two arcs.
#pragma once

#include <functional>
#include <optional>

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

namespace quarn::detail {
struct ScreenAccess;
}  // namespace quarn::detail

/// The parameters of a ruled screen: two lengths in the screen's unit and the limits of two arcs in
/// radians.
///
/// The digest covers the bytes of the record, in the order in which the caller filled it.
///
/// \code{.cpp}
/// const RuledSurfaceScreenParams params{4.0, 2.5, -1.0, 1.0, -0.5, 0.5};
/// const RuledSurfaceScreen screen(4.0, 2.5, -1.0, 1.0, -0.5, 0.5);
/// assert(screen.getUniqueDataHash() == RuledSurfaceScreen::calcUniqueDataHash(params));
/// \endcode
struct RuledSurfaceScreenParams {
    double width = 0.0;     ///< Chord of both arcs.
    double height = 0.0;    ///< Distance between the planes of the arcs.
    double minTheta = 0.0;  ///< Lower limit of the top arc.
    double maxTheta = 0.0;  ///< Upper limit of the top arc.
    double minPhi = 0.0;    ///< Lower limit of the bottom arc.
    double maxPhi = 0.0;    ///< Upper limit of the bottom arc.
};

/// A ruled screen: a surface of straight rulings between a top arc and a bottom arc over the same
/// chord.
///
/// Frame, unit and UV are those of IScreenGeometry. The corners are at x = +-width / 2, y = 0, z =
/// +-height / 2, and the arcs bulge towards +Y. Only the difference between the two limits of an
/// arc enters the geometry. The surface is S(u, v) = T(u) + v (B(u) - T(u)), with T and B the
/// curves of the top and the bottom arc. The normal points away from the centers of the arcs,
/// towards +Y at the apex.
///
/// Rays are intersected by a bisection for the ruling that they cross, so results are accurate to
/// about 1e-6 in u. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv within the accuracy of the search, for uv in the unit square
///     and arcs below pi.
///  2. mapInto3D() of the corners of the unit square gives the corners above.
///  3. A line has a hit if it runs towards +Y through the surface. Its reverse has none.
///
/// Degenerate parameters: a screen whose rulings are shorter than 1e-5 has no UV, as a ruling and
/// the line along Y then count as parallel. An arc of zero has no curve, and its positions are NaN.
/// getClosestPoint() of a position far above the screen lies on the bottom edge, as v has no sign.
///
/// Thread-safety: const operations only read the parameters, except for log messages, and are safe
/// on any number of threads. Only the results of queries and log messages allocate memory.
///
/// \note Intended: a line that runs towards -Y has no hit; a reader would expect the hit of its
///       reverse.
/// \warning The limits are not validated. The search may not terminate for arcs below about 1e-9
///          radians: its parameters are then so large that neighboring doubles lie farther apart
///          than the tolerance of the search.
///
/// \code{.cpp}
/// const RuledSurfaceScreen screen(4.0, 2.0, -1.0, 1.0, -0.5, 0.5);
/// Point<double, 3> corner;
/// assert(screen.mapInto3D({0.0, 0.0}, corner, true));
/// assert(std::abs(corner[0] + 2.0) < 1e-9 && std::abs(corner[2] - 1.0) < 1e-9);
/// assert(screen.intersect({0.5, -3.0, 0.5}, {0.5, 0.0, 0.5}).first().hasUV);
/// \endcode
class QUARNSCREEN_EXPORT RuledSurfaceScreen : public ScreenGeometry {
public:
    /// Creates a screen without parameters: the width is -1, and isValid() is false.
    RuledSurfaceScreen();
    /// Stores the parameters without validation. Theta limits the top arc and phi the bottom arc,
    /// in radians.
    RuledSurfaceScreen(double width, double height, double minTheta, double maxTheta, double minPhi,
                       double maxPhi);
    /// Creates a screen with the width, height and limits of \p config.
    /// \pre \p config is not null
    RuledSurfaceScreen(IScreenConfig* config);
    RuledSurfaceScreen(const RuledSurfaceScreen&) = default;
    RuledSurfaceScreen& operator=(const RuledSurfaceScreen&) = default;
    ~RuledSurfaceScreen() override;

    /// Returns the current parameters, width first.
    [[nodiscard]] RuledSurfaceScreenParams getParams() const;

    /// Returns "class RuledSurfaceScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Screen_Width, Screen_Height, Screen_MinTheta, Screen_MaxTheta, Screen_MinPhi
    /// and Screen_MaxPhi.
    void serialize(std::wostream& out, int indent) override;
    /// Reads the tags that serialize() writes, as IXmlSerializable::deserialize() specifies.
    /// \pre \p node is not null
    /// \warning The limits are not validated. Queries may not terminate for arcs below about 1e-9
    ///          radians. Check the limits of an untrusted document with getParams() before any
    ///          query.
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    /// Samples as IScreenGeometry::sampleHorizontally() specifies. Without \p extrapolate, a sample
    /// is included if isOnScreenSection() is true for its position, instead of if its UV is in the
    /// unit square.
    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Returns the hit between the two arcs with its UV, at most one. The hit may lie behind
    /// \p from, or beyond the sides.
    /// \return the empty set for a miss, for a ray that does not run towards +Y through the
    ///         surface, for a ray shorter than 1e-10, and for a ray parallel to the ruling as
    ///         closestPointsBetweenLines() defines it
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// Returns the hit on the rulings continued beyond the arcs, at most one.
    /// \note Intended: \p normalSign is ignored, and v is a ratio of lengths without a sign, so a
    ///       hit above the top edge has a positive v; a reader would expect a negative v.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Returns true if the position lies within 1e-6 of the surface along Y, and its UV less than
    /// 1e-6 outside of the unit square.
    /// \note Intended: v has no sign, so a position up to the length of one ruling above the top
    ///       edge also counts as on the screen; a reader would expect false.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Returns the unit normal at a position on the surface.
    /// \return zero, with a warning in the log, if the position is off the surface by 1 % of the
    ///         width or more
    ///
    /// Logs a warning on every call if an arc is pi or more.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// Returns the UV of the position's projection onto the surface along Y; (0, 0) if there is
    /// none.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Returns the positions column by column from u = 0, each column from top to bottom.
    /// \note Intended: a count of 1 gives NaN; a reader would expect the middle.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Generates a grid of 100 by 100 vertices. The normals are finite differences and point
    /// towards -Y at the apex.
    /// \note Intended: no list is cleared, and the normals are computed from the first 10000
    ///       entries of \p vertices; a reader would expect those of the new vertices. Pass empty
    ///       lists.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Returns false.
    [[nodiscard]] bool isPlanar() const override;
    /// Returns true.
    [[nodiscard]] bool hasParameterization() const override;
    /// Returns the position halfway between the centers of the arcs.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Returns (0, 1, 0).
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Returns the arc cosine of the dot product of the heading and the vector to a corner.
    /// \note Intended: the vector is not normalized, so the result is no angle in general and often
    ///       NaN; a reader would expect the angle to the corner.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Returns true if the width is not negative.
    [[nodiscard]] bool isValid() const override;
    /// Leaves both positions unchanged.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Returns the digest of the parameters, width first.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const RuledSurfaceScreenParams& record);
    /// Returns the digest of the parameters of \p config, height first.
    /// \note Intended: the digest equals that of a screen with this config only if width and height
    ///       are equal; a reader would expect the same digest for both.
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

protected:
    /// Stores the limits and recomputes everything that depends on them, the width and the height.
    void reset(double newMinTheta, double newMaxTheta, double newMinPhi, double newMaxPhi);

    /// Returns a position or a derivative of an arc. t runs from 0 at -X to 1 at +X and is not
    /// limited.
    [[nodiscard]] Point<double, 3> alongTopCurve(double t) const;
    [[nodiscard]] Point<double, 3> alongBottomCurve(double t) const;
    [[nodiscard]] Point<double, 3> alongTopCurveDerivative(double t) const;
    [[nodiscard]] Point<double, 3> alongBottomCurveDerivative(double t) const;

    /// Returns true if the line from \p from to \p to passes the ruling at \p t on its left.
    [[nodiscard]] bool isLeft(double t, Point<double, 3> from, Point<double, 3> to) const;

private:
    friend struct quarn::detail::ScreenAccess;

    [[nodiscard]] std::optional<double> findRuling(const Point<double, 3>& from,
                                                   const Point<double, 3>& to) const;
    [[nodiscard]] std::optional<Intersection> intersectWithExtrapolation(const Point<double, 3>& from,
                                                                         const Point<double, 3>& to,
                                                                         bool extrapolate) const;
    [[nodiscard]] std::optional<Intersection> projectAlongY(const Point<double, 3>& point) const;
    [[nodiscard]] double signedSineFromRuling(double u, const Point<double, 3>& point) const;
    void appendDisplayNormals(const std::vector<Point<double, 3>>& vertices,
                              std::vector<Point<double, 3>>& normals) const;

    double height = 0.0;
    double width = -1.0;
    double topArc = 0.0;
    double bottomArc = 0.0;
    double minTheta = 0.0;
    double maxTheta = 0.0;
    double minPhi = 0.0;
    double maxPhi = 0.0;
    double topRadius = 0.0;
    double bottomRadius = 0.0;
    Point<double, 3> topCenter;
    Point<double, 3> bottomCenter;
    double searchHigh = 0.0;
    double searchLow = 0.0;
};

/// Finds a sign change of a function that rises through its root, by bisection. NaN counts as
/// positive.
///
/// The interval is not checked for a sign change: without one, the search runs to an end. Calls the
/// function at most maxIterations + 1 times. Exceptions of the function propagate.
///
/// \param function the function
/// \param[out] root the last midpoint that was tried, not the middle of the final interval; 0.0 for
///        no iterations
/// \param low, high ends of the interval
/// \param maxIterations maximum number of halvings
/// \param tolerance length of the interval at which to stop
/// \param acceptance largest acceptable value of the function at the root
/// \return false if the value of the function at the root exceeds \p acceptance
QUARNSCREEN_EXPORT bool bisectRoot(std::function<double(double)> function, double& root, double low,
                                   double high, int maxIterations, double tolerance, double acceptance);
