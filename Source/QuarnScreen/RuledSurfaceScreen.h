/// \file
/// Ruled screens between two arcs.
#pragma once

#include <functional>
#include <optional>

#include <Common/Export.h>
#include <QuarnScreen/ScreenGeometry.h>

/// Two dimensions and the limits of the two arcs, in radians. Their bytes in memory feed the digest,
/// whichever dimension the caller put first.
struct RuledSurfaceScreenParams {
    double width = 0.0;     ///< Chord of both arcs.
    double height = 0.0;    ///< Distance between the planes of the arcs.
    double minTheta = 0.0;  ///< Lower limit of the top arc.
    double maxTheta = 0.0;  ///< Upper limit of the top arc.
    double minPhi = 0.0;    ///< Lower limit of the bottom arc.
    double maxPhi = 0.0;    ///< Upper limit of the bottom arc.
};

/// A surface of straight rulings between a top arc and a bottom arc over the same chord.
///
/// The corners lie at x = +-width / 2, y = 0, z = +-height / 2; the arcs bulge towards +Y. Only the
/// difference of the two limits of an arc enters the geometry. The surface is S(u, v) = T(u) + v (B(u) -
/// T(u)), with T and B the curves of the two arcs. The normal points away from the arcs' centres, towards +Y
/// at the apex. Rays are answered by a search for the ruling that they cross, so all answers hold to about
/// 1e-6 in u. Properties:
///  1. mapInto2D(mapInto3D(uv)) is uv within the search's accuracy, for uv in the unit square and arcs below
///     pi.
///  2. mapInto3D() of the corners of the unit square gives the corners above.
///  3. A line is answered where it runs towards +Y through the surface. Intended: its reverse gives no hit.
///
/// Const operations read the fields alone, but for log lines, and are safe on any number of threads. Nothing
/// but the results of queries and log lines takes memory.
///
/// A screen whose rulings are shorter than 1e-5 has no UV, as a ruling and the line along Y then count as parallel.
/// getClosestPoint() of a position far above the screen lies on the bottom edge, as v has no sign.
///
/// \warning The search does not end for arcs so small (below about 1e-9 radians) that neighbouring parameters
///        lie farther apart than its tolerance.
class QUARNSCREEN_EXPORT RuledSurfaceScreen : public ScreenGeometry {
public:
    /// A screen without parameters: the width is -1, and isValid() is false.
    RuledSurfaceScreen();
    /// Theta limits the top arc and phi the bottom arc, in radians.
    RuledSurfaceScreen(double width, double height, double minTheta, double maxTheta, double minPhi,
                       double maxPhi);
    /// A screen with the width, height and limits of \p config.
    RuledSurfaceScreen(IScreenConfig* config);
    RuledSurfaceScreen(const RuledSurfaceScreen&) = default;
    RuledSurfaceScreen& operator=(const RuledSurfaceScreen&) = default;
    ~RuledSurfaceScreen() override;

    /// The parameters as they are now, width first.
    [[nodiscard]] RuledSurfaceScreenParams getParams() const;

    /// "class RuledSurfaceScreen".
    [[nodiscard]] static const std::string& type();
    [[nodiscard]] const std::string& getType() const override;

    /// Writes the tags Screen_Width, Screen_Height, Screen_MinTheta, Screen_MaxTheta, Screen_MinPhi and
    /// Screen_MaxPhi.
    void serialize(std::wostream& out, int indent) override;
    void deserialize(xercesc::DOMNode* node) override;
    void updateGeometry(IScreenConfig* config) override;

    /// As the contract tells, but for samples off the screen: each sample asks isOnScreenSection().
    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// The hit between the two arcs, with its UV; it may lie behind \p from, or beyond the sides.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& from,
                                            const Point<double, 3>& to) const override;
    /// The hit on the rulings continued beyond the arcs. Intended: \p normalSign is ignored, and v is a ratio
    /// of lengths without a sign, so a hit above the top edge has a positive v.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override;
    /// Within 1e-6 of the surface along Y, and of the unit square in UV. Intended: as v has no sign, this
    /// holds up to one ruling's length above the top edge too.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Unit normal at a position on the surface; zero, with a log line, where the position is off by 1 % of
    /// the width. An arc of pi or more is logged on every call.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// UV of the position's projection along Y; (0, 0) where there is none.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const override;
    /// Column by column from u = 0, each from top to bottom. Intended: NaN for a count of 1.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// A grid of 100 by 100 vertices, with normals by finite differences that point towards -Y at the apex.
    /// Intended: nothing is cleared, and the normals read `vertices` from its beginning.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    [[nodiscard]] bool isPlanar() const override;
    [[nodiscard]] bool hasParameterization() const override;
    /// Half-way between the arcs' centres.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// (0, 1, 0).
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Intended: the arc cosine of a product with a vector that is not normalised: no angle in general, often
    /// NaN.
    [[nodiscard]] double getMaxAngleFromHeading() const override;
    /// Whether the width is not negative.
    [[nodiscard]] bool isValid() const override;
    /// Does nothing.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Digest of the parameters, width first.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    [[nodiscard]] static DataHash calcUniqueDataHash(const RuledSurfaceScreenParams& record);
    /// Intended: height first, so it equals that of the screen made from \p config only where both are equal.
    [[nodiscard]] static DataHash calcUniqueDataHash(IScreenConfig* config);

protected:
    /// Stores the limits and recomputes all that follows from them, the width and the height.
    void reset(double newMinTheta, double newMaxTheta, double newMinPhi, double newMaxPhi);

    /// Positions and derivatives of the two arcs; t runs from 0 at -X to 1 at +X and is not limited.
    [[nodiscard]] Point<double, 3> alongTopCurve(double t) const;
    [[nodiscard]] Point<double, 3> alongBottomCurve(double t) const;
    [[nodiscard]] Point<double, 3> alongTopCurveDerivative(double t) const;
    [[nodiscard]] Point<double, 3> alongBottomCurveDerivative(double t) const;

    /// Whether the line from \p from to \p to passes the ruling at \p t on its left.
    [[nodiscard]] bool isLeft(double t, Point<double, 3> from, Point<double, 3> to) const;

private:
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

/// Finds a sign change of a function that rises through its root, by bisection. A NaN counts as positive.
///
/// \param[out] root the last midpoint, and not the middle of the final interval; 0.0 where there was none
/// \param maxIterations most halvings
/// \param tolerance length of the interval at which to stop
/// \param acceptance greatest value at the root
/// \return false where the function's value at the root exceeds \p acceptance
QUARNSCREEN_EXPORT bool bisectRoot(std::function<double(double)> function, double& root, double low,
                                   double high, int maxIterations, double tolerance, double acceptance);
