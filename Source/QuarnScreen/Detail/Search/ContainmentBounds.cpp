#include "ContainmentBounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "TriangleContainment.h"

namespace quarn::detail {
namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();

// Limits within which the margins below are valid. The squared sine of the angle between the edges
// divides the rounding errors of the parameters a and b. The tilt is the component of the stored
// normal along an edge. Lengths must be far from those whose fourth power overflows or underflows.
constexpr double kMinSquaredSine = 1e-8;
constexpr double kMaxTilt = 1e-7;
constexpr double kMaxCoordinate = 1e18;
constexpr double kMinEdgeLength = 1e-18;
constexpr double kUnitTolerance = 1e-6;

// Margins around the triangle, several times the necessary ones. Off the plane:
// kContainmentDistance. Along the edges: the tolerance of a and b, 1e-6 each, and the tilt.
// Rounding: each quantity takes some tens of operations.
constexpr double kMarginOffPlane = 2.0 * kContainmentDistance;
constexpr double kMarginAlongEdges = 1e-5;
constexpr double kRoundingSteps = 1024.0;

// Returns a bound of the coordinates and of the length. NaN if a coordinate is NaN, which a maximum
// would hide.
double sizeOf(const Point<double, 3>& point) {
    return std::abs(point[0]) + std::abs(point[1]) + std::abs(point[2]);
}

// The products of a triangle's stored edges, computed as testContainment() does.
struct EdgeProducts {
    double d11;
    double d22;
    double determinant;

    explicit EdgeProducts(const Triangle& triangle)
        : d11(dot(triangle.edge1, triangle.edge1)), d22(dot(triangle.edge2, triangle.edge2)) {
        const double d12 = dot(triangle.edge1, triangle.edge2);
        determinant = d22 * d11 - d12 * d12;
    }
};

// A zero normal is parallel to every line. A zero determinant gives no parameters.
bool containsNothing(const Triangle& triangle, const EdgeProducts& products) {
    return triangle.normal == Point<double, 3>() || products.determinant == 0.0;
}

// Returns true if the stored fields are consistent, and neither too large nor too small for the
// margins. False for NaN.
bool isOrdinary(const Triangle& triangle, const EdgeProducts& products, double size) {
    const double minSquaredEdge = std::min(products.d11, products.d22);
    const double tilt1 = dot(triangle.normal, triangle.edge1);
    const double tilt2 = dot(triangle.normal, triangle.edge2);
    return size <= kMaxCoordinate && minSquaredEdge >= kMinEdgeLength * kMinEdgeLength &&
           std::abs(dot(triangle.normal, triangle.normal) - 1.0) <= kUnitTolerance &&
           std::max(tilt1 * tilt1, tilt2 * tilt2) <= kMaxTilt * kMaxTilt * minSquaredEdge &&
           products.determinant >= kMinSquaredSine * products.d11 * products.d22;
}

// Returns the box of the positions that a triangle can contain.
FloatBox boxOf(const Triangle& triangle) {
    const EdgeProducts products(triangle);
    if (containsNothing(triangle, products)) return FloatBox::nowhere();

    const double edges = sizeOf(triangle.edge1) + sizeOf(triangle.edge2);
    const double size = sizeOf(triangle.vertices[0].position) + edges;
    if (!isOrdinary(triangle, products, size)) return FloatBox::everywhere();

    const double squaredSine = products.determinant / (products.d11 * products.d22);
    const double margin =
        kMarginOffPlane + kMarginAlongEdges * edges + kRoundingSteps * kEpsilon * (size + 1.0) / squaredSine;
    const Point<double, 3>& v0 = triangle.vertices[0].position;
    FloatBox box{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double second = v0[i] + triangle.edge1[i];
        const double third = v0[i] + triangle.edge2[i];
        box.lower[i] = roundedDown(std::min(std::min(v0[i], second), third) - margin);
        box.upper[i] = roundedUp(std::max(std::max(v0[i], second), third) + margin);
    }
    return box;
}

}  // namespace

void ContainmentBounds::build(const CentroidTree& tree, const TriangleBuckets& buckets,
                              const std::vector<Triangle>& triangles) {
    // Compute the boxes in the order of the triangles first: that reads the large mesh
    // sequentially.
    std::vector<FloatBox> boxes(triangles.size());
    std::transform(triangles.begin(), triangles.end(), boxes.begin(), boxOf);

    groups.assign(buckets.groupCount(), FourBoxes::nowhere());
    std::vector<FloatBox> boxOfBucket;
    boxOfBucket.reserve(buckets.size());
    for (std::size_t bucket = 0; bucket < buckets.size(); ++bucket) {
        FloatBox whole = FloatBox::nowhere();
        const TriangleBuckets::Range range = buckets.groupsOf(bucket);
        for (std::size_t group = range.first; group < range.last; ++group) {
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                const std::uint32_t slot = buckets.slotAt(group, lane);
                if (slot == TriangleBuckets::kNoSlot) break;
                const FloatBox& box = boxes[static_cast<std::size_t>(tree.valueAt(slot) - triangles.data())];
                groups[group].set(lane, box);
                whole.include(box);
            }
        }
        boxOfBucket.push_back(whole);
    }
    grid.build(boxOfBucket);
    bucketBoxes.build(boxOfBucket);
}

}  // namespace quarn::detail
