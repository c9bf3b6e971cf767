#include "Reference/Mesh/ReferenceRefinement.h"

#include <cmath>

#include "Reference/Values/ReferenceGeometry.h"

namespace quarn::test {
namespace {

using reference::Vec3;

Vec3 difference(const TriangleVertex& to, const TriangleVertex& from) {
    return {to.position[0] - from.position[0], to.position[1] - from.position[1],
            to.position[2] - from.position[2]};
}

double distance(const TriangleVertex& a, const TriangleVertex& b) {
    return reference::length(difference(b, a));
}

double angle(const TriangleVertex& at, const TriangleVertex& p, const TriangleVertex& q) {
    return std::acos(
        reference::dot(reference::normalized(difference(p, at)), reference::normalized(difference(q, at))));
}

TriangleVertex between(const TriangleVertex& a, const TriangleVertex& b) {
    TriangleVertex middle;
    for (std::size_t i = 0; i < 3; ++i) middle.position[i] = (a.position[i] + b.position[i]) * 0.5;
    for (std::size_t i = 0; i < 2; ++i) middle.uv[i] = (a.uv[i] + b.uv[i]) * 0.5;
    const Vec3 normal = reference::normalized(
        {a.normal[0] + b.normal[0], a.normal[1] + b.normal[1], a.normal[2] + b.normal[2]});
    middle.normal = {normal[0], normal[1], normal[2]};
    return middle;
}

Triangle piece(const TriangleVertex& a, const TriangleVertex& b, const TriangleVertex& c) {
    Triangle triangle;
    triangle.vertices = {a, b, c};
    for (std::size_t i = 0; i < 3; ++i)
        triangle.centroid[i] = (a.position[i] + b.position[i] + c.position[i]) * 0.333333333333333;
    for (std::size_t i = 0; i < 2; ++i)
        triangle.uvCentroid[i] = (a.uv[i] + b.uv[i] + c.uv[i]) * 0.333333333333333;
    return triangle;
}

std::vector<Triangle> cutOne(const TriangleVertex& a, const TriangleVertex& b, const TriangleVertex& c) {
    const TriangleVertex m = between(a, b);
    return {piece(a, m, c), piece(m, b, c)};
}

std::vector<Triangle> cutTwo(const TriangleVertex& a, const TriangleVertex& b, const TriangleVertex& c) {
    const TriangleVertex m = between(a, b);
    const TriangleVertex n = between(b, c);
    const double a1 = angle(a, n, c);
    const double a2 = angle(a, m, n);
    const double c1 = angle(c, m, a);
    const double c2 = angle(c, n, m);
    if (std::fabs(a2 - a1) > std::fabs(c2 - c1)) return {piece(a, m, c), piece(m, n, c), piece(m, b, n)};
    return {piece(a, n, c), piece(a, m, n), piece(m, b, n)};
}

}  // namespace

unsigned longEdges(const Triangle& triangle, double bound) {
    const auto& v = triangle.vertices;
    return (distance(v[0], v[1]) > bound ? 1U : 0U) + (distance(v[1], v[2]) > bound ? 2U : 0U) +
           (distance(v[2], v[0]) > bound ? 4U : 0U);
}

std::vector<Triangle> referenceCut(const Triangle& triangle, double bound) {
    const auto& v = triangle.vertices;
    switch (longEdges(triangle, bound)) {
        case 0:
            return {};
        case 1:
            return cutOne(v[0], v[1], v[2]);
        case 2:
            return cutOne(v[1], v[2], v[0]);
        case 4:
            return cutOne(v[2], v[0], v[1]);
        case 3:
            return cutTwo(v[0], v[1], v[2]);
        case 6:
            return cutTwo(v[1], v[2], v[0]);
        case 5:
            return cutTwo(v[2], v[0], v[1]);
        default: {
            const TriangleVertex m01 = between(v[0], v[1]);
            const TriangleVertex m12 = between(v[1], v[2]);
            const TriangleVertex m20 = between(v[2], v[0]);
            return {piece(v[0], m01, m20), piece(m01, m12, m20), piece(m01, v[1], m12),
                    piece(m20, m12, v[2])};
        }
    }
}

ReferenceRefinement referenceRefine(const std::vector<Triangle>& triangles, double bound,
                                    std::size_t stepLimit) {
    ReferenceRefinement refinement;
    // What is still to be cut, the next one last.
    std::vector<Triangle> waiting(triangles.rbegin(), triangles.rend());
    for (std::size_t step = 0; !waiting.empty(); ++step) {
        if (step == stepLimit) {
            refinement.hasEnded = false;
            break;
        }
        const Triangle next = waiting.back();
        waiting.pop_back();
        ++refinement.tally[longEdges(next, bound)];
        const std::vector<Triangle> pieces = referenceCut(next, bound);
        if (pieces.empty()) refinement.pieces.push_back(next);
        waiting.insert(waiting.end(), pieces.rbegin(), pieces.rend());
    }
    return refinement;
}

}  // namespace quarn::test
