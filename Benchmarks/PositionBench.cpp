// Questions about positions: which centroid is nearest, and which triangle lies there.
#include <algorithm>
#include <vector>

#include "Inputs/Queries.h"
#include "Reference/Timed/ReferenceIndexes.h"
#include "Reference/Timed/ReferenceScene.h"
#include "Rivals/Nanoflann.h"

namespace {

using quarn::bench::add;
using quarn::bench::agreement;
using quarn::bench::forEachMesh;
using quarn::bench::kDisagreement;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::NanoflannTree;
using quarn::bench::Order;
using quarn::bench::PerMesh;
using quarn::bench::Point3;
using quarn::bench::positionsOffSurface;
using quarn::bench::positionsOnSurface;
using quarn::bench::queryEach;
using quarn::bench::screenOf;
using quarn::test::pointersTo;
using quarn::test::ReferenceCentroidKey;
using quarn::test::ReferenceIndexes;
using quarn::test::ReferenceScene;
using Positions = std::vector<Point3>;

// What a mesh needs is built at its first use.
const ReferenceIndexes& referenceOf(const MeshCase& mesh) {
    static PerMesh<ReferenceIndexes> indexes;
    return indexes.get(mesh, [&] { return std::make_unique<ReferenceIndexes>(meshOf(mesh)); });
}

const NanoflannTree& nanoflannOf(const MeshCase& mesh) {
    static PerMesh<NanoflannTree> trees;
    return trees.get(mesh, [&] { return std::make_unique<NanoflannTree>(meshOf(mesh)); });
}

const ReferenceScene& sceneOf(const MeshCase& mesh) {
    static PerMesh<ReferenceScene> scenes;
    return scenes.get(mesh, [&] {
        auto made = std::make_unique<ReferenceScene>();
        made->upload(meshOf(mesh));
        return made;
    });
}

// In the mesh's unit: up to some parts in a hundred of its size, and as far as a hit in single
// precision lies off a mesh of millimeters.
const Positions& positionsOf(const MeshCase& mesh, const std::string& where) {
    static PerMesh<Positions> on;
    static PerMesh<Positions> justOff;
    static PerMesh<Positions> off;
    if (where == "on-surface")
        return on.get(mesh, [&] { return std::make_unique<Positions>(positionsOnSurface(mesh)); });
    if (where == "just-off")
        return justOff.get(
            mesh, [&] { return std::make_unique<Positions>(positionsOffSurface(mesh, 2e-5, 1e-4)); });
    return off.get(mesh, [&] { return std::make_unique<Positions>(positionsOffSurface(mesh, 0.0, 0.15)); });
}

// The query of a position by each implementation.
auto nearestByLibrary(const MeshCase& mesh) {
    return [&screen = screenOf(mesh)](const Point3& position) { return screen.getClosestPoint(position); };
}
// The library's result from the triangle with the nearest centroid.
Point3 closestPoint(const Triangle& triangle, const Point3& position) {
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
    Point3 hit;
    if (!intersectTrianglePlane(position, position + triangle.normal, triangle, t, hit, a, b, false))
        return {};
    return triangle.pointAt(std::clamp(a, 0.0, 1.0), std::clamp(b, 0.0, 1.0));
}
auto nearestByReference(const MeshCase& mesh) {
    return [&tree = referenceOf(mesh).centroidTree](const Point3& position) {
        return closestPoint(*tree.findNearest(position), position);
    };
}
auto nearestByNanoflann(const MeshCase& mesh) {
    return [&tree = nanoflannOf(mesh), &triangles = meshOf(mesh)](const Point3& position) {
        return closestPoint(triangles[tree.findNearest(position)], position);
    };
}
auto normalByLibrary(const MeshCase& mesh) {
    return [&screen = screenOf(mesh)](const Point3& position) { return screen.getScreenNormal(position); };
}
Point3 normalOf(const Triangle* triangle) {
    return triangle == nullptr ? Point3() : triangle->normal;
}
auto normalByReference(const MeshCase& mesh) {
    return [&plain = referenceOf(mesh)](const Point3& position) {
        return normalOf(plain.findContaining(position));
    };
}
auto normalByEmbree(const MeshCase& mesh) {
    return
        [&scene = sceneOf(mesh)](const Point3& position) { return normalOf(scene.findContaining(position)); };
}

// At equal distances either triangle may be the result, and a reference search off the surface
// takes too long to be compared often.
constexpr double kMinAgreement = 0.9;
constexpr std::size_t kCheckedHere = 20;

template <class Prepare, class PrepareLibrary>
void addImplementation(const std::string& subject, const MeshCase& mesh, const std::string& where,
                       const char* implementation, const Prepare& prepare,
                       const PrepareLibrary& prepareLibrary) {
    add(subject, mesh, where + "/" + implementation, [=](benchmark::State& state, const MeshCase& meshCase) {
        const auto query = prepare(meshCase);
        const Positions& positions = positionsOf(meshCase, where);
        if (agreement(positions, kCheckedHere, query, prepareLibrary(meshCase)) < kMinAgreement)
            return state.SkipWithError(kDisagreement);
        queryEach(state, positions,
                  [&](const Point3& position) { benchmark::DoNotOptimize(query(position)); });
    });
}

void addAll(const MeshCase& mesh) {
    for (const char* where : {"on-surface", "off-surface"}) {
        const char* const subject = "nearest-centroid";
        addImplementation(subject, mesh, where, "library", nearestByLibrary, nearestByLibrary);
        addImplementation(subject, mesh, where, "reference", nearestByReference, nearestByLibrary);
        addImplementation(subject, mesh, where, "nanoflann", nearestByNanoflann, nearestByLibrary);
    }
    for (const char* where : {"on-surface", "just-off", "off-surface"}) {
        const char* const subject = "point-on-triangle";
        addImplementation(subject, mesh, where, "library", normalByLibrary, normalByLibrary);
        addImplementation(subject, mesh, where, "reference", normalByReference, normalByLibrary);
        addImplementation(subject, mesh, where, "Embree", normalByEmbree, normalByLibrary);
    }
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
