// The indexes: building a k-d tree, and finding the triangle at a UV.
#include <Common/PointKDTree.h>
#include <QuarnScreen/RegionMap.h>

#include <optional>

#include "Inputs/Queries.h"
#include "Reference/Timed/ReferenceIndexes.h"
#include "Rivals/Nanoflann.h"

namespace {

using quarn::bench::add;
using quarn::bench::agreement;
using quarn::bench::forEachMesh;
using quarn::bench::kChecked;
using quarn::bench::kDisagreement;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::NanoflannTree;
using quarn::bench::Order;
using quarn::bench::PerMesh;
using quarn::bench::Point2;
using quarn::bench::queryEach;
using quarn::bench::uvsInside;
using quarn::test::pointersTo;
using quarn::test::ReferenceCentroidKey;
using quarn::test::ReferenceCentroidTree;
using quarn::test::ReferenceQuadtree;
using Tree = PointKDTree<const Triangle*, 3, ReferenceCentroidKey>;

void buildTree(benchmark::State& state, const MeshCase& mesh) {
    const std::vector<const Triangle*> pointers = pointersTo(meshOf(mesh));
    for ([[maybe_unused]] auto _ : state) {
        Tree tree;
        tree.build(pointers.begin(), pointers.end());
        benchmark::DoNotOptimize(tree.depth());
    }
}

void buildReferenceTree(benchmark::State& state, const MeshCase& mesh) {
    const std::vector<const Triangle*> pointers = pointersTo(meshOf(mesh));
    for ([[maybe_unused]] auto _ : state) {
        ReferenceCentroidTree tree;
        tree.build(pointers);
        benchmark::DoNotOptimize(tree.root);
    }
}

void buildNanoflann(benchmark::State& state, const MeshCase& mesh) {
    const std::vector<Triangle>& triangles = meshOf(mesh);
    for ([[maybe_unused]] auto _ : state) {
        const NanoflannTree tree(triangles);
        benchmark::DoNotOptimize(&tree);
    }
}

const RegionMap& mapOf(const MeshCase& mesh) {
    static PerMesh<RegionMap> maps;
    return maps.get(mesh, [&] {
        auto made = std::make_unique<RegionMap>();
        made->rebuild(meshOf(mesh).data(), meshOf(mesh).data() + meshOf(mesh).size());
        return made;
    });
}

const ReferenceQuadtree& quadtreeOf(const MeshCase& mesh) {
    static PerMesh<ReferenceQuadtree> quadtrees;
    return quadtrees.get(mesh, [&] {
        auto made = std::make_unique<ReferenceQuadtree>();
        made->build(meshOf(mesh));
        return made;
    });
}

auto locatorOf(const RegionMap& map) {
    return [&map, root = static_cast<int>(map.nodes().size()) - 1](const Point2& uv) {
        std::optional<const Triangle*> found;
        map.locate(root, map.rootRect(), uv[0], uv[1], found);
        return found;
    };
}

auto locatorOf(const ReferenceQuadtree& quadtree) {
    return [&quadtree](const Point2& uv) { return quadtree.locate(uv[0], uv[1]); };
}

template <class Locator>
void locateAll(benchmark::State& state, const MeshCase& mesh, const Locator& locate) {
    static const std::vector<Point2> uvs = uvsInside();
    if (agreement(uvs, kChecked, locate, locatorOf(mapOf(mesh))) < 1.0)
        return state.SkipWithError(kDisagreement);
    queryEach(state, uvs, [&](const Point2& uv) { benchmark::DoNotOptimize(locate(uv)); });
}

void locate(benchmark::State& state, const MeshCase& mesh) {
    locateAll(state, mesh, locatorOf(mapOf(mesh)));
}

void locateByReference(benchmark::State& state, const MeshCase& mesh) {
    locateAll(state, mesh, locatorOf(quadtreeOf(mesh)));
}

void addBuilds(const MeshCase& mesh) {
    add("kd-tree-build", mesh, "library", buildTree);
    add("kd-tree-build", mesh, "reference", buildReferenceTree);
    add("kd-tree-build", mesh, "nanoflann", buildNanoflann);
}

void addAll(const MeshCase& mesh) {
    addBuilds(mesh);
    add("uv-location", mesh, "library", locate);
    add("uv-location", mesh, "reference", locateByReference);
}

[[maybe_unused]] const int kRegistered =
    forEachMesh(Order::InOrder, addAll) + forEachMesh(Order::Shuffled, addBuilds);

}  // namespace
