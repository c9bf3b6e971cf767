/// \file
/// Triangles and the questions that one triangle answers.
#pragma once

#include <array>

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// One corner of a triangle.
class QUARNSCREEN_EXPORT TriangleVertex {
public:
    /// The vertex half-way between two: means of position and UV, and the normalised sum of the normals (NaN
    /// where they cancel out).
    [[nodiscard]] static TriangleVertex midpoint(const TriangleVertex& a, const TriangleVertex& b);

    Point<double, 3> position;    ///< Corner position.
    Point<double, 3> normal;      ///< Corner normal.
    Point<double, 2> uv = kNoUV;  ///< Corner UV; kNoUV until it is set.
};

/// A triangle of a mesh, together with all that the queries need of it.
///
/// Every field after `vertices` is derived from it by computeGeometry() and computeCentroids(), which the
/// owner calls after each change; nothing keeps the fields in step by itself.
///
/// Thread-safety: that of a value.
class QUARNSCREEN_EXPORT Triangle {
public:
    std::array<TriangleVertex, 3> vertices;  ///< The corners, in winding order.
    Point<double, 3> normal;                 ///< Unit face normal; zero for a degenerate triangle.
    Point<double, 3> edge1;                  ///< From corner 0 to corner 1.
    Point<double, 3> edge2;                  ///< From corner 0 to corner 2.
    Point<double, 2> uvEdge1;                ///< From the UV of corner 0 to that of corner 1.
    Point<double, 2> uvEdge2;                ///< From the UV of corner 0 to that of corner 2.
    double uvDeterminant = 0.0;              ///< Twice the signed area in UV.
    Point<double, 3> centroid;               ///< Mean of the positions.
    Point<double, 2> uvCentroid;             ///< Mean of the UVs.

    /// Fills the edges, the UV edges, `uvDeterminant` and `normal`.
    void computeGeometry();

    /// Fills `centroid` and `uvCentroid`.
    void computeCentroids();

    /// Position at the parameters (a, b): corner 0 plus a times `edge1` plus b times `edge2`.
    [[nodiscard]] Point<double, 3> pointAt(double a, double b) const;

    /// UV at the parameters (a, b).
    [[nodiscard]] Point<double, 2> uvAt(double a, double b) const;

    /// Finds the parameters (a, b) of a position: those of its foot in the triangle's plane.
    ///
    /// Source: least squares of `point - corner 0` in the basis (`edge1`, `edge2`), by Cramer's rule.
    ///
    /// \param point position, in the plane or off it
    /// \param[out] a, b written where the answer is true
    /// \param allowOutside accept a foot beyond the edges b = 0 and a + b = 1. Intended: it does not relax
    ///        the edge a = 0, as a reader would expect.
    /// \return whether the foot lies in the triangle, within 1e-6 in a and b; false for edges that are
    ///        parallel or zero.
    bool barycentric(const Point<double, 3>& point, double& a, double& b, bool allowOutside) const;
};

/// Where the line through two positions meets the plane of a triangle, and whether inside of it.
///
/// \param origin, target positions on the line, which runs both ways
/// \param triangle with computed geometry
/// \param[out] t parameter of the hit along `target - origin`, may be negative
/// \param[out] hit position of the hit. \p t and \p hit are written wherever the line is not parallel to the
///        plane, also where the answer is false
/// \param[out] a, b as Triangle::barycentric() writes them
/// \param allowOutside as for Triangle::barycentric()
/// \return false for a line parallel to the plane, else the answer of Triangle::barycentric() for the hit
QUARNSCREEN_EXPORT bool intersectTrianglePlane(const Point<double, 3>& origin, const Point<double, 3>& target,
                                               const Triangle& triangle, double& t, Point<double, 3>& hit,
                                               double& a, double& b, bool allowOutside);
