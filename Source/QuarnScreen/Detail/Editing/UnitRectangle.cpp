#include "UnitRectangle.h"

#include <algorithm>
#include <iostream>
#include <limits>

namespace quarn::detail {
namespace {

// Width by which the rectangle behind the mesh extends beyond it on each side.
constexpr double kMargin = 0.2;

struct Extent {
    double minX = std::numeric_limits<double>::max();
    double minY = std::numeric_limits<double>::max();
    double minZ = std::numeric_limits<double>::max();
    double maxX = std::numeric_limits<double>::min();
    double maxY = std::numeric_limits<double>::min();
};

Extent extentOf(const std::vector<Triangle>& triangles) {
    Extent extent;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            const Point<double, 3>& position = corner.position;
            extent.minX = std::min(extent.minX, position[0]);
            extent.minY = std::min(extent.minY, position[1]);
            extent.minZ = std::min(extent.minZ, position[2]);
            extent.maxX = std::max(extent.maxX, position[0]);
            extent.maxY = std::max(extent.maxY, position[1]);
        }
    }
    return extent;
}

void appendTriangle(std::vector<Triangle>& triangles, const Point<double, 3>& a, const Point<double, 3>& b,
                    const Point<double, 3>& c) {
    Triangle& triangle = triangles.emplace_back();
    triangle.vertices[0].position = a;
    triangle.vertices[1].position = b;
    triangle.vertices[2].position = c;
    triangle.computeCentroids();
    triangle.computeGeometry();
    for (TriangleVertex& corner : triangle.vertices) corner.normal = triangle.normal;
}

}  // namespace

void scaleToUnitRectangle(std::vector<Triangle>& triangles) {
    const Extent before = extentOf(triangles);
    const double size = std::max(before.maxX - before.minX, before.maxY - before.minY);
    for (Triangle& triangle : triangles) {
        for (TriangleVertex& corner : triangle.vertices) {
            Point<double, 3>& position = corner.position;
            position = {(position[0] - before.minX) / size - 0.5, (position[1] - before.minY) / size - 0.5,
                        (position[2] - before.minZ) / size};
        }
    }
    const Extent after = extentOf(triangles);
    const double left = after.minX - kMargin;
    const double right = after.maxX + kMargin;
    const double bottom = after.minY - kMargin;
    const double top = after.maxY + kMargin;
    appendTriangle(triangles, {left, bottom, after.minZ}, {right, top, after.minZ}, {left, top, after.minZ});
    appendTriangle(triangles, {left, bottom, after.minZ}, {right, bottom, after.minZ},
                   {right, top, after.minZ});
    std::cout << "...\n" << std::flush;
}

}  // namespace quarn::detail
