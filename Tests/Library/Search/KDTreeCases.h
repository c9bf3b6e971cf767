/// \file
/// Values for k-d trees: a kind of coordinate for each way in which a tree can degenerate.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include <Common/PointKDTree.h>

#include "Reference/Mesh/ReferenceKDTree.h"
#include "Support/Rng.h"

namespace quarn::test {

template <int N>
struct Spot {
    Point<double, N> key;
};

template <int N>
struct SpotKey {
    double operator()(const Spot<N>* spot, int axis) const {
        return spot->key[static_cast<std::size_t>(axis)];
    }
};

template <int N>
using SpotTree = PointKDTree<const Spot<N>*, N, SpotKey<N>>;
template <int N>
using ReferenceSpotTree = ReferenceKDTree<const Spot<N>*, N, SpotKey<N>>;

enum class Spread {
    Uniform,
    Sorted,
    Falling,
    FewValues,
    AllEqual,
    OneAxisEqual,
    Denormal,
    Huge,
    Infinite,
    Count
};

inline double coordinateOf(Spread spread, Rng& rng, int index, int axis) {
    constexpr double kTiny = std::numeric_limits<double>::denorm_min();
    constexpr std::array kEnds = {-std::numeric_limits<double>::infinity(), -1.0, 0.0, 1.0,
                                  std::numeric_limits<double>::infinity()};
    switch (spread) {
        case Spread::Sorted:
            return index * 0.25 + axis;
        case Spread::Falling:
            return -index * 0.25 + axis;
        case Spread::FewValues:
            return rng.integer(-2, 2);
        case Spread::AllEqual:
            return 1.5;
        case Spread::OneAxisEqual:
            return axis == 0 ? 1.5 : rng.uniform(-3.0, 3.0);
        case Spread::Denormal:
            return rng.integer(-5, 5) * kTiny;
        case Spread::Huge:
            return rng.spread(500, 1023);
        case Spread::Infinite:
            return kEnds[static_cast<std::size_t>(rng.integer(0, 4))];
        default:
            return rng.uniform(-3.0, 3.0);
    }
}

template <int N>
Point<double, N> keyOf(Spread spread, Rng& rng, int index) {
    Point<double, N> key;
    for (int axis = 0; axis < N; ++axis)
        key[static_cast<std::size_t>(axis)] = coordinateOf(spread, rng, index, axis);
    return key;
}

/// A random set of spots with both kinds of tree over it.
template <int N>
struct SpotCase {
    explicit SpotCase(Rng& rng, int mostSpots = 60)
        : spread(static_cast<Spread>(rng.integer(0, static_cast<int>(Spread::Count) - 1))) {
        spots.resize(static_cast<std::size_t>(rng.integer(1, mostSpots)));
        for (std::size_t i = 0; i < spots.size(); ++i)
            spots[i].key = keyOf<N>(spread, rng, static_cast<int>(i));
        fillTrees();
    }
    explicit SpotCase(const std::vector<Point<double, N>>& keys) {
        for (const Point<double, N>& key : keys) spots.push_back({key});
        fillTrees();
    }
    // The trees refer to the spots.
    SpotCase(const SpotCase&) = delete;
    SpotCase& operator=(const SpotCase&) = delete;

    void fillTrees() {
        values.clear();
        for (const Spot<N>& spot : spots) values.push_back(&spot);
        tree.build(values.begin(), values.end());
        plain.build(values);
    }

    /// A point for a query: one of the keys, or one of their kind.
    Point<double, N> question(Rng& rng) const {
        const int index = rng.integer(0, static_cast<int>(spots.size()) - 1);
        return rng.coin() ? spots[static_cast<std::size_t>(index)].key : keyOf<N>(spread, rng, index);
    }

    /// Squared distances of all spots that \p accept takes, in rising order.
    template <class Accept>
    std::vector<double> squaredDistances(const Point<double, N>& point, Accept accept) const {
        std::vector<double> squared;
        for (const Spot<N>* spot : values)
            if (accept(spot)) squared.push_back(ReferenceSpotTree<N>::squaredDistance(point, spot));
        std::sort(squared.begin(), squared.end());
        return squared;
    }
    std::vector<double> squaredDistances(const Point<double, N>& point) const {
        return squaredDistances(point, [](const Spot<N>*) { return true; });
    }

    Spread spread = Spread::Uniform;
    std::vector<Spot<N>> spots;
    std::vector<const Spot<N>*> values;
    SpotTree<N> tree;
    ReferenceSpotTree<N> plain;
};

}  // namespace quarn::test
