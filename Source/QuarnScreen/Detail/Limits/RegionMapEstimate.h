/// \file
/// How large the UV quadtree of a mesh would become, without building it.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QuarnScreen/RegionMap.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::detail {

/// What RegionMap::rebuild() would make of some UV boxes.
struct RegionMapEstimate {
    std::uint64_t nodes = 0;        ///< Leaves and inner nodes.
    std::uint64_t leafEntries = 0;  ///< Triangles of all leaves.
    std::uint64_t peakNodes = 0;    ///< At most at one time; some are dropped again.
    std::uint64_t peakEntries = 0;  ///< Likewise.
    std::uint64_t steps =
        0;                ///< Boxes of all nodes that were cut, those included that are dropped: the time.
    bool isWhole = true;  ///< False where it was not counted to its end.

    /// Upper bound of the bytes that the build holds at one time.
    [[nodiscard]] std::uint64_t memory() const;
};

/// The UV boxes of triangles, from which a RegionMap is built.
[[nodiscard]] std::vector<RegionRect> uvBoxesOf(const std::vector<Triangle>& triangles);
/// The same of triangles that are given by the UVs of their corners.
[[nodiscard]] std::vector<RegionRect> uvBoxesOf(
    const std::vector<std::array<Point<double, 2>, 3>>& triangles);

/// Counts what a build would make, cut by cut as it would go, and in about half of its time.
/// \param maxSteps where it would take more, the count ends, and is not whole
[[nodiscard]] RegionMapEstimate countRegionMap(const std::vector<RegionRect>& boxes, std::uint64_t maxSteps);

/// Whether it is sure at first sight that the tree grows no faster than the mesh: where the boxes lie on a table of equal
/// cells, few cells have more than a leaf holds, and these cannot grow much. That is so for the UVs of all usual meshes.
/// False says nothing.
[[nodiscard]] bool isRegionMapSizeBounded(const std::vector<RegionRect>& boxes);

/// Steps that are within reason for a mesh: several times what the UVs of usual meshes take, some seconds at most.
[[nodiscard]] constexpr std::uint64_t reasonableRegionMapSteps(std::uint64_t triangles) {
    constexpr std::uint64_t kAnyMesh = 200'000'000;
    constexpr std::uint64_t kPerTriangle = 60;
    return kAnyMesh + kPerTriangle * triangles;
}

}  // namespace quarn::detail
