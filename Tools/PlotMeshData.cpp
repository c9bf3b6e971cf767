#include "PlotMeshData.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "EdgeChains.h"
#include "Finite.h"
#include "PlotMeshGrid.h"
#include "PointIds.h"

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

// Twice the area, below 0 where the corners run as they do on a picture seen from the front, whose v grows downwards.
double signedUvArea(const TriangleUVs& uvs) {
    const Point<double, 2> a = uvs[1] - uvs[0];
    const Point<double, 2> b = uvs[2] - uvs[0];
    return a[0] * b[1] - a[1] * b[0];
}

double areaOf(const TriangleCorners& triangle) {
    return length(cross(triangle[1] - triangle[0], triangle[2] - triangle[0])) / 2;
}

class DataMaker {
public:
    explicit DataMaker(const IScreenGeometry& drawnMesh) : mesh(drawnMesh) {}

    PlotMeshData make();

private:
    void takeTriangles();
    void findBounds();
    void markTriangles(const std::vector<bool>& isTurned);
    void sortLoops(const MeshTopology& topology);
    void addSeams(const std::vector<std::uint32_t>& edges);
    void addUvEdges(const MeshTopology& topology);
    void placeAll();

    const IScreenGeometry& mesh;
    PlotMeshData data;
};

PlotMeshData DataMaker::make() {
    takeTriangles();
    findBounds();
    if (!data.isDrawable()) return std::move(data);
    const MeshTopology topology = topologyOf(data.triangles, data.uvs);
    data.counts.pieces = topology.pieces;
    markTriangles(topology.isTurned);
    sortLoops(topology);
    addSeams(topology.seams);
    addUvEdges(topology);
    placeAll();
    data.grid = uvGridLines(data.triangles, data.uvs);
    return std::move(data);
}

void DataMaker::takeTriangles() {
    std::vector<Triangle> all;
    mesh.getTesselation(all);
    data.triangles.reserve(all.size());
    data.uvs.reserve(all.size());
    for (const Triangle& triangle : all) {
        const auto& [a, b, c] = triangle.vertices;
        const TriangleCorners corners = {a.position, b.position, c.position};
        if (!std::all_of(corners.begin(), corners.end(), isFinite<3, std::make_index_sequence<3>>)) {
            ++data.counts.notFinite;
            continue;
        }
        data.triangles.push_back(corners);
        const TriangleUVs uvs = {a.uv, b.uv, c.uv};
        data.uvs.push_back(isUsable(uvs) ? uvs : TriangleUVs{kNoUV, kNoUV, kNoUV});
    }
}

void DataMaker::findBounds() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    data.min = {kInfinity, kInfinity, kInfinity};
    data.max = data.min * -1.0;
    for (const TriangleCorners& triangle : data.triangles)
        for (const Point<double, 3>& corner : triangle)
            for (std::size_t i = 0; i < 3; ++i) {
                data.min[i] = std::min(data.min[i], corner[i]);
                data.max[i] = std::max(data.max[i], corner[i]);
            }
    const Point<double, 3> extent = data.max - data.min;
    const double longest = std::max({extent[0], extent[1], extent[2]});
    // Below the least normal number positions could not be scaled to 1.
    if (isFinite(extent) && longest >= std::numeric_limits<double>::min()) data.size = longest;
}

void DataMaker::markTriangles(const std::vector<bool>& isTurned) {
    std::size_t rightCount = 0;
    std::size_t mirroredCount = 0;
    std::vector<double> areas;
    for (std::size_t i = 0; i < data.triangles.size(); ++i) {
        TriangleMark mark;
        mark.isTurned = isTurned[i];
        mark.hasUV = data.uvs[i][0] != kNoUV;
        mark.isOutside = mark.hasUV && isOutside(data.uvs[i]);
        // A turned triangle's corners run the other way round in UV too.
        areas.push_back(mark.hasUV ? signedUvArea(data.uvs[i]) * (mark.isTurned ? -1.0 : 1.0) : 0.0);
        if (areas.back() < 0.0) ++rightCount;
        if (areas.back() > 0.0) ++mirroredCount;
        data.marks.push_back(mark);
    }
    data.isMapMirrored = mirroredCount > rightCount;
    for (std::size_t i = 0; i < data.marks.size(); ++i) {
        TriangleMark& mark = data.marks[i];
        mark.isMirrored = data.isMapMirrored ? areas[i] < 0.0 : areas[i] > 0.0;
        data.counts.turned += mark.isTurned ? 1 : 0;
        data.counts.mirrored += mark.isMirrored ? 1 : 0;
        data.counts.outside += mark.isOutside ? 1 : 0;
        data.counts.withoutUV += mark.hasUV ? 0 : 1;
    }
}

// Loops of the screen's own outline are outer ones. A piece that has none of them has its longest loop for an outer
// one; the others are holes.
void DataMaker::sortLoops(const MeshTopology& topology) {
    IScreenGeometry::Polylines outline;
    mesh.sampleBoundary(outline);
    PlotMeshData::Line known;
    for (const PlotMeshData::Line& line : outline) known.insert(known.end(), line.begin(), line.end());
    std::sort(known.begin(), known.end());
    const auto isKnown = [&](const Point<double, 3>& point) {
        return std::binary_search(known.begin(), known.end(), point);
    };

    std::vector<bool> isOuter(topology.loops.size());
    std::vector<bool> hasOuter(topology.pieces);
    std::vector<std::size_t> longest(topology.pieces, topology.loops.size());
    std::vector<double> lengths;
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < topology.loops.size(); ++i) {
        const EdgeLoop& loop = topology.loops[i];
        order.push_back(i);
        isOuter[i] = std::all_of(loop.points.begin(), loop.points.end(), isKnown);
        if (isOuter[i]) hasOuter[loop.piece] = true;
        lengths.push_back(lineLength(loop.points));
        std::size_t& best = longest[loop.piece];
        if (best == topology.loops.size() || lengths[i] > lengths[best]) best = i;
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return lengths[a] > lengths[b]; });
    for (const std::size_t i : order) {
        const EdgeLoop& loop = topology.loops[i];
        if (isOuter[i] || (!hasOuter[loop.piece] && longest[loop.piece] == i))
            data.outlines.push_back(loop.points);
        else
            data.holes.push_back(loop.points);
    }
    data.counts.holes = data.holes.size();
}

void DataMaker::addSeams(const std::vector<std::uint32_t>& edges) {
    PointIds ids;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (std::size_t i = 0; i < edges.size(); i += 2) {
        const TriangleCorners& corners = data.triangles[edges[i] / 3];
        const std::uint32_t from = ids.idOf(corners.at(edges[i] % 3));
        pairs.emplace_back(from, ids.idOf(corners.at((edges[i] + 1) % 3)));
    }
    data.seams = chainedLines(ids, pairs);
}

void DataMaker::addUvEdges(const MeshTopology& topology) {
    PointIds ids;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    const auto add = [&](std::uint32_t edge) {
        if (!data.marks[edge / 3].hasUV) return;
        const auto idOf = [&](std::uint32_t corner) {
            const Point<double, 2>& uv = data.uvs[edge / 3].at(corner % 3);
            return ids.idOf({uv[0], uv[1], 0.0});
        };
        const std::uint32_t from = idOf(edge);
        pairs.emplace_back(from, idOf(edge % 3 + 1));
    };
    for (const EdgeLoop& loop : topology.loops) std::for_each(loop.edges.begin(), loop.edges.end(), add);
    std::for_each(topology.seams.begin(), topology.seams.end(), add);
    data.uvEdges = chainedLines(ids, pairs);
}

void DataMaker::placeAll() {
    for (TriangleCorners& triangle : data.triangles)
        for (Point<double, 3>& corner : triangle) corner = data.placed(corner);
    for (auto* lines : {&data.outlines, &data.holes, &data.seams})
        for (PlotMeshData::Line& line : *lines)
            for (Point<double, 3>& point : line) point = data.placed(point);
}

}  // namespace

Point<double, 3> PlotMeshData::placed(const Point<double, 3>& point) const {
    return (point - (min + (max - min) * 0.5)) / size;
}

std::vector<StretchPatch> PlotMeshData::patches() const {
    std::vector<StretchPatch> result;
    result.reserve(marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i)
        result.push_back({.area = areaOf(triangles[i]),
                          .uvArea = marks[i].hasUV ? std::abs(signedUvArea(uvs[i])) / 2 : 0.0});
    return result;
}

PlotMeshData plotMeshData(const IScreenGeometry& mesh) {
    return DataMaker(mesh).make();
}

}  // namespace quarn
