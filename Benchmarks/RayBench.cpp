// Rays through a mesh, beside the ray tracer's own calls and CGAL's tree.
#include <string>
#include <vector>

#include "Inputs/Queries.h"
#include "Reference/Timed/ReferenceScene.h"
#include "Rivals/CgalRays.h"

namespace {

using quarn::bench::add;
using quarn::bench::agreement;
using quarn::bench::askEach;
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

template <class Answering>
auto firstHitOf(const Answering& answering) {
    return [&answering](const Ray& ray) {
        const auto hits = answering.intersect(ray.origin, ray.target);
        return hits.empty() ? -1 : triangleOf(*hits.begin());
    };
}

// Registers a way: `prepare(mesh)` gives something with an operation intersect(start, end).
template <class Prepare>
void addWay(const MeshCase& mesh, bool areCoherent, const char* way, const Prepare& prepare) {
    const std::string name = std::string(areCoherent ? "coherent/" : "incoherent/") + way;
    add("intersect", mesh, name, [=](benchmark::State& state, const MeshCase& asked) {
        const auto& answering = prepare(asked);
        const Rays& rays = raysOf(asked, areCoherent);
        if (agreement(rays, kChecked, firstHitOf(answering), firstHitOf(screenOf(asked))) < kMinAgreement)
            return state.SkipWithError(kDisagreement);
        askEach(state, rays, [&](const Ray& ray) {
            benchmark::DoNotOptimize(answering.intersect(ray.origin, ray.target));
        });
    });
}

void addAll(const MeshCase& mesh) {
    for (const bool areCoherent : {true, false}) {
        addWay(mesh, areCoherent, "library", screenOf);
        addWay(mesh, areCoherent, "Embree", sceneOf);
        addWay(mesh, areCoherent, "CGAL", cgalOf);
    }
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
