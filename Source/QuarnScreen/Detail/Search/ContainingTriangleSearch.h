/// \file
/// Search for the triangles that contain a position.
#pragma once

#include <optional>
#include <vector>

#include "ContainmentBounds.h"
#include "FirstVisit.h"
#include "NearestCentroidSearch.h"
#include "TriangleBuckets.h"
#include "TriangleTrees.h"

namespace quarn::detail {

/// Decides which triangle of a mesh contains a position, by the stored centroids.
///
/// Thread-safety: after build(), any number of threads may search at once.
class ContainingTriangleSearch {
public:
    /// Builds the indexes. The triangles must not move or change until the next build.
    void build(const std::vector<Triangle>& triangles);

    /// Returns the tree over the centroids.
    [[nodiscard]] const CentroidTree& tree() const { return centroidTree; }

    /// Returns the triangle with the nearest centroid; of equally near ones, the first that a
    /// search of the tree visits. Null if no squared distance is below the largest double.
    /// \throws ZelmoreException as CentroidTree::findNearest() for an empty mesh
    [[nodiscard]] const Triangle* findNearest(const Point<double, 3>& point) const;

    /// Returns the triangle that contains a position; of several, the one with the nearest
    /// centroid, and of equally near ones, the first that a search of the tree visits. Null if
    /// there is none.
    [[nodiscard]] const Triangle* findContaining(const Point<double, 3>& point) const;

    /// Returns the UV of the first triangle that a search of the tree for findContaining() visits
    /// and that does not contain the position. The UV is that of the position's projection, or of
    /// corner 0 if the projection is outside of the triangle.
    /// \return nothing if the search visits no such triangle
    [[nodiscard]] std::optional<Point<double, 2>> firstRejectedUV(const Point<double, 3>& point) const;

    /// The results of findContaining() and firstRejectedUV().
    struct Finding {
        const Triangle* triangle = nullptr;
        std::optional<Point<double, 2>> rejectedUV;  ///< Nothing if there is no triangle.
    };

    /// Returns the results of both searches in less time than one after the other, because they
    /// wait for memory together.
    [[nodiscard]] Finding find(const Point<double, 3>& point) const;

    /// Returns the face normals of the \p count triangles with the nearest centroids, nearest
    /// first.
    /// \note Intended: \p direction is not read; a reader would expect it to select a side.
    [[nodiscard]] std::vector<Point<double, 3>> getNearestNormals(const Point<double, 3>& point,
                                                                  const Point<double, 3>& direction,
                                                                  int count) const;

private:
    template <class BeforeTests>
    [[nodiscard]] const Triangle* findAmongCandidates(const Point<double, 3>& point,
                                                      BeforeTests&& beforeTests) const;
    [[nodiscard]] std::optional<Point<double, 2>> rejectedUVFrom(std::size_t firstSlot,
                                                                 const Point<double, 3>& point) const;
    [[nodiscard]] std::optional<Point<double, 2>> walkToFirstRejected(const Point<double, 3>& point) const;
    [[nodiscard]] const Triangle* walkTree(const Point<double, 3>& point) const;

    CentroidTree centroidTree;
    TriangleBuckets buckets;
    ContainmentBounds boxes;
    NearestCentroidSearch centroids;
    FirstVisit firstVisit;
    bool isOrdered = true;  // no centroid is NaN, which would hide others from a search
};

}  // namespace quarn::detail
