// The polygon of a mesh.
#include <QuarnScreen/MeshScreen.h>

#include <string>

#include <QuarnScreen/Detail/Boundary/BoundarySearch.h>
#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>
#include <QuarnScreen/Detail/Mesh/VaryingUV.h>

bool MeshScreen::findBoundaryNew(const std::vector<Triangle>& triangles, Boundary& boundary) {
    const quarn::detail::BoundarySearchResult result = quarn::detail::findBoundary(triangles, boundary);
    if (result.edgesLeft) {
        LOG4CXX_WARN(log, "Multiple boundaries are not currently supported and there are "
                              << std::to_string(*result.edgesLeft)
                              << " unprocessed edges remaining in screen mesh!");
    }
    return result.isSingleWithUV;
}

bool MeshScreen::checkParameterization(const std::vector<Triangle>& triangles) {
    return quarn::detail::hasVaryingUV(triangles);
}

bool MeshScreen::pointWithinBoundary(const std::vector<Point<double, 2>>& polygon, Point<double, 2> point) {
    return quarn::detail::pointWithinPolygon(polygon, point);
}
