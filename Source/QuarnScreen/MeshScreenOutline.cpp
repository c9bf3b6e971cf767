// The outline of a mesh.
#include <QuarnScreen/MeshScreen.h>

#include <string>

#include <QuarnScreen/Detail/Boundary/BoundarySearch.h>
#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>
#include <QuarnScreen/Detail/Mesh/VaryingUV.h>

bool MeshScreen::findBoundaryNew(const std::vector<Triangle>& triangles, Boundary& boundary) {
    const quarn::OutlineResult result = quarn::findOutline(triangles, boundary);
    if (result.edgesLeft) {
        LOG4CXX_WARN(log, "Multiple boundaries are not currently supported and there are "
                              << std::to_string(*result.edgesLeft)
                              << " unprocessed edges remaining in screen mesh!");
    }
    return result.isSingleWithUV;
}

bool MeshScreen::checkParameterization(const std::vector<Triangle>& triangles) {
    return quarn::hasVaryingUV(triangles);
}

bool MeshScreen::pointWithinBoundary(const std::vector<Point<double, 2>>& outline, Point<double, 2> point) {
    return quarn::pointWithinOutline(outline, point);
}
