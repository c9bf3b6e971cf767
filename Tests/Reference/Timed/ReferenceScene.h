/// \file
/// A mesh in the ray tracer, queried by the tracer's own calls.
#pragma once

#include <memory>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>
#include <QuarnScreen/Triangle.h>

namespace quarn::test {

class ReferenceScene {
public:
    ReferenceScene();
    ReferenceScene(const ReferenceScene&) = delete;
    ReferenceScene& operator=(const ReferenceScene&) = delete;
    ~ReferenceScene();

    /// Takes a mesh, which must outlive the scene.
    void upload(const std::vector<Triangle>& triangles);

    /// Up to ten hits, nearest first.
    [[nodiscard]] IntersectionSet intersect(const Point<double, 3>& start, const Point<double, 3>& end) const;

    /// Of the triangles that contain a position, the one with the nearest centroid, by the tracer's
    /// point query.
    [[nodiscard]] const Triangle* findContaining(const Point<double, 3>& point) const;

private:
    struct Tracer;
    std::unique_ptr<Tracer> tracer;
};

}  // namespace quarn::test
