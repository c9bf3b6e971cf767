// The hits of rays by one traversal, for each instruction set of the ray tracer that the processor
// has. The linker sends rtcNewDevice through here (--wrap), so that a test selects the set.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include <QuarnScreen/Detail/Mesh/RayHits.h>

#include "Reference/Mesh/ReferenceRayHits.h"
#include "Support/Mesh/Sheets.h"
#include "Support/Mesh/WildRays.h"

using namespace quarn::test;
using quarn::detail::RayHits;
using quarn::detail::RayHitSearch;
using quarn::detail::RayScene;

namespace {

std::string instructionSet;  // empty for the ray tracer's choice

bool isSupported(const std::string& name) {
    if (name == "sse2") return __builtin_cpu_supports("sse2") != 0;
    if (name == "sse4.2") return __builtin_cpu_supports("sse4.2") != 0;
    if (name == "avx") return __builtin_cpu_supports("avx") != 0;
    if (name == "avx2") return __builtin_cpu_supports("avx2") != 0;
    return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512vl") != 0;
}

std::vector<std::string> supportedSets() {
    std::vector<std::string> sets = {"sse2", "sse4.2", "avx", "avx2", "avx512"};
    std::erase_if(sets, [](const std::string& name) { return !isSupported(name); });
    return sets;
}

class RayHitsBySet : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { instructionSet = GetParam(); }
    void TearDown() override { instructionSet.clear(); }
};

bool areEqual(const IntersectionSet& expected, std::span<const Intersection> hits) {
    return std::equal(expected.begin(), expected.end(), hits.begin(), hits.end());
}

// Both ways of a case: ray by ray, and in packets, the last of which is not full.
void expectHitsOfCasts(const RayCase& given) {
    RayScene scene;
    scene.upload(given.mesh);
    const RayHitSearch search(scene, given.mesh);
    const std::span<const Ray> rays(given.rays);
    std::array<RayHits, RayHitSearch::kPacketSize> packet;
    RayHits single;
    for (std::size_t first = 0; first < rays.size(); first += packet.size()) {
        const auto some = rays.subspan(first, std::min(packet.size(), rays.size() - first));
        search.find(some, packet);
        for (std::size_t i = 0; i < some.size(); ++i) {
            const IntersectionSet expected = referenceRayHits(scene, given.mesh, some[i]);
            search.find(some[i], single);
            ASSERT_TRUE(areEqual(expected, single.found())) << "ray " << first + i;
            ASSERT_TRUE(areEqual(expected, packet[i].found())) << "ray " << first + i << " in its packet";
        }
    }
}

}  // namespace

extern "C" {

void* realNewDevice(const char* configuration) __asm__("__real_rtcNewDevice");
void* wrappedNewDevice(const char* configuration) __asm__("__wrap_rtcNewDevice");
void* wrappedNewDevice(const char* configuration) {
    const std::string extended = std::string(configuration) + ",isa=" + instructionSet;
    return realNewDevice(instructionSet.empty() ? configuration : extended.c_str());
}

}  // extern "C"

TEST_P(RayHitsBySet, AreThoseOfCasts) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        expectHitsOfCasts(wildRayCase(rng, 61));
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(EachSet, RayHitsBySet, testing::ValuesIn(supportedSets()), [](const auto& tested) {
    std::string name = tested.param;
    std::erase(name, '.');
    return name;
});

// Nearly parallel rays from one eye, of which most pass just beside an edge or a vertex, and some
// have coordinates that the ray tracer replaces.
TEST_P(RayHitsBySet, AreThoseOfCastsForNearlyParallelRays) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        RayCase given = wildRayCase(rng, 1);
        const Point<double, 3> eye(2.0, -std::ldexp(1.0, rng.integer(1, 9)), 3.0);
        for (int packet = 0; packet < 4; ++packet) {
            const auto index =
                static_cast<std::size_t>(rng.integer(0, static_cast<int>(given.mesh.size()) - 1));
            const Triangle& triangle = given.mesh[index];
            const Point<double, 3> vertex = triangle.vertices[0].position;
            const double offset = length(vertex - eye) * std::pow(10.0, rng.uniform(-8.0, -6.0));
            for (int ray = 0; ray < 7; ++ray)
                given.rays.push_back({eye, vertex + offset * rng.point(-1.0, 1.0)});
            given.rays.push_back({eye, triangle.centroid});
            given.rays.back().target[2] = eye[2] - (rng.coin() ? 1e-25 : 0.01);
        }
        expectHitsOfCasts(given);
        if (HasFatalFailure()) return;
    }
}

TEST(RayHits, RaysThatTheTracerRefusesHitNothing) {
    RayScene scene;
    const Mesh mesh = sheetsAt({1.0});
    scene.upload(mesh);
    const double infinity = std::numeric_limits<double>::infinity();
    const std::array<Ray, 3> rays = {Ray{{0.0, infinity, 0.0}, {0.0, 0.0, 0.0}}, Ray{onRay(0.0), onRay(2.0)},
                                     Ray{onRay(0.0), {0.3, 1e30, 0.1}}};
    std::array<RayHits, 3> hits;
    RayHitSearch(scene, mesh).find(rays, hits);
    EXPECT_TRUE(hits[0].found().empty());
    EXPECT_EQ(hits[1].found().size(), 1U);
    EXPECT_TRUE(hits[2].found().empty());
}

TEST(RayHits, AtMostTenAreFound) {
    std::vector<double> places;
    for (int i = 1; i <= 12; ++i) places.push_back(i);
    RayScene scene;
    const Mesh mesh = sheetsAt(places);
    scene.upload(mesh);
    RayHits hits;
    RayHitSearch(scene, mesh).find(Ray{onRay(0.0), onRay(1.0)}, hits);
    ASSERT_EQ(hits.found().size(), RayHits::kMaxHits);
    EXPECT_FLOAT_EQ(static_cast<float>(hits.found().back().point[1]), 10.0F);
}

TEST(RayHits, NearestIsTheFirstOfEquallyNearOnes) {
    RayHits hits;
    EXPECT_EQ(hits.nearestTo({}), nullptr);
    for (const double y : {2.0, -1.0, 1.0}) {
        Intersection hit;
        hit.point = {0.0, y, 0.0};
        hits.add(hit);
    }
    EXPECT_EQ(hits.nearestTo({})->point[1], -1.0);
}
