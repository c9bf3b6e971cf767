#include "PlotMeshData.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Mesh/BoundaryLoops.h>
#include <QuarnKit/Mesh/UvQuality.h>
#include <QuarnKit/Mesh/VertexIds.h>

#include "PlotMeshGrid.h"

namespace quarn {

namespace {

bool isUsable(const TriangleUVs& uvs) {
    return std::none_of(uvs.begin(), uvs.end(),
                        [](const Point<double, 2>& uv) { return uv == kNoUV || !isFinite(uv); });
}

bool isOutside(const TriangleUVs& uvs) {
    return std::any_of(uvs.begin(), uvs.end(), [](const Point<double, 2>& uv) {
        return uv[0] < 0.0 || uv[0] > 1.0 || uv[1] < 0.0 || uv[1] > 1.0;
    });
}

double areaOf(const TriangleCorners& triangle) {
    return length(cross(triangle[1] - triangle[0], triangle[2] - triangle[0])) / 2;
}

class DataBuilder {
public:
    explicit DataBuilder(const IScreenGeometry& drawnMesh) : mesh(drawnMesh) {}

    PlotMeshData build();

private:
    void takeTriangles();
    void findBounds();
    void markTriangles(const MeshTopology& surface);
    void addLines(const MeshTopology& surface);
    void addSeams(const MeshTopology& surface, const PlotMeshData::Line& positions);
    void addUvEdges();
    void moveToScene();

    const IScreenGeometry& mesh;
    std::vector<Triangle> triangles;  // with finite positions; UVs are finite or kNoUV
    std::vector<std::uint32_t> uvEdges;
    PlotMeshData data;
};

PlotMeshData DataBuilder::build() {
    takeTriangles();
    findBounds();
    if (!data.isDrawable()) return std::move(data);
    {
        const MeshTopology surface = buildMeshTopology(triangles);
        data.counts.components = surface.components.size();
        markTriangles(surface);
        addLines(surface);
    }
    addUvEdges();
    moveToScene();
    data.grid = uvGridLines(data.triangles, data.uvs);
    return std::move(data);
}

void DataBuilder::takeTriangles() {
    mesh.getTesselation(triangles);
    const std::size_t count = triangles.size();
    std::erase_if(triangles, [](const Triangle& triangle) {
        const TriangleCorners corners = cornersOf(triangle);
        return !std::all_of(corners.begin(), corners.end(), isFinite<3, std::make_index_sequence<3>>);
    });
    data.counts.notFinite = count - triangles.size();
    data.triangles.reserve(triangles.size());
    data.uvs.reserve(triangles.size());
    for (Triangle& triangle : triangles) {
        if (!isUsable(uvsOf(triangle)))
            for (TriangleVertex& corner : triangle.vertices) corner.uv = kNoUV;
        data.triangles.push_back(cornersOf(triangle));
        data.uvs.push_back(uvsOf(triangle));
    }
}

void DataBuilder::findBounds() {
    for (const TriangleCorners& triangle : data.triangles)
        for (const Point<double, 3>& corner : triangle) data.bounds.include(corner);
    const Point<double, 3> extent = data.bounds.extent();
    const double longest = std::max({extent[0], extent[1], extent[2]});
    // Positions cannot be scaled to 1 if the size is below the smallest normal number.
    if (isFinite(extent) && longest >= std::numeric_limits<double>::min()) data.size = longest;
}

void DataBuilder::markTriangles(const MeshTopology& surface) {
    const std::vector<UvState> states = uvStatesOf(triangles);
    const std::vector<bool> isOriented = findOriented(states, surface);
    const std::vector<bool> isMirrored = findMirrored(triangles, isOriented, surface);
    data.overlaps = uvOverlapsOf(triangles, states, surface);
    data.counts.overlapping = data.overlaps.triangles.size();
    std::size_t mirrored = 0;
    std::size_t oriented = 0;
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const TriangleMark mark{.isFlipped = surface.isFlipped[i],
                                .isMirrored = isMirrored[i],
                                .isOutside = states[i] != UvState::Missing && isOutside(data.uvs[i]),
                                .hasUV = states[i] != UvState::Missing};
        // Flipping a triangle reverses its orientation in UV too.
        if (isOriented[i] && (signedUvArea(data.uvs[i]) > 0.0) != mark.isFlipped) ++mirrored;
        oriented += isOriented[i] ? 1 : 0;
        data.counts.flipped += mark.isFlipped ? 1 : 0;
        data.counts.mirrored += mark.isMirrored ? 1 : 0;
        data.counts.outside += mark.isOutside ? 1 : 0;
        data.counts.withoutUV += mark.hasUV ? 0 : 1;
        data.marks.push_back(mark);
    }
    data.isMapMirrored = mirrored > oriented - mirrored;
}

// A boundary loop may run along seams, which are drawn as seams, and to a pole and back, which is
// not drawn. A hole is drawn as a whole.
void DataBuilder::addLines(const MeshTopology& surface) {
    std::vector<bool> isBoundaryEdge(triangles.size() * 3);
    surface.edges.forEach([&](std::span<const HalfEdge> halfEdges) {
        if (halfEdges.size() % 2 == 1)
            for (const HalfEdge& halfEdge : halfEdges) isBoundaryEdge[halfEdge.edge] = true;
    });
    PlotMeshData::Line positions;
    for (std::size_t i = 0; i < triangles.size(); ++i)
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t number = surface.corners[i].at(k);
            if (number == positions.size()) positions.push_back(data.triangles[i].at(k));
        }
    std::vector<std::pair<std::uint32_t, std::uint32_t>> boundaries;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> holes;
    const auto numberAt = [&](std::uint32_t corner) { return surface.corners[corner / 3].at(corner % 3); };
    for (const BoundaryLoop& loop : findMeshBoundary(triangles, surface).loops) {
        data.counts.holes += loop.isHole ? 1 : 0;
        for (const std::uint32_t edge : loop.edges) {
            if (isBoundaryEdge[edge]) uvEdges.push_back(edge);
            if (isBoundaryEdge[edge] || loop.isHole)
                (loop.isHole ? holes : boundaries).emplace_back(numberAt(edge), numberAt(nextCorner(edge)));
        }
    }
    data.boundaries = buildEdgeLines(positions, boundaries);
    data.holes = buildEdgeLines(positions, holes);
    addSeams(surface, positions);
}

// At the pole of a dome the UV of one vertex differs between triangles, which is no seam.
void DataBuilder::addSeams(const MeshTopology& surface, const PlotMeshData::Line& positions) {
    const auto uvAt = [&](std::uint32_t corner) { return data.uvs[corner / 3].at(corner % 3); };
    std::vector<std::pair<std::uint32_t, std::uint32_t>> seams;
    surface.edges.forEach([&](std::span<const HalfEdge> halfEdges) {
        if (halfEdges.size() != 2) return;
        const std::uint32_t a = halfEdges[0].edge;
        const std::uint32_t b = halfEdges[1].edge;
        const bool isSameDirection = halfEdges[0].isForward == halfEdges[1].isForward;
        if (uvAt(a) == uvAt(isSameDirection ? b : nextCorner(b)) ||
            uvAt(nextCorner(a)) == uvAt(isSameDirection ? nextCorner(b) : b))
            return;
        seams.emplace_back(halfEdges[0].low, halfEdges[0].high);
        uvEdges.insert(uvEdges.end(), {a, b});
    });
    data.seams = buildEdgeLines(positions, seams);
}

void DataBuilder::addUvEdges() {
    VertexIds<2> ids;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    const auto idAt = [&](std::uint32_t corner) { return ids.idOf(data.uvs[corner / 3].at(corner % 3)); };
    for (const std::uint32_t edge : uvEdges) {
        if (!data.marks[edge / 3].hasUV) continue;
        const std::uint32_t from = idAt(edge);
        pairs.emplace_back(from, idAt(nextCorner(edge)));
    }
    PlotMeshData::Line positions;
    for (const Point<double, 2>& uv : ids.points()) positions.emplace_back(uv[0], uv[1], 0.0);
    data.uvEdges = buildEdgeLines(positions, pairs);
}

void DataBuilder::moveToScene() {
    for (TriangleCorners& triangle : data.triangles)
        for (Point<double, 3>& corner : triangle) corner = data.toScene(corner);
    for (auto* lines : {&data.boundaries, &data.holes, &data.seams})
        for (PlotMeshData::Line& line : *lines)
            for (Point<double, 3>& point : line) point = data.toScene(point);
}

}  // namespace

Point<double, 3> PlotMeshData::toScene(const Point<double, 3>& point) const {
    return (point - (bounds.min + bounds.extent() * 0.5)) / size;
}

std::vector<StretchPatch> PlotMeshData::patches() const {
    std::vector<StretchPatch> result;
    result.reserve(marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i)
        result.push_back({.area = areaOf(triangles[i]),
                          .uvArea = marks[i].hasUV ? std::abs(signedUvArea(uvs[i])) / 2 : 0.0});
    return result;
}

PlotMeshData buildPlotMeshData(const IScreenGeometry& mesh) {
    return DataBuilder(mesh).build();
}

}  // namespace quarn
