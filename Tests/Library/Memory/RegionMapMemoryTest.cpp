#include <gtest/gtest.h>

#include <QuarnScreen/RegionMap.h>

#include <vector>

#include "Library/Memory/CountedAllocations.h"
#include "Library/Search/RegionMapCases.h"

using namespace quarn::test;

namespace {

constexpr int kBuilds = 200;

// By how many bytes a map grows by further builds, besides the list of its nodes.
long growthBesidesNodes(const std::vector<Triangle>& triangles) {
    RegionMap map;
    const auto bytesBesidesNodes = [&] {
        return bytesInUse() - static_cast<long>(map.nodes().capacity() * sizeof(RegionNode));
    };
    for (int i = 0; i < 2; ++i) rebuildOver(map, triangles);
    const long before = bytesBesidesNodes();
    for (int i = 0; i < kBuilds; ++i) rebuildOver(map, triangles);
    return bytesBesidesNodes() - before;
}

}  // namespace

// A build has an entry of a few words itself.
TEST(RegionMapMemory, FurtherBuildsAppendNodesAlone) {
    constexpr long kBytesPerBuild = 32;
    EXPECT_LE(growthBesidesNodes(gridOver(16, 16)), kBuilds * kBytesPerBuild);
    // One leaf with a list.
    const Triangle half = triangleOver({0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0});
    EXPECT_LE(growthBesidesNodes(std::vector<Triangle>(1000, half)), kBuilds * kBytesPerBuild);
}
