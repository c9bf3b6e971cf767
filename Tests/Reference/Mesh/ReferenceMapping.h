/// \file
/// Reference implementation of the mapping between positions and UV on a mesh.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QuarnScreen/MeshScreen.h>

#include "Reference/Mesh/ReferenceMesh.h"
#include "Reference/Mesh/ReferenceRegionMap.h"
#include "Reference/Mesh/ReferenceTrees.h"

namespace quarn::test {

/// The ring of the last answers.
struct ReferenceMappingCache {
    using State = MeshScreen::MappingInto3D::State;
    struct Entry {
        Point2 uv;
        Point3 point;
        State state;
    };

    std::optional<Entry> check(const Point2& uv);
    void add(const Point2& uv, const Point3& point, State state);

    std::vector<Entry> entries;
    int capacity = 20;
    int cursor = 0;
};

/// Position at a UV in the plane of a triangle.
[[nodiscard]] Point3 referencePositionAt(const Triangle& triangle, const Point2& uv);
/// The mean of the positions that are left when the farthest ones are gone; they are sorted afresh
/// for each.
[[nodiscard]] Point3 referenceFilterOutliers(int keep, std::vector<Point3>& points);
/// Where the triangles near a UV put it, averaged.
[[nodiscard]] Point3 referenceExtrapolateUV(const ReferenceUVTree& tree, const Point2& uv);
/// UV of a position on a mesh with a parameterisation. \pre there are triangles, or \p extrapolate
/// is false
[[nodiscard]] Point2 referenceMapInto2D(const ReferenceMesh& mesh, const Point3& point, bool extrapolate);

/// A level and a message.
using LogLine = std::pair<std::string, std::string>;

/// Mapping from UV to positions with all that it remembers.
class ReferenceMapping {
public:
    /// Which way an answer went.
    enum class Way {
        Refused,
        HitOnScreen,
        HitExtrapolated,
        HitOutOfBounds,
        OnMesh,
        OutOfBounds,
        Continued,
        Count
    };

    ReferenceMapping() = default;
    explicit ReferenceMapping(const std::vector<Triangle>& mesh) { rebuild(mesh); }

    /// Builds the indexes again; the cache stays. The triangles must outlive it.
    void rebuild(const std::vector<Triangle>& mesh);
    bool mapInto3D(const Point2& uv, Point3& result, bool extrapolate);

    bool parameterized = true;
    ReferenceUVTree uvTree;
    ReferenceRegionMap regionMap;
    ReferenceMappingCache cache;
    /// Where the messages go; nowhere if null.
    std::vector<LogLine>* log = nullptr;
    Way lastWay = Way::Refused;

private:
    template <class Text>
    void write(const char* level, Text text) const;

    bool answerHit(const ReferenceMappingCache::Entry& entry, const Point2& uv, Point3& result,
                   bool extrapolate);
    [[nodiscard]] std::optional<const Triangle*> ask(const Point2& uv) const;
};

/// Text of coordinates in a message.
[[nodiscard]] std::string referenceText(const Point2& uv);
[[nodiscard]] std::string referenceText(const Point3& point);

}  // namespace quarn::test
