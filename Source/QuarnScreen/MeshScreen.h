/// \file
/// Screens that consist of triangles.
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
struct ScreenAccess;
}  // namespace quarn::detail

/// A mesh screen: a surface of independent triangles, each with its own corners, normals and UVs.
///
/// Frame, unit and UV are those of IScreenGeometry. The class is abstract. A derived class fills
/// `triangles` and then calls addScreenToScene(); from then on every query works. Three kinds of
/// index serve the queries:
///  - the ray tracer's scene, in single precision, finds the triangles that a ray hits;
///  - a quadtree over UV, in double precision, finds the triangle that contains a UV;
///  - a k-d tree over the centroids, in double precision, finds the triangle at a position.
///
/// A position from a ray is rounded to single precision: it is off the surface by about 1e-7 of the
/// largest coordinate. Triangles are closed; a position is on a triangle if it lies within 1e-5 of
/// the triangle's plane and its projection lies in the triangle.
///
/// **Ownership.** A screen owns its triangles. It is neither copyable nor movable, as its indexes
/// point into the triangles.
///
/// **Cost.** n is the number of triangles. Building the indexes is O(n log n). A query for a ray, a
/// position or a UV is O(log n) on average and O(n) in the worst case.
///
/// **Threads.** After a build, all const operations may run on any number of threads at once.
/// Operations that change the mesh must not overlap with another use of the same screen. Screens
/// may be created and destroyed on several threads at once.
///
/// \note Intended: the indexes read the derived fields of each triangle as they are stored, and
///       initTriangleData() leaves the ray tracer's scene unchanged; a reader would expect both to
///       be updated with the mesh.
///
/// \code{.cpp}
/// OBJScreen loaded;
/// std::istringstream text("v 0 0 0\nv 1 0 0\nv 0 0 1\nvn 0 -1 0\nf 1//1 2//1 3//1\n");
/// loaded.deserialize(text);
/// const MeshScreen& mesh = loaded;
/// assert(mesh.intersect({0.25, -1.0, 0.25}, {0.25, 0.0, 0.25}).count() == 1);
/// assert(mesh.isOnScreenSection({0.25, 0.0, 0.25}) && !mesh.hasValidBoundary());
/// \endcode
class QUARNSCREEN_EXPORT MeshScreen : public ScreenGeometry {
public:
    /// A cached result of mapInto3D().
    struct MappingInto3D {
        /// Kind of a result.
        enum State : int {
            OnScreen = 0,      ///< A triangle contains the UV; the position is on the mesh.
            Extrapolated = 1,  ///< No triangle contains the UV; the position is extrapolated.
            OutOfBounds = 2    ///< No triangle contains the UV; the position is unspecified.
        };

        Point<double, 2> uv;     ///< The queried UV, exactly.
        Point<double, 3> point;  ///< The position.
        State state = OnScreen;  ///< Kind of the result.
    };

    /// Creates a screen without triangles. The first one of the process opens the ray tracer.
    MeshScreen();
    MeshScreen(const MeshScreen&) = delete;
    MeshScreen& operator=(const MeshScreen&) = delete;
    MeshScreen(MeshScreen&&) = delete;
    MeshScreen& operator=(MeshScreen&&) = delete;
    /// Destroys the screen. The last one of the process closes the ray tracer.
    ~MeshScreen() override;

    /// Returns true if the mesh has exactly one closed boundary, with a UV at each of its points.
    [[nodiscard]] bool hasValidBoundary() const;
    /// Returns the mean of the triangles' centroids, weighted by area; zero for a mesh without
    /// area.
    [[nodiscard]] const Point<double, 3>& getCentroid() const;

    /// Returns the hits of the ray from \p start through \p end, nearest first, at most ten. The
    /// ray continues beyond \p end. Hits behind \p start are not found.
    ///
    /// Positions are in single precision. Every hit has a UV, which is unspecified on a mesh
    /// without UVs. O(log n) per hit on average.
    /// \return the empty set for a miss, and for a ray with a coordinate that is not finite or
    ///         beyond 1.844e18
    /// \note Intended: a surface closer behind another surface than a thousandth of the length of
    ///       `end - start` is skipped; a reader would expect both hits.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& start,
                                            const Point<double, 3>& end) const override;
    /// Returns the hits of intersect() on the side \p normalSign of their triangles, or all hits
    /// for a sign of 0.
    ///
    /// If there is none, the result is one hit without triangle and UV. The boundary point is
    /// chosen whose direction from \p end is most parallel to the ray. The hit is the position on
    /// the ray, not before \p start, that is nearest to the boundary at that point; (0, 0, 0) for a
    /// mesh without boundary. O(boundary points) in that case.
    /// \note Intended: a boundary point straight behind \p end counts as much as one straight
    ///       ahead; a reader would expect the one ahead.
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& start,
                                                                           const Point<double, 3>& end,
                                                                           int normalSign) const override;
    /// Returns true if a triangle lies at the position: if getScreenNormal() is not zero.
    [[nodiscard]] bool isOnScreenSection(const Point<double, 3>& point) const override;
    /// Returns the face normal of the triangle that contains the position: the projection lies in
    /// the triangle, at most 1e-5 away. Of several triangles, the one with the nearest centroid is
    /// taken.
    /// \return zero if no triangle contains the position
    /// \note Intended: on a mesh with a valid boundary, the result is also zero if the first
    ///       triangle that is checked does not contain the position and lies outside of the
    ///       boundary in UV; a reader would expect the normal.
    [[nodiscard]] Point<double, 3> getScreenNormal(const Point<double, 3>& point) const override;
    /// Returns the projection of the position onto the triangle with the nearest centroid.
    /// \throws ZelmoreException "There are no values in the KDTree" for a mesh without triangles
    /// \note Intended: the result is zero if the projection falls outside of that triangle; a
    ///       reader would expect the nearest position of the mesh.
    [[nodiscard]] Point<double, 3> getClosestPoint(const Point<double, 3>& point) const override;
    /// Returns the UV of the position's projection onto the triangle that contains it, as
    /// getScreenNormal() defines that triangle. With \p extrapolate, the UV is that of the
    /// projection onto the plane of the triangle with the nearest centroid, also beyond two of its
    /// edges.
    /// \return kNoUV if no triangle contains the position, or for a mesh without parameterization
    /// \throws ZelmoreException "There are no values in the KDTree", with \p extrapolate, for a
    ///         mesh with a parameterization and without triangles
    /// \note Intended: a projection beyond the edge from corner 0 to corner 2 has no UV; a reader
    ///       would expect all three edges to be extrapolated.
    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point, bool extrapolate) const override;
    /// Computes the position of a UV. The last twenty results are cached.
    ///
    /// \param uv the UV
    /// \param[out] result the position; written if the function returns true
    /// \param extrapolate for a UV in no triangle, extrapolate the triangles with the nearest
    ///        centroids in UV, and return the mean of the positions that agree best; NaN for a mesh
    ///        of a single triangle
    /// \return false for a mesh without parameterization, and without \p extrapolate for a UV that
    ///         no triangle contains
    /// \note Intended: cached results survive every change of the mesh, so that a repeated UV has
    ///       its old result; a reader would expect them to be invalidated.
    /// \note Intended: \p result is also written if a cached result is refused: with the
    ///       extrapolated position if the UV was extrapolated earlier, else with an unspecified
    ///       position. A reader would expect it to be unchanged.
    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& result, bool extrapolate) const override;
    /// Samples as IScreenGeometry::sampleHorizontally() specifies, except UVs for which mapInto3D()
    /// returns false. A count of 1 gives a u of NaN.
    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override;
    /// Returns the positions row by row, each row from left to right, without positions off the
    /// mesh. One row or one column gives UVs of NaN, and so no positions.
    ///
    /// Without parameterization, returns points of the boundary instead: about as many as the grid
    /// has on its boundary. For three or more rows or columns, the corner with the smallest |x| +
    /// |y| + |z| follows. O(n).
    [[nodiscard]] std::vector<Point<double, 3>> getDefaultCalibrationPoints(int columns,
                                                                            int rows) const override;
    /// Appends all corners with their normals. O(n).
    /// \note Intended: no list is cleared, and the indices start at 0 in each call; a reader would
    ///       expect cleared lists. Pass empty lists.
    void generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                          std::vector<Point<double, 3>>& vertices,
                          std::vector<Point<double, 3>>& normals) const override;
    /// Replaces the first polyline of \p out by the boundary, whose first point is repeated as its
    /// last. Leaves \p out unchanged for a mesh without boundary. O(boundary points).
    /// \note Intended: a polyline is appended only to an empty list; a reader would expect it
    ///       always.
    void sampleBoundary(Polylines& out) const override;
    /// Replaces \p grid by the boundary, followed by the lines of constant v and of constant u,
    /// clipped to the boundary in UV: \p density lines in each direction with 30 samples each.
    ///
    /// The last grid is cached with its density. O(density (boundary points + log n)) for a new
    /// density.
    /// \note Intended: while another thread computes the grid of the same density, the previous
    ///       grid is returned; a reader would expect to wait.
    /// \note Intended: a line that starts outside of the boundary gives an empty polyline first; a
    ///       reader would expect none.
    void sampleGrid(Polylines& grid, int density) const override;
    /// Returns the mean of the directions from the eye position to all corners; NaN for a mesh
    /// without triangles, and for a corner at the eye position. O(n).
    [[nodiscard]] Point<double, 3> getCenterOfScreenHeading() const override;
    /// Returns the largest angle between the heading and the direction to a corner, in radians.
    /// O(n).
    [[nodiscard]] double getMaxAngleFromHeading() const override;

    /// Replaces \p boundaryUV by the boundary in UV. O(boundary points).
    void sampleBoundaryUV(std::vector<Point<double, 2>>& boundaryUV) const override;
    /// Returns false.
    [[nodiscard]] bool isPlanar() const override;
    /// Returns (0, 0, 0).
    [[nodiscard]] Point<double, 3> getEyepoint() const override;
    /// Returns 20 zero bytes.
    [[nodiscard]] DataHash getUniqueDataHash() const override;
    /// Replaces \p copy by a copy of the triangles. O(n).
    void getTesselation(std::vector<Triangle>& copy) const override;
    /// Returns true if the mesh has at least one triangle.
    [[nodiscard]] bool hasTesselation() const override;
    /// Writes the bounds of all corners, as of the last build. Does nothing if a pointer is null. A
    /// mesh that was built without triangles has inverted bounds; a mesh before its first build has
    /// zero bounds.
    void getBounds(Point<double, 3>* min, Point<double, 3>* max) const override;

    /// Subdivides triangles until no edge is longer than \p maxEdgeLength, in the mesh's unit, and
    /// rebuilds the indexes except the ray tracer's scene. O(m log m) for m resulting triangles.
    /// \note Intended: the new triangles have no normal, so that no position lies on them; a reader
    ///       would expect the normal of the subdivided triangle.
    /// \note Intended: the ray tracer's scene is unchanged, here and in applyTransform() and
    ///       applyParameterizationTransform(); a reader would expect it to be rebuilt.
    /// \warning Does not terminate for a bound of zero or less, and for a bound that halving cannot
    ///          reach.
    void refine(double maxEdgeLength);

    /// Scales the mesh, then rotates it, then translates it, and rebuilds the indexes except the
    /// ray tracer's scene. Normals are recomputed. O(n log n).
    /// \param translation the translation, in the mesh's unit
    /// \param rotation angles in degrees: about Z (negated), X and Y; the rotation about Y is
    ///        applied first
    /// \param scale factor of all positions
    /// \note Intended: the centroids, by which positions are found, are unchanged; a reader would
    ///       expect them to move with the mesh.
    /// \warning May not terminate if an argument makes a coordinate NaN, as findBoundaryNew().
    void applyTransform(const Point<double, 3>& translation, const Point<double, 3>& rotation, double scale);

    /// Flips u, v or both: 1 - u, 1 - v. Rebuilds the indexes except the ray tracer's scene. Does
    /// nothing for a screen without parameterization. O(n log n).
    /// \note Intended: the derived UV fields of the triangles are unchanged; a reader would expect
    ///       them to be recomputed.
    void applyParameterizationTransform(bool flipU, bool flipV);

    /// Snaps a position to a nearby crease of the mesh.
    ///
    /// The crease is an edge that two of the few triangles with the nearest centroids share: the
    /// edge whose two normals differ most.
    /// \return the nearest position on the crease; \p point itself if the crease is 0.5 or more
    ///         away, in the mesh's unit, or if the mesh has too few triangles: 100 per level of its
    ///         UV tree, up to 500
    [[nodiscard]] Point<double, 3> getPointOnMeshEdge(const Point<double, 3>& point) const;

    /// Returns the SHA-1 digest of the text's bytes. O(n).
    [[nodiscard]] static DataHash calcUniqueDataHash(const std::string& data);

    /// Finds the boundary of a mesh: the edges that an odd number of triangles share, in walking
    /// order from the smallest corner in the order of x, y, z, u, v.
    ///
    /// Two corners are the same only if position and UV are equal exactly, so a seam in UV is part
    /// of the boundary. O(n) on average.
    /// \param triangles the mesh; derived fields are not read
    /// \param[out] boundary the boundary, with pointers into \p triangles; empty for a closed
    ///        surface. Of several boundaries, it is the first, and a warning is logged
    /// \return true if there is exactly one boundary, with a UV at each point
    /// \warning May not terminate for corners with coordinates that are NaN, as such a boundary
    ///          does not close.
    static bool findBoundaryNew(const std::vector<Triangle>& triangles, Boundary& boundary);

    /// Returns true if any two corners of a mesh differ in UV. False for an empty list. O(n).
    [[nodiscard]] static bool checkParameterization(const std::vector<Triangle>& triangles);

protected:
    /// Builds every index, and then the ray tracer's scene. O(n log n).
    /// \note Intended: without triangles, the ray tracer's scene is unchanged; a reader would
    ///       expect it to be emptied.
    void addScreenToScene();

    /// Builds every index except the ray tracer's scene. O(n log n).
    void initTriangleData();

    /// Clears every index except the ray tracer's scene, for a load that removed triangles and then
    /// failed. Bounds, centroid and hasValidBoundary() are unchanged.
    void dropTriangleData();

    /// Computes the grid of sampleGrid() without its cache.
    [[nodiscard]] Polylines calculateGrid(int density) const;

    /// Returns true if a UV lies inside of a closed polygon by the even-odd rule, or within 1e-9 of
    /// its edges. O(n).
    [[nodiscard]] static bool pointWithinBoundary(const std::vector<Point<double, 2>>& polygon,
                                                  Point<double, 2> point);

    /// The mesh. initTriangleData() or addScreenToScene() must follow any change, as the indexes
    /// point into the list.
    std::vector<Triangle> triangles;
    /// The boundary, rebuilt with the indexes.
    Boundary boundary;

private:
    friend struct quarn::detail::ScreenAccess;

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
