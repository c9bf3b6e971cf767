#include "SurfacePiece.h"

#include <algorithm>
#include <cmath>

namespace quarn {

namespace {

// Bisections of an edge, after which the digits of a double are used up.
constexpr int kMaxHalvings = 50;

// Finds the point of an edge that is equally near to the nearest triangles of its ends.
Point<double, 3> crossingOn(const TriangleTree& tree, const MeasuredPosition& from,
                            const MeasuredPosition& to, double accuracy) {
    Point<double, 3> low = from.position;
    Point<double, 3> high = to.position;
    Point<double, 3> middle;
    for (int i = 0; i < kMaxHalvings; ++i) {
        middle = (low + high) * 0.5;
        const double difference =
            tree.distanceTo(from.nearest.index, middle) - tree.distanceTo(to.nearest.index, middle);
        if (std::abs(difference) <= accuracy) break;
        (difference < 0.0 ? low : high) = middle;
    }
    return middle;
}

MeasuredPosition splitEdge(PositionMeter& meter, const MeasuredPosition& from, const MeasuredPosition& to,
                           double accuracy) {
    const TriangleTree& tree = meter.tree();
    const std::uint32_t hint = from.nearest.index;
    if (from.nearest.index != to.nearest.index) {
        const MeasuredPosition crossing = meter.measure(crossingOn(tree, from, to, accuracy), hint);
        // Between two triangles that are not adjacent a third one is nearer.
        const double toBoth = std::max(tree.distanceTo(from.nearest.index, crossing.position),
                                       tree.distanceTo(to.nearest.index, crossing.position));
        if (toBoth - crossing.nearest.distance <= 2.0 * accuracy) return crossing;
    }
    return meter.measure((from.position + to.position) * 0.5, hint);
}

}  // namespace

double boundOf(const TriangleTree& tree, const SurfacePiece& piece, const MeasuredPosition& position) {
    double ofTriangle = 0.0;
    double ofPath = 0.0;
    for (const MeasuredPosition& corner : piece.corners) {
        ofPath = std::max(ofPath, squaredDistance(corner.position, position.position));
        ofTriangle = std::max(ofTriangle, corner.nearest.index == position.nearest.index
                                              ? corner.nearest.distance
                                              : tree.distanceTo(position.nearest.index, corner.position));
    }
    return std::min(ofTriangle, position.nearest.distance + std::sqrt(ofPath));
}

std::array<SurfacePiece, 4> subdivide(PositionMeter& meter, const SurfacePiece& piece, double accuracy) {
    const auto& [a, b, c] = piece.corners;
    const MeasuredPosition ab = splitEdge(meter, a, b, accuracy);
    const MeasuredPosition bc = splitEdge(meter, b, c, accuracy);
    const MeasuredPosition ca = splitEdge(meter, c, a, accuracy);
    return {SurfacePiece{{a, ab, ca}}, SurfacePiece{{ab, b, bc}}, SurfacePiece{{ca, bc, c}},
            SurfacePiece{{ab, bc, ca}}};
}

}  // namespace quarn
