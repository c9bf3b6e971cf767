/// \file
/// Triangles and queries of a single triangle.
#pragma once

#include <array>

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// One corner of a triangle: a position, a normal and a UV.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// const TriangleVertex a{{0.0, 0.0, 0.0}, {0.0, -1.0, 0.0}, {0.0, 0.0}};
/// const TriangleVertex b{{2.0, 0.0, 0.0}, {0.0, -1.0, 0.0}, {1.0, 0.0}};
/// const TriangleVertex middle = TriangleVertex::midpoint(a, b);
/// assert(middle.position[0] == 1.0 && middle.uv[0] == 0.5);
/// \endcode
class QUARNSCREEN_EXPORT TriangleVertex {
public:
    /// Returns the vertex halfway between two: the means of position and UV, and the normalized sum
    /// of the normals. Normals that cancel out give a NaN normal.
    [[nodiscard]] static TriangleVertex midpoint(const TriangleVertex& a, const TriangleVertex& b);

    Point<double, 3> position;    ///< Position, in the mesh's unit and frame.
    Point<double, 3> normal;      ///< Unit normal; zero until it is set.
    Point<double, 2> uv = kNoUV;  ///< UV; kNoUV until it is set.
};

/// A triangle of a mesh, with all derived fields that queries need.
///
/// Every field after `vertices` is derived by computeGeometry() and computeCentroids(). The owner
/// calls both after each change of `vertices`; the fields are not updated automatically.
///
/// A triangle is parameterized by (a, b): corner 0 plus a times `edge1` plus b times `edge2`. The
/// triangle itself is closed: a >= 0, b >= 0, a + b <= 1.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// Triangle triangle;
/// triangle.vertices[1].position = {1.0, 0.0, 0.0};
/// triangle.vertices[2].position = {0.0, 0.0, 1.0};
/// triangle.computeGeometry();
/// double a = 0.0, b = 0.0;
/// assert(triangle.barycentric({0.25, 3.0, 0.5}, a, b, false) && a == 0.25 && b == 0.5);
/// \endcode
class QUARNSCREEN_EXPORT Triangle {
public:
    std::array<TriangleVertex, 3> vertices;  ///< The corners, in winding order.
    Point<double, 3> normal;                 ///< Unit face normal; zero for a degenerate triangle.
    Point<double, 3> edge1;                  ///< Vector from corner 0 to corner 1.
    Point<double, 3> edge2;                  ///< Vector from corner 0 to corner 2.
    Point<double, 2> uvEdge1;                ///< UV vector from corner 0 to corner 1.
    Point<double, 2> uvEdge2;                ///< UV vector from corner 0 to corner 2.
    double uvDeterminant = 0.0;              ///< Twice the signed area in UV.
    Point<double, 3> centroid;               ///< Mean of the positions.
    Point<double, 2> uvCentroid;             ///< Mean of the UVs.

    /// Computes `edge1`, `edge2`, `uvEdge1`, `uvEdge2`, `uvDeterminant` and `normal`.
    ///
    /// The normal is the direction of cross(edge1, edge2). It is zero if the cross product has no
    /// direction: corners on one line, or a NaN.
    void computeGeometry();

    /// Computes `centroid` and `uvCentroid`.
    void computeCentroids();

    /// Returns the position at the parameters (a, b): corner 0 plus a times `edge1` plus b times
    /// `edge2`. The parameters are not limited to the triangle.
    [[nodiscard]] Point<double, 3> pointAt(double a, double b) const;

    /// Returns the UV at the parameters (a, b), which are not limited to the triangle.
    [[nodiscard]] Point<double, 2> uvAt(double a, double b) const;

    /// Computes the parameters (a, b) of a position's projection onto the triangle's plane.
    ///
    /// Source: least squares of `point - corner 0` in the basis (`edge1`, `edge2`). The normal
    /// equations are solved by Cramer's rule.
    ///
    /// \param point position, in the plane or off it
    /// \param[out] a, b parameters; written only if the function returns true
    /// \param allowOutside accept a projection beyond the edges b = 0 and a + b = 1
    /// \return true if the projection lies in the triangle, within 1e-6 in a and b; false if the
    ///         edges are parallel or zero
    /// \pre computeGeometry() has been called
    /// \note Intended: \p allowOutside does not relax the edge a = 0; a reader would expect all
    ///       three edges to be relaxed.
    bool barycentric(const Point<double, 3>& point, double& a, double& b, bool allowOutside) const;
};

/// Intersects the line through two positions with the plane of a triangle.
///
/// The line counts as parallel to the plane if |normal . (target - origin)| is below 1e-6. The
/// limit does not scale with the distance between both positions.
///
/// \param origin, target positions on the line, which is infinite in both directions
/// \param triangle triangle with computed geometry
/// \param[out] t parameter of the hit along `target - origin`; negative behind the origin
/// \param[out] hit position of the hit; \p t and \p hit are written unless the line is parallel to
///        the plane, also if the function returns false
/// \param[out] a, b parameters of the hit, written as by Triangle::barycentric()
/// \param allowOutside as for Triangle::barycentric()
/// \return false for a line parallel to the plane, else the result of Triangle::barycentric() for
///         the hit
QUARNSCREEN_EXPORT bool intersectTrianglePlane(const Point<double, 3>& origin, const Point<double, 3>& target,
                                               const Triangle& triangle, double& t, Point<double, 3>& hit,
                                               double& a, double& b, bool allowOutside);
