#include "Library/Mapping/MappingCases.h"

#include <cmath>
#include <limits>

#include "Support/Mesh/MeshCases.h"
#include "Support/WildNumbers.h"

namespace quarn::test {
namespace {

Point2 anyCorner(const Mesh& mesh, Rng& rng) {
    return anyOf(mesh, rng).vertices[static_cast<std::size_t>(rng.integer(0, 2))].uv;
}

// The same UV, or one that differs from it in the last bit.
Point2 moved(Point2 uv, Rng& rng) {
    double& coordinate = uv[static_cast<std::size_t>(rng.integer(0, 1))];
    const double infinity = std::numeric_limits<double>::infinity();
    coordinate = std::nextafter(coordinate, rng.coin() ? infinity : -infinity);
    return uv;
}

double wildNoNaN(Rng& rng) {
    const double number = wildNumber(rng);
    return std::isnan(number) ? rng.spread() : number;
}

void spoilUVFields(Triangle& triangle, Rng& rng) {
    Point2& uvEdge = rng.coin() ? triangle.uvEdge1 : triangle.uvEdge2;
    switch (rng.integer(0, 7)) {
        case 0:
            triangle.uvDeterminant = 0.0;
            break;
        case 1:
            triangle.uvDeterminant = wildNumber(rng);
            break;
        case 2:
            triangle.uvDeterminant = triangle.uvDeterminant * rng.spread(-3, 3);
            break;
        case 3:
            uvEdge = uvEdge * rng.spread(-3, 3);
            break;
        case 4:
            uvEdge = wildPoint<2>(rng);
            break;
        case 5:
            triangle.uvCentroid =
                rng.coin() ? wildPoint<2>(rng) : Point2(rng.uniform(-1, 2), rng.uniform(-1, 2));
            break;
        case 6:
            triangle.edge1 = rng.coin() ? wildPoint<3>(rng) : triangle.edge1 * rng.spread(-3, 3);
            break;
        default:
            std::swap(triangle.vertices[0].uv, triangle.vertices[1].uv);
            break;
    }
}

Point3 anyOutlinePoint(const Mesh& mesh, const Boundary& outline, Rng& rng) {
    if (outline.points.empty()) return anyOf(mesh, rng).vertices[0].position;
    return outline
        .points[static_cast<std::size_t>(rng.integer(0, static_cast<int>(outline.points.size()) - 1))];
}

}  // namespace

::testing::AssertionResult sameBits(const Mapped& a, const Mapped& b) {
    if (a.isAnswer != b.isAnswer)
        return ::testing::AssertionFailure() << "answers " << a.isAnswer << " and " << b.isAnswer;
    return sameBits(a.point, b.point);
}

std::string withPlainNaN(std::string text) {
    for (std::size_t at = text.find("-nan"); at != std::string::npos; at = text.find("-nan"))
        text.erase(at, 1);
    return text;
}

std::vector<LogLine> linesOf(const LogCapture& capture) {
    std::vector<LogLine> lines;
    for (const LogRecord& record : capture.records())
        lines.emplace_back(record.level, withPlainNaN(record.message));
    return lines;
}

bool wasCached(const TriangleScreen& screen, const Point2& uv) {
    const LogCapture capture(kScreenLogger);
    (void)map(screen, uv, false);
    return capture.records().front().message.starts_with("good job cache!");
}

void spoilUVFields(Mesh& mesh, Rng& rng, double share) {
    for (Triangle& triangle : mesh)
        if (rng.uniform(0.0, 1.0) < share) spoilUVFields(triangle, rng);
}

void spoilUVs(Mesh& mesh, Rng& rng, double share) {
    for (Triangle& triangle : mesh) {
        if (rng.uniform(0.0, 1.0) >= share) continue;
        Point2& uv = triangle.vertices[static_cast<std::size_t>(rng.integer(0, 2))].uv;
        uv[static_cast<std::size_t>(rng.integer(0, 1))] = wildNoNaN(rng);
        computeFields(triangle);
    }
}

Mesh anyUVMesh(Rng& rng) {
    Mesh mesh = anyMesh(rng);
    switch (rng.integer(0, 4)) {
        case 0:
            spoilUVFields(mesh, rng, rng.coin() ? 0.1 : 0.6);
            break;
        case 1:
            spoilUVs(mesh, rng, rng.coin() ? 0.1 : 0.6);
            break;
        default:
            break;
    }
    return mesh;
}

Point2 anyUV(const Mesh& mesh, Rng& rng) {
    const Triangle& triangle = anyOf(mesh, rng);
    switch (rng.integer(0, 9)) {
        case 0:
            return anyCorner(mesh, rng);
        case 1:
            return moved(anyCorner(mesh, rng), rng);
        case 2:
            return (triangle.vertices[0].uv + triangle.vertices[1].uv) * 0.5;
        case 3:
            return moved((triangle.vertices[1].uv + triangle.vertices[2].uv) * 0.5, rng);
        case 4: {
            // On the boundary of the unit square, or next to it.
            const Point2 onRim(rng.coin() ? 0.0 : 1.0, rng.uniform(-0.1, 1.1));
            return rng.coin() ? onRim : moved({onRim[1], onRim[0]}, rng);
        }
        case 5:
            return rng.coin() ? wildPoint<2>(rng) : Point2(rng.spread(), rng.spread());
        case 6:
            return {rng.uniform(-0.3, 1.3), rng.uniform(-0.3, 1.3)};
        case 7:
            return {rng.coin() ? -0.0 : 0.0, rng.uniform(0.0, 1.0)};
        default: {
            const double a = rng.uniform(0.0, 1.0);
            return triangle.uvAt(a, rng.uniform(0.0, 1.0 - a));
        }
    }
}

Ray anyRay(const Mesh& mesh, const Boundary& outline, Rng& rng) {
    const Point3 eye = rng.coin() ? Point3() : rng.point(-6.0, 6.0);
    switch (rng.integer(0, 9)) {
        case 0:
            return {eye, anyOf(mesh, rng).centroid};
        case 1:
            return {eye, anyOutlinePoint(mesh, outline, rng)};
        case 2: {
            // Through a boundary point, from before it to after it, or from after it on.
            const Point3 through = anyOutlinePoint(mesh, outline, rng);
            const Point3 direction = rng.point(-1.0, 1.0);
            return {through - rng.uniform(-2.0, 2.0) * direction, through + direction};
        }
        case 3:
            return {eye, eye};
        case 4:
            return {anyOutlinePoint(mesh, outline, rng), anyOutlinePoint(mesh, outline, rng)};
        case 5:
            return {wildPoint<3>(rng), wildPoint<3>(rng)};
        case 6: {
            const Triangle& triangle = anyOf(mesh, rng);
            return {triangle.centroid, triangle.centroid + rng.uniform(-2.0, 2.0) * triangle.edge1};
        }
        case 7:
            return {eye, eye + rng.spread(-40, 40) * rng.point(-1.0, 1.0)};
        default:
            return {eye, anyOf(mesh, rng).centroid + rng.point(-2.0, 2.0)};
    }
}

}  // namespace quarn::test
