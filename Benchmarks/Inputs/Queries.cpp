#include "Inputs/Queries.h"

#include <random>

#include "Support/Rng.h"

namespace quarn::bench {
namespace {

const Triangle& anyTriangle(const test::Mesh& mesh, test::Rng& rng) {
    return mesh[static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1))];
}

Point3 anyPosition(const Triangle& triangle, test::Rng& rng) {
    const double a = rng.uniform(0.0, 1.0);
    return triangle.pointAt(a, rng.uniform(0.0, 1.0 - a));
}

// Domes are seen from their middle, waves from the front.
Point3 eyeOf(const MeshCase& mesh) {
    return mesh.shape == Shape::Dome ? Point3() : Point3(0.0, -5.0, 0.0);
}

template <class Input, class Make>
std::vector<Input> makeAll(int seed, const Make& make) {
    test::Rng rng(seed);
    std::vector<Input> inputs;
    inputs.reserve(kQuestions);
    while (inputs.size() < kQuestions) inputs.push_back(make(rng));
    return inputs;
}

}  // namespace

std::vector<Point3> positionsOnSurface(const MeshCase& mesh) {
    const test::Mesh& triangles = meshOf(mesh);
    return makeAll<Point3>(1, [&](test::Rng& rng) { return anyPosition(anyTriangle(triangles, rng), rng); });
}

std::vector<Point3> positionsOffSurface(const MeshCase& mesh, double least, double greatest) {
    const test::Mesh& triangles = meshOf(mesh);
    return makeAll<Point3>(2, [&](test::Rng& rng) {
        const Triangle& triangle = anyTriangle(triangles, rng);
        const double distance = rng.uniform(least, greatest) * (rng.coin() ? 1.0 : -1.0);
        return anyPosition(triangle, rng) + distance * triangle.normal;
    });
}

std::vector<Point2> uvsInside() {
    return makeAll<Point2>(3, [](test::Rng& rng) {
        const double u = rng.uniform(0.0, 1.0);
        return Point2(u, rng.uniform(0.0, 1.0));
    });
}

std::vector<Point2> uvsJustOutside() {
    return makeAll<Point2>(4, [](test::Rng& rng) {
        constexpr double kFarthest = 0.01;
        const double along = rng.uniform(0.0, 1.0);
        const double beyond = rng.uniform(0.0, kFarthest);
        const double across = rng.coin() ? -beyond : 1.0 + beyond;
        return rng.coin() ? Point2(along, across) : Point2(across, along);
    });
}

std::vector<Ray> coherentRays(const MeshCase& mesh) {
    constexpr int kLines = 362;  // about the square root of kQuestions
    const test::Mesh& triangles = meshOf(mesh);
    const test::GridSize cells = mesh.cells();
    std::vector<Ray> rays;
    rays.reserve(static_cast<std::size_t>(kLines) * kLines);
    for (int line = 0; line < kLines; ++line) {
        for (int column = 0; column < kLines; ++column) {
            const int cell = line * cells.rows / kLines * cells.columns + column * cells.columns / kLines;
            rays.push_back({eyeOf(mesh), triangles[2 * static_cast<std::size_t>(cell)].centroid});
        }
    }
    return rays;
}

std::vector<Ray> incoherentRays(const MeshCase& mesh) {
    const test::Mesh& triangles = meshOf(mesh);
    return makeAll<Ray>(5, [&](test::Rng& rng) {
        const Point3 origin = eyeOf(mesh) + rng.point(-1.0, 1.0);
        return Ray{origin, anyPosition(anyTriangle(triangles, rng), rng)};
    });
}

std::size_t anyStart(std::size_t count) {
    thread_local std::mt19937 random(std::random_device{}());
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
}

}  // namespace quarn::bench
