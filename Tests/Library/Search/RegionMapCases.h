/// \file
/// Triangles in UV for region maps: a kind of mesh for each way in which a quadtree can degenerate.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QuarnScreen/RegionMap.h>

#include "Support/Rng.h"
#include "Support/SpecialValues.h"

namespace quarn::test {

using UV = Point<double, 2>;

inline Triangle triangleOver(const UV& a, const UV& b, const UV& c) {
    Triangle triangle;
    triangle.vertices[0].uv = a;
    triangle.vertices[1].uv = b;
    triangle.vertices[2].uv = c;
    triangle.computeGeometry();
    return triangle;
}

/// The unit square in columns x rows cells of two triangles, which share the edge from (left, top)
/// to (right, bottom).
inline std::vector<Triangle> gridOver(int columns, int rows) {
    std::vector<Triangle> triangles;
    const auto corner = [&](int i, int j) {
        return UV(static_cast<double>(i) / columns, static_cast<double>(j) / rows);
    };
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i) {
            triangles.push_back(triangleOver(corner(i, j), corner(i + 1, j), corner(i + 1, j + 1)));
            triangles.push_back(triangleOver(corner(i, j), corner(i + 1, j + 1), corner(i, j + 1)));
        }
    }
    return triangles;
}

enum class Soup {
    Grid,
    Small,
    Overlapping,
    Degenerate,
    OnOneLine,
    OneRegion,
    AroundOnePoint,
    Special,
    Count
};

inline UV uvAround(Rng& rng, const UV& centre, double reach) {
    const double u = rng.uniform(-reach, reach);
    return {centre[0] + u, centre[1] + rng.uniform(-reach, reach)};
}

inline UV cornerOf(Soup soup, Rng& rng, const UV& centre) {
    const auto special = [&] {
        return kSpecialValues[static_cast<std::size_t>(
            rng.integer(0, static_cast<int>(kSpecialValues.size()) - 1))];
    };
    switch (soup) {
        case Soup::Overlapping:
            return uvAround(rng, centre, 0.6);
        case Soup::OnOneLine:
            return {0.5, rng.uniform(0.0, 1.0)};
        case Soup::OneRegion:
            return {rng.integer(0, 1) * 1.0, rng.integer(0, 1) * 1.0};
        case Soup::AroundOnePoint:
            return uvAround(rng, {0.3, 0.3}, rng.uniform(0.0, 0.01));
        case Soup::Special: {
            if (rng.integer(0, 7) != 0) return uvAround(rng, centre, 0.05);
            const double u = special();
            return {u, special()};
        }
        default:
            return uvAround(rng, centre, 0.05);
    }
}

inline Triangle triangleOf(Soup soup, Rng& rng) {
    const UV centre = uvAround(rng, {0.5, 0.5}, 0.5);
    const UV a = cornerOf(soup, rng, centre);
    const UV b = cornerOf(soup, rng, centre);
    if (soup == Soup::Degenerate) return triangleOver(a, rng.coin() ? a : b, rng.coin() ? a : b);
    return triangleOver(a, b, cornerOf(soup, rng, centre));
}

inline std::vector<Triangle> trianglesOf(Soup soup, Rng& rng, int most = 40) {
    if (soup == Soup::Grid) {
        const int columns = rng.integer(1, 9);
        return gridOver(columns, rng.integer(1, 9));
    }
    std::vector<Triangle> triangles;
    const int count = rng.integer(0, most);
    for (int i = 0; i < count; ++i) triangles.push_back(triangleOf(soup, rng));
    return triangles;
}

inline Soup anySoup(Rng& rng) {
    return static_cast<Soup>(rng.integer(0, static_cast<int>(Soup::Count) - 1));
}

inline void rebuildOver(RegionMap& map, const std::vector<Triangle>& triangles) {
    map.rebuild(triangles.data(), triangles.data() + triangles.size());
}

/// Looks a point up in the whole map; null where no triangle holds it.
inline const Triangle* locatedIn(const RegionMap& map, double u, double v) {
    std::optional<const Triangle*> result;
    map.locate(static_cast<int>(map.nodes().size()) - 1, map.rootRect(), u, v, result);
    return result.value_or(nullptr);
}

}  // namespace quarn::test
