/// \file
/// Size estimates of the UV quadtree of a mesh, without building it.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QuarnScreen/RegionMap.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// The size that a RegionMap::rebuild() over some UV boxes would have.
struct RegionMapEstimate {
    std::uint64_t nodes = 0;        ///< Number of leaves and inner nodes.
    std::uint64_t leafEntries = 0;  ///< Sum of the triangles of all leaves.
    std::uint64_t peakNodes = 0;    ///< Largest number of nodes at any time.
    std::uint64_t peakEntries = 0;  ///< Largest number of leaf entries at any time.
    /// Sum of the boxes of all subdivided nodes, including reverted ones: a measure of the time.
    std::uint64_t steps = 0;
    bool isWhole = true;  ///< False if the count stopped early.

    /// Returns an upper bound of the bytes that the build occupies at any time.
    [[nodiscard]] std::uint64_t memory() const;
};

/// Returns the UV bounding boxes of triangles, from which a RegionMap is built.
[[nodiscard]] std::vector<RegionRect> uvBoxesOf(const std::vector<Triangle>& triangles);
/// Returns the UV bounding boxes of triangles, given by the UVs of their corners.
[[nodiscard]] std::vector<RegionRect> uvBoxesOf(
    const std::vector<std::array<Point<double, 2>, 3>>& triangles);

/// Counts the nodes of a build step by step, in about half of the build's time.
/// \param boxes the UV boxes
/// \param maxSteps number of steps after which the count stops, with an incomplete result
[[nodiscard]] RegionMapEstimate countRegionMap(const std::vector<RegionRect>& boxes, std::uint64_t maxSteps);

/// Conservative O(n) check that the tree's size is linear in the number of boxes: bins the boxes
/// into a uniform grid and subdivides only cells above a leaf's capacity. True for usual UV
/// layouts; false means unknown.
[[nodiscard]] bool isRegionMapSizeBounded(const std::vector<RegionRect>& boxes);

/// Returns the maximum number of steps for a mesh of some triangles: several times what usual UV
/// layouts take, and at most some seconds of time.
[[nodiscard]] constexpr std::uint64_t reasonableRegionMapSteps(std::uint64_t triangles) {
    constexpr std::uint64_t kAnyMesh = 200'000'000;
    constexpr std::uint64_t kPerTriangle = 60;
    return kAnyMesh + kPerTriangle * triangles;
}

}  // namespace quarn::detail
