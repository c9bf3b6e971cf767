#include <QuarnKit/Mesh/Edit/TriangleEdit.h>

#include <gtest/gtest.h>

#include <sstream>

#include <QuarnScreen/OBJScreen.h>

#include "Support/Rng.h"

namespace quarn {
namespace {

constexpr const char* kSquare =
    "v 0 0 0\nv 1.25 0 0\nv 1.25 0.5 1\nv 0 0 1\nvt 0 0\nvt 1 0\nvt 1 0.75\nvt 0.1 1\nvn 0 -1 0\n"
    "f 1/1/1 2/2/1 3/3/1 4/4/1\n";

std::vector<Triangle> trianglesOf(const MeshScreen& mesh) {
    std::vector<Triangle> triangles;
    mesh.getTesselation(triangles);
    return triangles;
}

void load(OBJScreen& mesh) {
    std::istringstream text(kSquare);
    mesh.deserialize(text);
}

void expectSameCorners(const std::vector<Triangle>& a, const std::vector<Triangle>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t corner = 0; corner < 3; ++corner) {
            EXPECT_EQ(a[i].vertices.at(corner).position, b[i].vertices.at(corner).position);
            EXPECT_EQ(a[i].vertices.at(corner).uv, b[i].vertices.at(corner).uv);
        }
}

TEST(TriangleEdit, TransformsPositionsAsAScreenDoes) {
    for (int seed = 0; seed < test::seedCount(100); ++seed) {
        SCOPED_TRACE(seed);
        test::Rng rng(seed);
        const auto point = [&](double size) {
            const double x = rng.uniform(-size, size);
            const double y = rng.uniform(-size, size);
            return Point<double, 3>(x, y, rng.uniform(-size, size));
        };
        const Point<double, 3> translation = point(100.0);
        const PositionTransform transform{
            .translation = translation, .rotation = point(360.0), .scale = rng.uniform(-3.0, 3.0)};
        OBJScreen mesh;
        load(mesh);
        std::vector<Triangle> triangles = trianglesOf(mesh);
        transformPositions(triangles, transform);
        mesh.applyTransform(transform.translation, transform.rotation, transform.scale);
        expectSameCorners(triangles, trianglesOf(mesh));
    }
}

TEST(TriangleEdit, FlipsUVsAsAScreenDoes) {
    for (const auto& [flipsU, flipsV] : {std::pair(true, false), {false, true}, {true, true}}) {
        OBJScreen mesh;
        load(mesh);
        std::vector<Triangle> triangles = trianglesOf(mesh);
        if (flipsU) flipUVs(triangles, UvAxis::U);
        if (flipsV) flipUVs(triangles, UvAxis::V);
        mesh.applyParameterizationTransform(flipsU, flipsV);
        expectSameCorners(triangles, trianglesOf(mesh));
    }
}

TEST(TriangleEdit, ATransformThatMovesNothingIsKnown) {
    EXPECT_FALSE(PositionTransform().moves());
    EXPECT_TRUE((PositionTransform{.translation = {0.0, 0.0, 1.0}, .rotation = {}}.moves()));
    EXPECT_TRUE((PositionTransform{.translation = {}, .rotation = {}, .scale = -1.0}.moves()));
}

}  // namespace
}  // namespace quarn
