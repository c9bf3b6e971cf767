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

// Largest magnitude that certainly rounds to a finite float: half of the largest float.
constexpr double kMaxRounded = static_cast<double>(std::numeric_limits<float>::max()) * 0.5;

// Returns a float that is not greater than a number, and less by at most one rounding step.
float roundedDown(double number) {
    using Limits = std::numeric_limits<float>;
    if (number < -kMaxRounded) return -Limits::infinity();
    return static_cast<float>(number - std::abs(number) * static_cast<double>(Limits::epsilon()));
}

float roundedUp(double number) {
    return -roundedDown(-number);
}

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

}  // namespace

ContainmentBounds::Box ContainmentBounds::boxOf(const Triangle& triangle) {
    const EdgeProducts products(triangle);
    if (containsNothing(triangle, products)) return kNowhere;

    const double edges = sizeOf(triangle.edge1) + sizeOf(triangle.edge2);
    const double size = sizeOf(triangle.vertices[0].position) + edges;
    if (!isOrdinary(triangle, products, size)) return kEverywhere;

    const double squaredSine = products.determinant / (products.d11 * products.d22);
    const double margin =
        kMarginOffPlane + kMarginAlongEdges * edges + kRoundingSteps * kEpsilon * (size + 1.0) / squaredSine;
    const Point<double, 3>& v0 = triangle.vertices[0].position;
    Box box{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double second = v0[i] + triangle.edge1[i];
        const double third = v0[i] + triangle.edge2[i];
        box.lower[i] = roundedDown(std::min(std::min(v0[i], second), third) - margin);
        box.upper[i] = roundedUp(std::max(std::max(v0[i], second), third) + margin);
    }
    return box;
}

void ContainmentBounds::Box::include(const Box& other) {
    for (std::size_t i = 0; i < 3; ++i) {
        lower[i] = std::min(lower[i], other.lower[i]);
        upper[i] = std::max(upper[i], other.upper[i]);
    }
}

// Returns the ball through the corners of the box. Coordinates are far below the largest float, so
// that nothing overflows.
ContainmentBounds::Ball ContainmentBounds::ballAround(const Box& box) {
    if (box.lower[0] > box.upper[0]) return {{}, -1.0F};
    if (box.upper[0] == kInfinity) return {{}, kInfinity};
    Ball ball{};
    double squared = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        ball.center[i] = (box.lower[i] + box.upper[i]) * 0.5F;
        const double half = std::max(static_cast<double>(box.upper[i]) - static_cast<double>(ball.center[i]),
                                     static_cast<double>(ball.center[i]) - static_cast<double>(box.lower[i]));
        squared += half * half;
    }
    ball.squaredRadius = roundedUp(squared * (1.0 + kRoundingSteps * kEpsilon));
    return ball;
}

void ContainmentBounds::build(const CentroidTree& tree, const std::vector<Triangle>& triangles) {
    nodes.clear();
    if (triangles.empty()) return;
    // Compute the boxes in the order of the triangles first: that reads the large mesh
    // sequentially.
    std::vector<Box> boxes(triangles.size());
    std::transform(triangles.begin(), triangles.end(), boxes.begin(), boxOf);

    nodes.resize(tree.size());
    const auto buildSubtree = [&](const auto& self, const CentroidTree::Subtree& subtree) -> Box {
        Box box = boxes[static_cast<std::size_t>(tree.valueAt(subtree.slot) - triangles.data())];
        if (subtree.size == 1) {
            nodes[subtree.slot] = {kNowhere, kNowhere, ballAround(box)};
            return box;
        }
        const Ball own = ballAround(box);
        const Box left = self(self, subtree.left());
        const Box right = subtree.right().size == 0 ? kNowhere : self(self, subtree.right());
        nodes[subtree.slot] = {left, right, own};
        box.include(left);
        box.include(right);
        return box;
    };
    whole = buildSubtree(buildSubtree, tree.whole());
}

}  // namespace quarn::detail
