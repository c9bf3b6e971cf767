// Changes of the mesh. None of them touches the ray tracer's scene.
#include <QuarnScreen/MeshScreen.h>

#include <utility>

#include <QuarnScreen/Detail/Editing/RigidTransform.h>
#include <QuarnScreen/Detail/Editing/TriangleSubdivision.h>

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
        // Intended: the centroids stay where they were, and the trees go by them; a reader would expect them to move.
        triangle.computeGeometry();
        for (TriangleVertex& corner : triangle.vertices) corner.normal = triangle.normal;
    }
    initTriangleData();
}

void MeshScreen::applyParameterizationTransform(bool flipU, bool flipV) {
    if (!hasParameterization() || (!flipU && !flipV)) return;
    // Intended: what each triangle derives from its UVs stays as it was; a reader would expect it to be recomputed.
    for (Triangle& triangle : triangles) {
        for (TriangleVertex& corner : triangle.vertices) {
            if (flipU) corner.uv[0] = 1.0 - corner.uv[0];
            if (flipV) corner.uv[1] = 1.0 - corner.uv[1];
        }
    }
    initTriangleData();
}
