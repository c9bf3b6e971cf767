/// \file
/// A mesh in the ray tracer, asked by its calls directly.
#pragma once

#include <memory>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::bench {

class PlainScene {
public:
    PlainScene();
    PlainScene(const PlainScene&) = delete;
    PlainScene& operator=(const PlainScene&) = delete;
    ~PlainScene();

    /// Takes a mesh, which must outlive the scene.
    void upload(const std::vector<Triangle>& triangles);

    /// Up to ten hits, nearest first.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& start, const Point<double, 3>& end) const;

    /// Of the triangles that hold a position, that with the nearest centroid, by the tracer's own search around a
    /// position.
    [[nodiscard]] const Triangle* findContaining(const Point<double, 3>& point) const;

private:
    struct Tracer;
    std::unique_ptr<Tracer> tracer;
};

}  // namespace quarn::bench
