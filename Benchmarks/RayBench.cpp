// Rays through a mesh, compared with the ray tracer's own calls and CGAL's tree.
#include <string>
#include <vector>

#include "Inputs/Queries.h"
#include "Reference/Timed/ReferenceScene.h"
#include "Rivals/CgalRays.h"

namespace {

using quarn::bench::add;
using quarn::bench::agreement;
using quarn::bench::CgalRays;
using quarn::bench::coherentRays;
using quarn::bench::forEachMesh;
using quarn::bench::incoherentRays;
using quarn::bench::kChecked;
using quarn::bench::kDisagreement;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::Order;
using quarn::bench::PerMesh;
using quarn::bench::queryEach;
using quarn::bench::screenOf;
using quarn::test::ReferenceScene;
using Rays = std::vector<Ray>;

const ReferenceScene& sceneOf(const MeshCase& mesh) {
    static PerMesh<ReferenceScene> scenes;
    return scenes.get(mesh, [&] {
        auto made = std::make_unique<ReferenceScene>();
        made->upload(meshOf(mesh));
        return made;
    });
}

const CgalRays& cgalOf(const MeshCase& mesh) {
    static PerMesh<CgalRays> trees;
    return trees.get(mesh, [&] { return std::make_unique<CgalRays>(meshOf(mesh)); });
}

const Rays& raysOf(const MeshCase& mesh, bool areCoherent) {
    static PerMesh<Rays> coherent;
    static PerMesh<Rays> incoherent;
    if (areCoherent) return coherent.get(mesh, [&] { return std::make_unique<Rays>(coherentRays(mesh)); });
    return incoherent.get(mesh, [&] { return std::make_unique<Rays>(incoherentRays(mesh)); });
}

// Near an edge two libraries may take the triangle on either side.
constexpr double kMinAgreement = 0.99;

int triangleOf(const Intersection& hit) {
    return hit.triangleIndex;
}
int triangleOf(const CgalRays::Hit& hit) {
    return static_cast<int>(hit.triangle);
}

template <class Target>
auto firstHitOf(const Target& target) {
    return [&target](const Ray& ray) {
        const auto hits = target.intersect(ray.origin, ray.target);
        return hits.empty() ? -1 : triangleOf(*hits.begin());
    };
}

// Registers an implementation: `prepare(mesh)` returns an object with the operation
// intersect(start, end).
template <class Prepare>
void addImplementation(const MeshCase& mesh, bool areCoherent, const char* implementation,
                       const Prepare& prepare) {
    const std::string name = std::string(areCoherent ? "coherent/" : "incoherent/") + implementation;
    add("intersect", mesh, name, [=](benchmark::State& state, const MeshCase& meshCase) {
        const auto& target = prepare(meshCase);
        const Rays& rays = raysOf(meshCase, areCoherent);
        if (agreement(rays, kChecked, firstHitOf(target), firstHitOf(screenOf(meshCase))) < kMinAgreement)
            return state.SkipWithError(kDisagreement);
        queryEach(state, rays, [&](const Ray& ray) {
            benchmark::DoNotOptimize(target.intersect(ray.origin, ray.target));
        });
    });
}

void addAll(const MeshCase& mesh) {
    for (const bool areCoherent : {true, false}) {
        addImplementation(mesh, areCoherent, "library", screenOf);
        addImplementation(mesh, areCoherent, "Embree", sceneOf);
        addImplementation(mesh, areCoherent, "CGAL", cgalOf);
    }
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
