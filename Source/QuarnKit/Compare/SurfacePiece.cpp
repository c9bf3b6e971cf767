#include "SurfacePiece.h"

#include <algorithm>
#include <cmath>

namespace quarn {

namespace {

// Halvings of an edge, after which a double has no more digits.
constexpr int kMaxHalvings = 50;

// Where on an edge the nearest triangles of its ends are equally near.
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

MeasuredPosition cutOf(const TriangleTree& tree, const MeasuredPosition& from, const MeasuredPosition& to,
                       double accuracy) {
    const std::uint32_t hint = from.nearest.index;
    if (from.nearest.index != to.nearest.index) {
        const MeasuredPosition crossing = measurePosition(tree, crossingOn(tree, from, to, accuracy), hint);
        // Between triangles that are no neighbours a third one is nearer.
        const double toBoth = std::max(tree.distanceTo(from.nearest.index, crossing.position),
                                       tree.distanceTo(to.nearest.index, crossing.position));
        if (toBoth - crossing.nearest.distance <= 2.0 * accuracy) return crossing;
    }
    return measurePosition(tree, (from.position + to.position) * 0.5, hint);
}

}  // namespace

double boundOf(const TriangleTree& tree, const SurfacePiece& piece, const MeasuredPosition& position) {
    double ofTriangle = 0.0;
    double ofWay = 0.0;
    for (const MeasuredPosition& corner : piece.corners) {
        ofWay = std::max(ofWay, squaredDistance(corner.position, position.position));
        ofTriangle = std::max(ofTriangle, corner.nearest.index == position.nearest.index
                                              ? corner.nearest.distance
                                              : tree.distanceTo(position.nearest.index, corner.position));
    }
    return std::min(ofTriangle, position.nearest.distance + std::sqrt(ofWay));
}

std::array<SurfacePiece, 4> cut(const TriangleTree& tree, const SurfacePiece& piece, double accuracy) {
    const auto& [a, b, c] = piece.corners;
    const MeasuredPosition ab = cutOf(tree, a, b, accuracy);
    const MeasuredPosition bc = cutOf(tree, b, c, accuracy);
    const MeasuredPosition ca = cutOf(tree, c, a, accuracy);
    return {SurfacePiece{{a, ab, ca}}, SurfacePiece{{ab, b, bc}}, SurfacePiece{{ca, bc, c}},
            SurfacePiece{{ab, bc, ca}}};
}

}  // namespace quarn
