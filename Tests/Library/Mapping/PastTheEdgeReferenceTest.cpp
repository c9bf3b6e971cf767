// Rays past the mesh against the reference implementation, bit for bit.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "Library/Mapping/MappingCases.h"
#include "Reference/Mesh/ReferenceRays.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

using Way = ReferenceNearest::Way;
using Tally = std::array<int, static_cast<std::size_t>(Way::Count)>;

struct Counts {
    Tally ways{};
    int hits = 0;
    int lastPoint = 0;  // chosen of a list
};

void compareAt(const TriangleScreen& screen, const Ray& ray, int sign, Counts& counts) {
    SCOPED_TRACE(::testing::Message() << std::hexfloat << "from " << ray.origin[0] << ", " << ray.origin[1]
                                      << ", " << ray.origin[2] << " to " << ray.target[0] << ", "
                                      << ray.target[1] << ", " << ray.target[2] << " sign " << sign);
    const IntersectionSet all = screen.intersect(ray.origin, ray.target);
    const IntersectionSet expected = referencePastTheEdge(screen.mesh(), all, screen.outline(), ray, sign);
    EXPECT_TRUE(
        sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(ray.origin, ray.target, sign), expected));
    if (expected.first().triangleIndex >= 0) {
        ++counts.hits;
        return;
    }
    const ReferenceNearest nearest = referenceNearestToBoundary(screen.outline(), ray, sign);
    ++counts.ways[static_cast<std::size_t>(nearest.way)];
    const int last = static_cast<int>(screen.outline().points.size()) - 1;
    if (last > 0 && nearest.chosen == last) ++counts.lastPoint;
}

int countOf(const Counts& counts, Way way) {
    return counts.ways[static_cast<std::size_t>(way)];
}

// Points of all kinds that a mesh's boundary may never have, some without a triangle.
void scribble(Boundary& outline, const Mesh& mesh, Rng& rng) {
    const int count = rng.integer(0, 7);
    outline.points.clear();
    outline.triangles.clear();
    for (int i = 0; i < count; ++i) {
        Point3 point = rng.coin() ? rng.integerPoint(-2, 2) : rng.point(-3.0, 3.0);
        if (rng.integer(0, 15) == 0) point = wildPoint<3>(rng);
        outline.points.push_back(point);
        outline.triangles.push_back(rng.integer(0, 7) == 0 ? nullptr : &anyOf(mesh, rng));
    }
    if (count > 1 && rng.coin()) outline.points.back() = outline.points.front();
    outline.uvPoints.resize(outline.points.size());
}

}  // namespace

TEST(PastTheEdgeReference, MeshesOfAnyShape) {
    Counts counts;
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleScreen screen(anyShape(rng));
        for (int k = 0; k < 60; ++k)
            compareAt(screen, anyRay(screen.mesh(), screen.outline(), rng), rng.integer(-1, 1), counts);
        if (HasFailure()) return;
    }
    EXPECT_GT(counts.hits, seedCount(2'000));
    for (const Way way : {Way::NoPoint, Way::OnlyFirst, Way::OnlySecond, Way::First, Way::Second})
        EXPECT_GT(countOf(counts, way), seedCount(100)) << static_cast<int>(way);
}

TEST(PastTheEdgeReference, MeshesWithSpoiledFields) {
    Counts counts;
    for (int i = 0; i < seedCount(800); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleScreen screen(anyMesh(rng));
        for (int k = 0; k < 40; ++k)
            compareAt(screen, anyRay(screen.mesh(), screen.outline(), rng), rng.integer(-1, 1), counts);
        if (HasFailure()) return;
    }
    EXPECT_GT(counts.hits, 1'000);
    EXPECT_GT(countOf(counts, Way::First) + countOf(counts, Way::Second), seedCount(5'000));
}

TEST(PastTheEdgeReference, OutlinesOfAnyKind) {
    Counts counts;
    for (int i = 0; i < seedCount(4000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        TriangleScreen screen;
        screen.reindex(soup(rng, 4));
        scribble(screen.outline(), screen.mesh(), rng);
        for (int k = 0; k < 15; ++k) {
            const Ray ray = rng.integer(0, 3) == 0 ? Ray{rng.integerPoint(-2, 2), rng.integerPoint(-2, 2)}
                                                   : anyRay(screen.mesh(), screen.outline(), rng);
            compareAt(screen, ray, rng.integer(-2, 2), counts);
        }
        if (HasFailure()) return;
    }
    EXPECT_EQ(counts.hits, 0);
    EXPECT_GT(counts.lastPoint, seedCount(1'000));
    for (int way = 0; way < static_cast<int>(Way::Count); ++way)
        EXPECT_GT(countOf(counts, static_cast<Way>(way)), 500) << way;
}

// After a transform the hits are those of the old mesh, with the normals of the new one.
TEST(PastTheEdgeReference, TransformedMeshes) {
    Counts counts;
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        TriangleScreen screen(anyShape(rng));
        screen.applyTransform(rng.point(-1.0, 1.0), rng.point(-180.0, 180.0), rng.uniform(0.5, 2.0));
        for (int k = 0; k < 40; ++k)
            compareAt(screen, anyRay(screen.mesh(), screen.outline(), rng), rng.integer(-1, 1), counts);
        if (HasFailure()) return;
    }
    EXPECT_GT(counts.hits, 200);
}
