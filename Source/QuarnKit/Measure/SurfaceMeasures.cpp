#include "SurfaceMeasures.h"

#include <algorithm>
#include <cmath>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>
#include <QuarnScreen/Triangle.h>

#include "CircularRange.h"
#include "RuledArea.h"

namespace quarn {

namespace {

// Returns the range of a product of two independent quantities.
ValueRange product(const ValueRange& a, const ValueRange& b) {
    const auto [min, max] = std::minmax({a.min * b.min, a.min * b.max, a.max * b.min, a.max * b.max});
    return {.min = min, .max = max};
}

ValueRange scaled(const ValueRange& range, double factor) {
    return product(range, {.min = factor, .max = factor});
}

ValueRange symmetric(double length) {
    return {.min = -std::abs(length) / 2.0, .max = std::abs(length) / 2.0};
}

Bounds<3> boxOf(const Point<double, 3>& center, const ValueRange& x, const ValueRange& y,
                const ValueRange& z) {
    Bounds<3> box(center + Point<double, 3>(x.min, y.min, z.min));
    box.include(center + Point<double, 3>(x.max, y.max, z.max));
    return box;
}

SurfaceMeasures measuresOf(const FlatScreen& screen) {
    const double width = std::abs(screen.getWidth());
    const double height = std::abs(screen.getHeight());
    return {.extent = boxOf({}, symmetric(width), {}, symmetric(height)),
            .area = width * height,
            .edges = EdgeLengths{.top = width, .right = height, .bottom = width, .left = height}};
}

SurfaceMeasures measuresOf(const CylinderScreenParams& params) {
    const double arc = std::abs(params.radius * (params.maxTheta - params.minTheta));
    const double height = std::abs(params.height);
    return {.extent = boxOf(params.center, scaled(sineRange(params.minTheta, params.maxTheta), params.radius),
                            scaled(cosineRange(params.minTheta, params.maxTheta), params.radius),
                            symmetric(height)),
            .area = arc * height,
            .edges = EdgeLengths{.top = arc, .right = height, .bottom = arc, .left = height}};
}

SurfaceMeasures measuresOf(const SphericalScreenParams& params) {
    const ValueRange ring = scaled(cosineRange(params.minPhi, params.maxPhi), params.radius);
    const double theta = std::abs(params.maxTheta - params.minTheta);
    const double side = std::abs(params.radius * (params.maxPhi - params.minPhi));
    const auto ringLength = [&](double phi) { return std::abs(params.radius * cleanCosine(phi)) * theta; };
    return {
        .extent = boxOf(params.center, product(sineRange(params.minTheta, params.maxTheta), ring),
                        product(cosineRange(params.minTheta, params.maxTheta), ring),
                        scaled(sineRange(params.minPhi, params.maxPhi), params.radius)),
        .area = params.radius * params.radius * theta * absoluteCosineIntegral(params.minPhi, params.maxPhi),
        .edges = EdgeLengths{.top = ringLength(params.maxPhi),
                             .right = side,
                             .bottom = ringLength(params.minPhi),
                             .left = side}};
}

// Returns the box of an arc over the chord from (-w/2, 0) to (w/2, 0).
Bounds<3> arcBox(double arc, double radius, double z) {
    const double half = arc * 0.5;
    const ValueRange cosine = cosineRange(-half, half);
    const double chord = std::cos(half);
    return boxOf({0.0, 0.0, z}, scaled(sineRange(-half, half), radius),
                 scaled({.min = cosine.min - chord, .max = cosine.max - chord}, radius), {});
}

// The rulings are straight and horizontal coordinates linear along them, so that the arcs contain
// the extremes.
SurfaceMeasures measuresOf(const RuledSurfaceScreenParams& params) {
    const RuledShape shape{.width = params.width,
                           .height = params.height,
                           .topArc = params.maxTheta - params.minTheta,
                           .bottomArc = params.maxPhi - params.minPhi};
    const double side = std::abs(params.height);
    Bounds<3> extent = arcBox(shape.topArc, shape.topRadius(), params.height / 2.0);
    extent.include(arcBox(shape.bottomArc, shape.bottomRadius(), -params.height / 2.0));
    return {.extent = extent,
            .area = ruledAreaOf(shape),
            .edges = EdgeLengths{.top = std::abs(shape.topRadius() * shape.topArc),
                                 .right = side,
                                 .bottom = std::abs(shape.bottomRadius() * shape.bottomArc),
                                 .left = side}};
}

double lengthOf(const IScreenGeometry::Polylines& polylines) {
    double sum = 0.0;
    for (const auto& polyline : polylines)
        for (std::size_t i = 1; i < polyline.size(); ++i) sum += length(polyline[i] - polyline[i - 1]);
    return sum;
}

SurfaceMeasures measuresOfMesh(const IScreenGeometry& screen) {
    std::vector<Triangle> triangles;
    screen.getTesselation(triangles);
    SurfaceMeasures measures;
    double twiceArea = 0.0;
    for (const Triangle& triangle : triangles) {
        const auto& [a, b, c] = triangle.vertices;
        twiceArea += length(cross(b.position - a.position, c.position - a.position));
        for (const TriangleVertex& corner : triangle.vertices) measures.extent.include(corner.position);
    }
    measures.area = twiceArea / 2.0;
    IScreenGeometry::Polylines boundary;
    screen.sampleBoundary(boundary);
    measures.boundaryLength = lengthOf(boundary);
    return measures;
}

}  // namespace

SurfaceMeasures surfaceMeasuresOf(const IScreenGeometry& screen) {
    if (const auto* const flat = dynamic_cast<const FlatScreen*>(&screen)) return measuresOf(*flat);
    if (const auto* const cylinder = dynamic_cast<const CylinderScreen*>(&screen))
        return measuresOf(cylinder->getParams());
    if (const auto* const sphere = dynamic_cast<const SphericalScreen*>(&screen))
        return measuresOf(sphere->getParams());
    if (const auto* const ruled = dynamic_cast<const RuledSurfaceScreen*>(&screen))
        return measuresOf(ruled->getParams());
    return measuresOfMesh(screen);
}

}  // namespace quarn
