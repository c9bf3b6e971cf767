#include <gtest/gtest.h>

#include <algorithm>

#include "Reference/Mesh/ReferenceRayScan.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

struct Tally {
    int hits = 0;
    int sureHits = 0;
    int misses = 0;
};

// From anywhere around the mesh, mostly at one of its triangles.
Ray anyRay(const Mesh& mesh, Rng& rng) {
    const Point3 start = rng.point(-8.0, 8.0);
    const Point3 through = rng.integer(0, 3) == 0 ? rng.point(-8.0, 8.0) : anyOf(mesh, rng).pointAt(0.3, 0.3);
    return {start, start + rng.uniform(0.2, 3.0) * (through - start)};
}

// Every hit is one of the scan's, at its place.
void expectAllScanned(const IntersectionSet& hits, const std::vector<ScannedHit>& scanned, const Mesh& mesh,
                      const Ray& ray) {
    for (const Intersection& hit : hits) {
        const auto same = std::find_if(scanned.begin(), scanned.end(), [&](const ScannedHit& each) {
            return static_cast<int>(each.triangle) == hit.triangleIndex;
        });
        ASSERT_NE(same, scanned.end()) << "triangle " << hit.triangleIndex;
        const Triangle& triangle = mesh[same->triangle];
        const double approach = dot(ray.target - ray.origin, triangle.normal);
        EXPECT_EQ(hit.normalSign, (approach > 0.0 ? 1 : 0) - (approach < 0.0 ? 1 : 0));
        EXPECT_TRUE(hit.hasUV);
        if (!same->isSure) continue;
        EXPECT_LT(length(hit.point - same->position), same->rounding);
        EXPECT_LT(length(hit.uv - same->uv),
                  same->slack * (length(triangle.uvEdge1) + length(triangle.uvEdge2)));
    }
}

// Every sure hit of the scan is found, unless another one stands close before it, or ten are found
// before it.
int expectAllFound(const IntersectionSet& hits, const std::vector<ScannedHit>& scanned) {
    constexpr double kClose = 0.0011;  // the step behind a hit, in lengths of the direction, and rounding
    int sure = 0;
    for (std::size_t i = 0; i < scanned.size() && i < 10; ++i) {
        const bool isFirst = i == 0 || scanned[i].t - scanned[i - 1].t > kClose;
        const bool isLast = i + 1 == scanned.size() || scanned[i + 1].t - scanned[i].t > kClose;
        if (!scanned[i].isSure || !isFirst || !isLast) continue;
        ++sure;
        EXPECT_TRUE(std::any_of(hits.begin(), hits.end(),
                                [&](const Intersection& hit) {
                                    return hit.triangleIndex == static_cast<int>(scanned[i].triangle);
                                }))
            << "triangle " << scanned[i].triangle << " at " << scanned[i].t;
    }
    return sure;
}

void compare(const Mesh& mesh, Rng& rng, int rays, Tally& tally) {
    const TriangleScreen screen(mesh);
    for (int i = 0; i < rays && !::testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE(::testing::Message() << "ray " << i);
        const Ray ray = anyRay(mesh, rng);
        const IntersectionSet hits = screen.intersect(ray.origin, ray.target);
        const std::vector<ScannedHit> scanned = scanRay(mesh, ray.origin, ray.target);
        ASSERT_LE(hits.count(), 10);
        expectAllScanned(hits, scanned, mesh, ray);
        tally.sureHits += expectAllFound(hits, scanned);
        tally.hits += hits.count();
        tally.misses += hits.empty() ? 1 : 0;
        for (int k = 1; k < hits.count(); ++k)
            EXPECT_LE(length(hits.get(k - 1).point - ray.origin), length(hits.get(k).point - ray.origin));
    }
}

}  // namespace

TEST(MeshScreenRays, HitWhatAScanOverAllTrianglesHits) {
    Tally tally;
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = anyShape(rng);
        if (rng.coin()) shuffle(mesh, i);
        compare(mesh, rng, 60, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(tally.hits, seedCount(20'000));
    EXPECT_GT(tally.sureHits, seedCount(15'000));
    EXPECT_GT(tally.misses, 1'000);
}

TEST(MeshScreenRays, HitWhatAScanHitsOnFinerMeshes) {
    Tally tally;
    Rng rng(0);
    for (const Mesh& mesh :
         {dome({40, 30}), wave({40, 30}), cylinderSection({50, 20}), foldedSheet(12, 0.05, 20)})
        compare(mesh, rng, 300, tally);
    EXPECT_GT(tally.sureHits, 1'000);
}

TEST(MeshScreenRays, HitWhatAScanHitsInTheOtherWindingAndInCopies) {
    Tally tally;
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = soup(rng, 40, 0.5);
        for (Triangle& triangle : mesh) {
            if (!rng.coin()) continue;
            std::swap(triangle.vertices[1], triangle.vertices[2]);
            computeFields(triangle);
        }
        compare(mesh, rng, 60, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(tally.sureHits, seedCount(5'000));
}
