#include "TerminationChecks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Editing/TriangleSubdivision.h>

namespace quarn::detail {
namespace {

// The square of a longer edge may be infinite. Such an edge counts as long for every bound.
constexpr double kMaxLength = 6.7e153;

// Above it, the sum of two UVs overflows.
constexpr double kMaxUV = std::numeric_limits<double>::max() / 2.0;

// Smallest bound as a fraction of the largest coordinate. It is several units in the last place, so
// that the rounding error of a midpoint is small relative to half of an edge.
constexpr double kMinBoundRatio = 16.0 * std::numeric_limits<double>::epsilon();

bool hasLongEdge(const Triangle& triangle, double bound) {
    const auto& [v0, v1, v2] = triangle.vertices;
    return length(v1.position - v0.position) > bound || length(v2.position - v1.position) > bound ||
           length(v0.position - v2.position) > bound;
}

double maxCoordinate(const Triangle& triangle) {
    double largest = 0.0;
    for (const TriangleVertex& corner : triangle.vertices)
        for (std::size_t i = 0; i < 3; ++i) largest = std::max(largest, std::abs(corner.position[i]));
    return largest;
}

double maxUV(const Triangle& triangle) {
    double largest = 0.0;
    for (const TriangleVertex& corner : triangle.vertices)
        for (std::size_t i = 0; i < 2; ++i) largest = std::max(largest, std::abs(corner.uv[i]));
    return largest;
}

bool hasNoNaN(const Triangle& triangle) {
    return std::all_of(triangle.vertices.begin(), triangle.vertices.end(), [](const TriangleVertex& corner) {
        return corner.position == corner.position && corner.uv == corner.uv;
    });
}

bool subdivisionTerminates(const Triangle& triangle, double maxEdgeLength) {
    if (!hasNoNaN(triangle)) return false;
    if (!hasLongEdge(triangle, maxEdgeLength)) return true;
    return std::min(maxEdgeLength, kMaxLength) >= kMinBoundRatio * maxCoordinate(triangle) &&
           maxEdgeLength > 0.0 && maxUV(triangle) <= kMaxUV;
}

}  // namespace

bool boundarySearchTerminates(const std::vector<Triangle>& triangles) {
    return std::all_of(triangles.begin(), triangles.end(), hasNoNaN);
}

bool refinementTerminates(const std::vector<Triangle>& triangles, double maxEdgeLength) {
    // The boundary of the pieces is searched as well, so no midpoint may be NaN.
    return std::all_of(triangles.begin(), triangles.end(), [maxEdgeLength](const Triangle& triangle) {
        return subdivisionTerminates(triangle, maxEdgeLength);
    });
}

std::uint64_t countRefinedTriangles(const std::vector<Triangle>& triangles, double maxEdgeLength,
                                    std::uint64_t maxCount) {
    std::uint64_t count = 0;
    for (const Triangle& triangle : triangles) {
        if (count >= maxCount) break;
        QUARN_ASSERT(subdivisionTerminates(triangle, maxEdgeLength));
        count += countPieces(triangle, maxEdgeLength, maxCount - count);
    }
    return count;
}

}  // namespace quarn::detail
