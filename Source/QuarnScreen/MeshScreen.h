/// \file
/// Screens made of triangles.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/Boundary.h>
#include <QuarnScreen/Ray.h>
#include <QuarnScreen/ScreenGeometry.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {
class GridCache;
class MappingCache;
class RayScene;
struct MeshIndexes;
}  // namespace quarn::detail

/// A surface of independent triangles, each with its own corners, normals and UVs.
///
/// The class is abstract: a derived class fills `triangles`, then calls addScreenToScene(). From then on every query
/// works. Three kinds of index answer them:
///  - the ray tracer's scene, in single precision, every question that begins with a ray;
///  - a quadtree over UV, in double precision, which triangle holds a UV;
///  - a k-d tree over the triangles' centroids, in double precision, which triangle lies at a position.
///
/// A position that comes from a ray is rounded to floats, about 1e-7 of the largest coordinate off the surface.
///
/// Intended: the indexes read the fields of each triangle as they are stored, and changes of `triangles` that are
/// followed by initTriangleData() alone leave the ray tracer's scene as it was; a reader would expect both to be
/// brought up to date.
///
/// **Threads.** Once built, all const operations may run on any number of threads at once. What changes the mesh must
/// not overlap with anything else on the same screen. Screens may be made and destroyed on several threads at once.
///
/// A screen is neither copied nor moved, as its indexes point into its triangles.
class QUARNSCREEN_EXPORT MeshScreen : public ScreenGeometry {
public:
    /// One of the last answers of mapInto3D().
    struct MappingInto3D {
        /// How an answer was got.
        enum State : int {
            OnScreen = 0,      ///< A triangle holds the UV; the position lies on the mesh.
            Extrapolated = 1,  ///< No triangle holds the UV; the position continues the triangles near it.
            OutOfBounds = 2    ///< No triangle holds the UV, and the position means nothing.
        };

        Point<double, 2> uv;     ///< The UV exactly as it was asked for.
        Point<double, 3> point;  ///< The answer.
        State state = OnScreen;  ///< How it was got.
    };

    /// A screen without triangles. The first one of the process opens the ray tracer.
    MeshScreen();
    MeshScreen(const MeshScreen&) = delete;
    MeshScreen& operator=(const MeshScreen&) = delete;
    MeshScreen(MeshScreen&&) = delete;
    MeshScreen& operator=(MeshScreen&&) = delete;
    /// The last one of the process closes the ray tracer.
    ~MeshScreen() override;

    /// Whether the mesh has one closed outline with a real UV at each of its points.
    [[nodiscard]] bool hasValidBoundary() const;
    /// Mean of the triangles' centroids, weighted by their areas; zero for a mesh without area.
    [[nodiscard]] const Point<double, 3>& getCentroid() const;

    /// The hits of the ray from \p start through \p end, nearest first, at most ten.
    ///
    /// Positions are in single precision. Every hit has a UV, which means nothing on a mesh without UVs. Intended:
    /// `end` does not end the ray, hits behind `start` are not found, and a surface that lies closer than a thousandth
    /// of the length of `end - start` behind another is passed over. A ray with a coordinate that is not finite, or
    /// beyond 1.844e18, hits nothing.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& start,
                                            const Point<double, 3>& end) const override;
    /// The hits of intersect() on the given side of their triangles, all of them for a sign of 0. Where there is none,
    /// one hit without triangle and UV: the position of the ray, not before \p start, that is nearest to the outline's
    /// point in the direction most like the ray's, as seen from \p end. It is (0, 0, 0) for a mesh without outline.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& start,
                                                                           const Point<double, 3>& end,
                                                                           int normalSign) const override;
    /// Whether a triangle lies at the position, as getScreenNormal() finds it.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Face normal of the triangle on which the position lies: at most 1e-5 off its plane, in the mesh's unit. Zero
    /// where there is none. Intended: where the first triangle that is looked at does not hold the position and lies
    /// outside of the outline in UV, the answer is zero too.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// Foot of the position on the triangle with the nearest centroid. Intended: zero where the foot falls outside of
    /// that triangle; a reader would expect the nearest position of the mesh.
    /// \throws ZelmoreException "There are no values in the KDTree" for a mesh without triangles
    [[nodiscard]] Point<double, 3> getClosestPoint(const Point<double, 3>& point) const override;
    /// UV of the position's foot on the triangle that holds it, as getScreenNormal() finds that. With \p extrapolate: on
    /// the plane of the triangle with the nearest centroid, also beyond two of its edges. Intended: a foot beyond the
    /// edge from corner 0 to corner 2 has no UV.
    /// \return kNoUV where there is no answer, or no parameterisation
    /// \throws ZelmoreException "There are no values in the KDTree", with \p extrapolate, for a mesh without triangles
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    /// Position of a UV. The last twenty answers are kept. Intended: they outlive every change of the mesh, so that a UV
    /// asked for before is answered as then; a reader would expect them to go.
    ///
    /// \param[out] result written where the answer is true. Intended: also where an answer is refused that was
    ///        extrapolated before, and, with a position that means nothing, where the UV was refused before
    /// \param extrapolate for a UV in no triangle: continue the triangles with the nearest centroids in UV, and take the
    ///        mean of those that agree best; NaN for a mesh of a single triangle
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& result, bool extrapolate) const override;
    /// Samples as the contract tells, but those that mapInto3D() refuses.
    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Row by row, each from left to right, without the positions off the mesh; NaN and so nothing for one row or one
    /// column. Without parameterisation: points of the outline, about as many as the rim of the grid has, and from
    /// three rows or columns on the corner nearest to the origin by |x| + |y| + |z|.
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// All corners with their normals. Intended: nothing is cleared, and the indices begin at 0 in each call.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Replaces the first polyline of \p out by the outline, which repeats its first point as its last; does nothing for
    /// a mesh without outline. Intended: nothing is appended where there is a polyline already.
    void sampleBoundary(Polylines& out) const override;
    /// The outline, then the lines of constant v and of constant u, cut off where the outline in UV ends: \p density
    /// lines each way with 30 samples. The grid last made is kept; one that another thread is making under the same
    /// density is not waited for: the one of before is handed out. Intended: a line that begins outside gives an empty
    /// polyline first.
    void sampleGrid(Polylines& grid, int density) const override;
    /// Mean of the directions from the eye point to all corners; NaN for a mesh without triangles.
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Greatest angle between the heading and the direction to a corner, in radians.
    [[nodiscard]] double getMaxAngleFromHeading() const override;

    /// Replaces \p outline by the outline in UV. Does nothing where it is the mesh's own list.
    void sampleBoundaryUV(std::vector<Point<double, 2>>& outline) const override;
    /// False.
    [[nodiscard]] bool isPlanar() const override;
    /// The zero position.
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Twenty zero bytes.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    /// Replaces \p copy by the triangles. Does nothing where it is the mesh's own list.
    void getTesselation(std::vector<Triangle>& copy) const override;
    /// Whether there is a triangle.
    [[nodiscard]] bool hasTesselation() const override;
    /// Bounds of all corners; does nothing where a pointer is null. A mesh that was built without triangles has
    /// inverted bounds.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Cuts triangles until no edge is longer than \p maxEdgeLength, in the mesh's unit. Intended: pieces have no normal,
    /// so that no position lies on them; and the ray tracer keeps the mesh of before, here and in the two operations
    /// below.
    /// \warning It does not end for a bound of zero or below, nor for one that edges cannot reach by being halved.
    void refine(double maxEdgeLength);

    /// Scales the mesh, turns it and moves it. Normals follow. Intended: centroids, by which positions are found, stay.
    /// \param rotation degrees: about Z (negated), X and Y; the turn about Y comes first
    /// \warning As findBoundaryNew(): it may not end where an argument makes a coordinate NaN.
    void applyTransform(const Point<double, 3>& translation, const Point<double, 3>& rotation, double scale);

    /// Turns u, v or both round: 1 - u, 1 - v. Intended: what the triangles derive from their UVs stays. Does nothing on
    /// a screen without parameterisation.
    void applyParameterizationTransform(bool flipU, bool flipV);

    /// Pulls a position onto a crease of the mesh near to it: of the edges between the few triangles with the nearest
    /// centroids that between the two whose normals differ most. The position itself where that edge is 0.5 or more
    /// away, in the mesh's unit, or the mesh has too few triangles (100 for each level of its UV tree, up to 500).
    [[nodiscard]] Point<double, 3> getPointOnMeshEdge(const Point<double, 3>& point) const;

    /// SHA-1 of the text's bytes.
    [[nodiscard]] static DataHash calcUniqueDataHash(const std::string& data);

    /// Finds the outline of a mesh: the edges that an odd number of triangles share, walked from the least corner on.
    /// Corners count as one only where position and UV are equal, so a seam in UV is part of the outline.
    ///
    /// \param[out] boundary replaced. Where there are several outlines it holds the first, and a warning is logged
    /// \return whether there is one outline, with a real UV at each point
    /// \warning It may not end for corners with coordinates that are NaN: such an outline does not close.
    static bool findBoundaryNew(const std::vector<Triangle>& triangles, Boundary& boundary);

    /// Whether the UVs of a mesh differ at all.
    [[nodiscard]] static bool checkParameterization(const std::vector<Triangle>& triangles);

protected:
    /// Builds every index, then hands the triangles to the ray tracer. Intended: without triangles the tracer keeps
    /// those of before.
    void addScreenToScene();

    /// Builds every index but the ray tracer's.
    void initTriangleData();

    /// Empties every index but the ray tracer's, for a load that dropped triangles and then stopped. Bounds, centroid and
    /// hasValidBoundary() stay.
    void dropTriangleData();

    /// Makes the grid of sampleGrid() anew.
    [[nodiscard]] Polylines calculateGrid(int density) const;

    /// Whether a UV lies in an outline, or within 1e-9 of it. Crossings are counted, even or odd.
    [[nodiscard]] static bool pointWithinBoundary(const std::vector<Point<double, 2>>& outline,
                                                  Point<double, 2> point);

    /// The mesh. Any change must be followed by initTriangleData() or addScreenToScene(), as the indexes point into it.
    std::vector<Triangle> triangles;
    /// The outline, remade with the indexes.
    Boundary boundary;

private:
    [[nodiscard]] IntersectionSet intersectInternal(const Point<double, 3>& start,
                                                    const Point<double, 3>& end) const;
    [[nodiscard]] const Triangle* findClosestTriangle(const Point<double, 3>& point,
                                                      bool nearestCentroid) const;
    [[nodiscard]] bool isWithinOutline(const Point<double, 2>& uv) const;
    [[nodiscard]] const Triangle* findTriangleAtUV(const Point<double, 2>& uv) const;
    bool answerFromCache(const MappingInto3D& known, const Point<double, 2>& uv, Point<double, 3>& result,
                         bool extrapolate) const;
    [[nodiscard]] Point<double, 3> extrapolateUV(const Point<double, 2>& uv) const;
    [[nodiscard]] std::optional<std::size_t> findBoundaryPoint(const Ray& ray, int normalSign) const;
    [[nodiscard]] Point<double, 3> rayPointNearestBoundary(const Ray& ray, int normalSign) const;
    [[nodiscard]] std::vector<Point<double, 3>> calibrationPointsByUV(int columns, int rows) const;
    [[nodiscard]] std::vector<Point<double, 3>> calibrationPointsOfRim(int columns, int rows) const;
    void clearBoundary();

    std::unique_ptr<quarn::detail::RayScene> scene;
    std::unique_ptr<quarn::detail::MeshIndexes> index;
    std::unique_ptr<quarn::detail::MappingCache> mappingCache;
    std::unique_ptr<quarn::detail::GridCache> gridCache;
    bool boundaryValid = false;
};
