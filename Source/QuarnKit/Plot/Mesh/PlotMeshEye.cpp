#include "PlotMeshEye.h"

#include <algorithm>

#include <QuarnKit/Compare/TriangleDistance.h>

namespace quarn {

namespace {

// A triangle that is nearer to the eye, in sizes of the mesh, would fill the view.
constexpr double kMinEyeDistance = 0.05;
// Distance in sizes of the mesh from which it is seen otherwise; all of it is nearer to its middle.
constexpr double kDistance = 1.5;
// Minimum length of the sum of the fronts as a fraction of the area: a closed mesh has no front.
constexpr double kMinFrontRatio = 1e-3;

bool isOnMesh(const PlotMeshData& mesh, const Point<double, 3>& eye) {
    return std::any_of(mesh.triangles.begin(), mesh.triangles.end(), [&](const TriangleCorners& triangle) {
        return squaredDistance(eye, triangle) < kMinEyeDistance * kMinEyeDistance;
    });
}

Point<double, 3> frontOf(const PlotMeshData& mesh) {
    Point<double, 3> sum;
    double area = 0.0;
    for (const TriangleCorners& triangle : mesh.triangles) {
        const Point<double, 3> normal = cross(triangle[1] - triangle[0], triangle[2] - triangle[0]);
        sum = sum + normal;
        area += length(normal);
    }
    return length(sum) > kMinFrontRatio * area ? normalized(sum) : Point<double, 3>(0.0, -1.0, 0.0);
}

}  // namespace

EyeView eyeViewOf(const IScreenGeometry& geometry, const PlotMeshData& mesh) {
    EyePose pose{.place = EyePlace::EyePoint,
                 .eye = mesh.toScene(geometry.getEyepoint()),
                 .heading = geometry.getCenterOfScreenHeading()};
    if (isOnMesh(mesh, pose.eye)) {
        const Point<double, 3> front = frontOf(mesh);
        pose = {.place = EyePlace::BeforeScreen, .eye = front * kDistance, .heading = front * -1.0};
    }
    return chooseEyeView(geometry, pose, [&](const auto& visit) {
        for (const TriangleCorners& triangle : mesh.triangles)
            for (const Point<double, 3>& corner : triangle) visit(corner);
    });
}

}  // namespace quarn
