/// \file
/// Triangle lists for the search of boundaries: a kind for each way in which edges can meet.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include <QuarnScreen/Triangle.h>

#include "Support/Rng.h"

namespace quarn::test {

inline TriangleVertex cornerAt(const Point<double, 3>& position, const Point<double, 2>& uv = kNoUV) {
    TriangleVertex corner;
    corner.position = position;
    corner.uv = uv;
    return corner;
}

/// A corner in the plane z = 0 whose UV is its position.
inline TriangleVertex cornerOnPlane(double x, double y) {
    return cornerAt({x, y, 0.0}, {x, y});
}

inline Triangle triangleOf(const TriangleVertex& a, const TriangleVertex& b, const TriangleVertex& c) {
    Triangle triangle;
    triangle.vertices = {a, b, c};
    return triangle;
}

enum class BoundaryCase {
    Grid,     // one piece, shuffled and turned or not
    Holes,    // a grid without some of its triangles
    Seams,    // a grid whose UVs jump
    Pieces,   // several grids, some without UV
    Soup,     // no corner is shared
    Lattice,  // random corners out of few: equal keys, up to dozens of triangles on an edge, degenerate ones
    NoUV,     // the same without UVs
    SignedZero,  // the same with 0.0 and -0.0
    Infinite,    // the same with infinities
    Count
};

/// A corner of few possible ones. With \p nan, some coordinates are not numbers.
inline TriangleVertex latticeCorner(BoundaryCase kind, Rng& rng, bool nan = false) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto coordinate = [&]() -> double {
        if (nan && rng.integer(0, 9) == 0) return std::numeric_limits<double>::quiet_NaN();
        if (kind == BoundaryCase::Infinite && rng.coin()) return rng.coin() ? kInfinity : -kInfinity;
        const int number = rng.integer(0, 1);
        return kind == BoundaryCase::SignedZero && rng.coin() ? -number : number;
    };
    TriangleVertex corner;
    corner.position[0] = rng.integer(0, 2);
    corner.position[1] = coordinate();
    corner.position[2] = coordinate();
    if (kind == BoundaryCase::NoUV || rng.integer(0, 9) == 0) return corner;
    corner.uv[0] = rng.coin() ? 0.0 : coordinate();
    corner.uv[1] = rng.coin() ? -0.0 : coordinate();
    return corner;
}

/// A grid of columns x rows cells, part of a plane at height \p z.
inline std::vector<Triangle> gridAt(double z, int columns, int rows) {
    std::vector<Triangle> triangles;
    const auto corner = [&](int i, int j) {
        return cornerAt({i * 0.1, j * 0.3, z},
                        {static_cast<double>(i) / columns, static_cast<double>(j) / rows});
    };
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i) {
            triangles.push_back(triangleOf(corner(i, j), corner(i + 1, j), corner(i + 1, j + 1)));
            triangles.push_back(triangleOf(corner(i, j), corner(i + 1, j + 1), corner(i, j + 1)));
        }
    }
    return triangles;
}

inline std::vector<Triangle> gridCase(BoundaryCase kind, Rng& rng) {
    const int columns = rng.integer(1, 12);
    std::vector<Triangle> triangles = gridAt(0.0, columns, rng.integer(1, 12));
    if (kind == BoundaryCase::Pieces) {
        for (int i = rng.integer(1, 3); i > 0; --i) {
            const std::vector<Triangle> piece = gridAt(i - 2.0, rng.integer(1, 3), 2);
            triangles.insert(triangles.end(), piece.begin(), piece.end());
        }
    }
    if (kind == BoundaryCase::Holes)
        std::erase_if(triangles, [&](const Triangle&) { return rng.integer(0, 9) == 0; });
    if (kind == BoundaryCase::Seams) {
        for (Triangle& triangle : triangles)
            for (TriangleVertex& corner : triangle.vertices)
                if (corner.position[0] + triangle.vertices[0].position[0] > 1.0) corner.uv[0] += 0.5;
    }
    return triangles;
}

/// Changes the order of triangles, and for each one the first corner and the winding.
inline void shuffle(std::vector<Triangle>& triangles, Rng& rng) {
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        std::swap(triangles[i], triangles[static_cast<std::size_t>(rng.integer(0, static_cast<int>(i)))]);
        auto& corners = triangles[i].vertices;
        if (rng.coin()) std::swap(corners[0], corners[1]);
        if (rng.coin()) std::rotate(corners.begin(), corners.begin() + 1, corners.end());
    }
}

inline std::vector<Triangle> boundaryCase(BoundaryCase kind, Rng& rng, bool nan = false) {
    std::vector<Triangle> triangles;
    if (kind <= BoundaryCase::Pieces) {
        triangles = gridCase(kind, rng);
    } else {
        const auto soupCorner = [&] { return cornerAt(rng.point(-1.0, 1.0), {rng.uniform(0.0, 1.0), 0.5}); };
        for (int i = rng.integer(0, 60); i > 0; --i) {
            Triangle triangle;
            for (TriangleVertex& corner : triangle.vertices)
                corner = kind == BoundaryCase::Soup ? soupCorner() : latticeCorner(kind, rng, nan);
            triangles.push_back(triangle);
        }
    }
    if (rng.coin()) shuffle(triangles, rng);
    // Some triangles more than once.
    if (rng.integer(0, 3) == 0 && !triangles.empty()) {
        triangles.reserve(triangles.size() + 3);
        for (int i = rng.integer(1, 3); i > 0; --i)
            triangles.push_back(triangles[triangles.size() / static_cast<std::size_t>(i + 1)]);
    }
    return triangles;
}

}  // namespace quarn::test
