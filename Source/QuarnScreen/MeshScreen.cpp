#include <QuarnScreen/MeshScreen.h>

#include <utility>

#include <QuarnScreen/Detail/Editing/RigidTransform.h>
#include <QuarnScreen/Detail/Editing/TriangleSubdivision.h>
#include <QuarnScreen/Detail/Mesh/GridCache.h>
#include <QuarnScreen/Detail/Mesh/MappingCache.h>
#include <QuarnScreen/Detail/Mesh/MeshIndexes.h>
#include <QuarnScreen/Detail/Mesh/RayScene.h>

MeshScreen::MeshScreen()
    : scene(std::make_unique<quarn::detail::RayScene>()),
      index(std::make_unique<quarn::detail::MeshIndexes>()),
      mappingCache(std::make_unique<quarn::detail::MappingCache>()),
      gridCache(std::make_unique<quarn::detail::GridCache>()) {}

MeshScreen::~MeshScreen() = default;

void MeshScreen::addScreenToScene() {
    initTriangleData();
    scene->upload(triangles);
}

void MeshScreen::initTriangleData() {
    boundaryValid = false;
    clearBoundary();
    index->containingTriangle.build(triangles);
    quarn::detail::buildOver(index->uvTree, triangles);
    index->regionMap.rebuild(triangles.data(), triangles.data() + triangles.size());
    boundaryValid = findBoundaryNew(triangles, boundary);
    index->boundaryUV = quarn::detail::PolygonBands(boundary.uvPoints);
    gridCache->invalidate();
    index->bounds = quarn::detail::boundsOf(triangles);
}

void MeshScreen::dropTriangleData() {
    static const std::vector<Triangle> none;
    clearBoundary();
    index->containingTriangle.build(none);
    quarn::detail::buildOver(index->uvTree, none);
    index->regionMap.clear();
    index->boundaryUV = quarn::detail::PolygonBands();
    gridCache->invalidate();
}

void MeshScreen::clearBoundary() {
    boundary.points.clear();
    boundary.uvPoints.clear();
    boundary.triangles.clear();
}

bool MeshScreen::hasValidBoundary() const {
    return boundaryValid;
}

const Point<double, 3>& MeshScreen::getCentroid() const {
    return index->bounds.centroid;
}

void MeshScreen::sampleBoundaryUV(std::vector<Point<double, 2>>& boundaryUV) const {
    boundaryUV = boundary.uvPoints;
}

bool MeshScreen::isPlanar() const {
    return false;
}

Point<double, 3> MeshScreen::getEyepoint() const {
    return {};
}

MeshScreen::DataHash MeshScreen::getUniqueDataHash() const {
    return {};
}

void MeshScreen::getTesselation(std::vector<Triangle>& copy) const {
    copy = triangles;
}

bool MeshScreen::hasTesselation() const {
    return !triangles.empty();
}

void MeshScreen::getBounds(Point<double, 3>* min, Point<double, 3>* max) const {
    if (min == nullptr || max == nullptr) return;
    *min = index->bounds.min;
    *max = index->bounds.max;
}

MeshScreen::DataHash MeshScreen::calcUniqueDataHash(const std::string& data) {
    return calculateHash(data);
}

// The functions below change the mesh. None of them updates the ray tracer's scene.

void MeshScreen::refine(double maxEdgeLength) {
    boundaryValid = false;
    std::vector<Triangle> pieces;
    pieces.reserve(triangles.size());
    for (const Triangle& triangle : triangles) quarn::detail::splitTriangle(triangle, maxEdgeLength, pieces);
    triangles = std::move(pieces);
    initTriangleData();
}

void MeshScreen::applyTransform(const Point<double, 3>& translation, const Point<double, 3>& rotation,
                                double scale) {
    const quarn::detail::RigidTransform transform(translation, rotation, scale);
    for (Triangle& triangle : triangles) {
        for (TriangleVertex& corner : triangle.vertices) corner.position = transform.apply(corner.position);
        // Intended: the centroids, by which positions are found, are unchanged; a reader would
        // expect them to move.
        triangle.computeGeometry();
        for (TriangleVertex& corner : triangle.vertices) corner.normal = triangle.normal;
    }
    initTriangleData();
}

void MeshScreen::applyParameterizationTransform(bool flipU, bool flipV) {
    if (!hasParameterization() || (!flipU && !flipV)) return;
    // Intended: the derived UV fields of the triangles are unchanged; a reader would expect them to
    // be recomputed.
    for (Triangle& triangle : triangles) {
        for (TriangleVertex& corner : triangle.vertices) {
            if (flipU) corner.uv[0] = 1.0 - corner.uv[0];
            if (flipV) corner.uv[1] = 1.0 - corner.uv[1];
        }
    }
    initTriangleData();
}
