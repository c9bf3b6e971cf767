// Mapping between positions and UV, next to the reference implementation and to the least that a
// cached result costs.
#include <array>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "Inputs/Queries.h"
#include "Reference/Timed/ReferenceLockedMapping.h"

namespace {

using quarn::bench::add;
using quarn::bench::agreement;
using quarn::bench::BenchScreen;
using quarn::bench::forEachMesh;
using quarn::bench::kChecked;
using quarn::bench::kDisagreement;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::Order;
using quarn::bench::PerMesh;
using quarn::bench::Point2;
using quarn::bench::Point3;
using quarn::bench::queryEach;
using quarn::bench::screenOf;
using quarn::test::ReferenceIndexes;
using quarn::test::ReferenceLockedMapping;

constexpr std::size_t kKnown = 20;

const ReferenceIndexes& referenceOf(const MeshCase& mesh) {
    static PerMesh<ReferenceIndexes> indexes;
    return indexes.get(mesh, [&] { return std::make_unique<ReferenceIndexes>(meshOf(mesh)); });
}

const std::vector<Point2>& newUVs(bool areInside) {
    static const std::vector<Point2> inside = quarn::bench::uvsInside();
    static const std::vector<Point2> outside = quarn::bench::uvsJustOutside();
    return areInside ? inside : outside;
}

// Twenty UVs, each many times in random order.
std::vector<Point2> repeatedUVs() {
    std::vector<Point2> uvs;
    quarn::test::Rng rng(7);
    while (uvs.size() < quarn::bench::kQuestions)
        uvs.push_back(newUVs(true)[static_cast<std::size_t>(rng.integer(0, kKnown - 1))]);
    return uvs;
}

// The library where `mapping` is a screen.
template <class Mapping>
void mapAll(benchmark::State& state, Mapping& mapping, const std::vector<Point2>& uvs, bool extrapolate) {
    queryEach(state, uvs, [&](const Point2& uv) {
        Point3 point;
        benchmark::DoNotOptimize(mapping.mapInto3D(uv, point, extrapolate));
        benchmark::DoNotOptimize(point);
    });
}

void addNewUVs(const MeshCase& mesh, const char* subject, bool areInside) {
    add(subject, mesh, "library", [=](benchmark::State& state, const MeshCase& meshCase) {
        mapAll(state, screenOf(meshCase), newUVs(areInside), !areInside);
    });
    add(subject, mesh, "reference", [=](benchmark::State& state, const MeshCase& meshCase) {
        ReferenceLockedMapping mapping(referenceOf(meshCase));
        const auto resultOf = [=](auto& mapped) {
            return [&mapped, extrapolate = !areInside](const Point2& uv) {
                Point3 point;
                const bool isAnswer = mapped.mapInto3D(uv, point, extrapolate);
                return std::pair(isAnswer, point);
            };
        };
        if (agreement(newUVs(areInside), kChecked, resultOf(mapping), resultOf(screenOf(meshCase))) < 1.0)
            return state.SkipWithError(kDisagreement);
        mapAll(state, mapping, newUVs(areInside), !areInside);
    });
}

// What a cached result costs at least: a lock, a look at all entries, and the check whether to
// log.
class Floor {
public:
    explicit Floor(const BenchScreen& screen) {
        for (std::size_t i = 0; i < kKnown; ++i) {
            entries[i].uv = newUVs(true)[i];
            screen.mapInto3D(entries[i].uv, entries[i].point, false);
        }
    }

    bool mapInto3D(const Point2& uv, Point3& result, bool /*extrapolate*/) {
        const std::optional<MeshScreen::MappingInto3D> known = find(uv);
        if (!known) return false;
        result = known->point;
        LOG4CXX_TRACE(BenchScreen::log, "in the cache");
        return true;
    }

private:
    std::optional<MeshScreen::MappingInto3D> find(const Point2& uv) {
        const std::lock_guard<std::mutex> lock(mutex);
        std::size_t found = kKnown;
        for (std::size_t i = 0; i < kKnown; ++i)
            if (entries[i].uv == uv) found = i;
        if (found == kKnown) return std::nullopt;
        return entries[found];
    }

    std::mutex mutex;
    std::array<MeshScreen::MappingInto3D, kKnown> entries;
};

void addKnownUVs(const MeshCase& mesh) {
    add("map-known-uv", mesh, "library", [](benchmark::State& state, const MeshCase& meshCase) {
        static const std::vector<Point2> uvs = repeatedUVs();
        mapAll(state, screenOf(meshCase), uvs, false);
    });
    add("map-known-uv", mesh, "floor", [](benchmark::State& state, const MeshCase& meshCase) {
        static const std::vector<Point2> uvs = repeatedUVs();
        Floor floor(screenOf(meshCase));
        mapAll(state, floor, uvs, false);
    });
}

const std::vector<Point3>& positionsOf(const MeshCase& mesh) {
    static PerMesh<std::vector<Point3>> positions;
    return positions.get(
        mesh, [&] { return std::make_unique<std::vector<Point3>>(quarn::bench::positionsOnSurface(mesh)); });
}

void addPositions(const MeshCase& mesh) {
    add("map-position", mesh, "library", [](benchmark::State& state, const MeshCase& meshCase) {
        const BenchScreen& screen = screenOf(meshCase);
        queryEach(state, positionsOf(meshCase), [&](const Point3& position) {
            benchmark::DoNotOptimize(screen.mapInto2D(position, false));
        });
    });
    add("map-position", mesh, "search-alone", [](benchmark::State& state, const MeshCase& meshCase) {
        const BenchScreen& screen = screenOf(meshCase);
        queryEach(state, positionsOf(meshCase), [&](const Point3& position) {
            benchmark::DoNotOptimize(screen.getScreenNormal(position));
        });
    });
}

// The time of one query, as elapsed time.
void addThreads(const MeshCase& mesh, const char* implementation, int threads) {
    add("map-on-threads", mesh, implementation,
        [](benchmark::State& state, const MeshCase& meshCase) {
            mapAll(state, screenOf(meshCase), newUVs(true), false);
        })
        ->Threads(threads)
        ->UseRealTime();
}

void addAll(const MeshCase& mesh) {
    addNewUVs(mesh, "map-new-uv", true);
    addNewUVs(mesh, "map-uv-off-edge", false);
    addKnownUVs(mesh);
    addPositions(mesh);
    addThreads(mesh, "two-threads", 2);
    addThreads(mesh, "one-thread", 1);
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
