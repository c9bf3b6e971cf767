#include <algorithm>
#include <cmath>
#include <utility>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/OutputName.h>
#include <QuarnKit/Mesh/Edit/TriangleEdit.h>
#include <QuarnKit/Mesh/TriangleCorners.h>

#include "Base/ScreenInput.h"
#include "CommandLine/MeshEdit.h"
#include "CommandLine/Options.h"
#include "CommandLine/UnitOptions.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

// Limit of a coordinate, as in a file that is read.
constexpr double kMaxCoordinate = 1e37;
// Minimum diagonal of a mesh, in its unit. Coordinates far below it underflow as floats, and the
// mesh collapses to a point.
constexpr double kMinDiagonal = 1e-30;

struct TransformOptions : MeshEditOptions {
    std::string translation = "0,0,0";
    std::string rotation = "0,0,0";
    std::string scale = "1";
    bool flipsU = false;
    bool flipsV = false;
};

double factorFrom(const std::string& text) {
    const auto factor = parseNumber(text);
    if (!factor || !std::isfinite(*factor) || *factor == 0.0)
        throw unexpectedText("--scale", text, "a number that is not 0");
    return *factor;
}

PositionTransform transformFrom(const TransformOptions& options) {
    const PositionTransform transform{
        .translation = positionFrom("--translate", options.translation, options.unit),
        .rotation = degreesFrom("--rotate", options.rotation),
        .scale = factorFrom(options.scale)};
    if (!transform.moves() && !options.flipsU && !options.flipsV)
        throw Error({.found = "found options that change nothing",
                     .expected = "--translate, --rotate, --scale, --flip-u or --flip-v with an effect"});
    return transform;
}

// A rotation makes no coordinate larger than the distance from the origin. A mesh with coordinates
// that are not finite does not load.
void refuseUnrepresentable(const std::vector<Triangle>& triangles, const PositionTransform& transform,
                           const std::string& file) {
    const Bounds<3> bounds = boundsOf(triangles);
    Point<double, 3> farthest;
    for (std::size_t i = 0; i < 3; ++i)
        farthest[i] = std::max(std::abs(bounds.min[i]), std::abs(bounds.max[i]));
    const double reach = length(farthest) * std::abs(transform.scale) + length(transform.translation);
    if (!(reach <= kMaxCoordinate))
        throw Error({.found = "found --scale or --translate that lead to coordinates above " +
                              numberText(kMaxCoordinate),
                     .expected = "smaller values",
                     .file = file});
    if (transform.scale != 1.0 && length(bounds.extent()) * std::abs(transform.scale) < kMinDiagonal)
        throw Error({.found = "found --scale that makes the mesh smaller than " + numberText(kMinDiagonal),
                     .expected = "a larger factor",
                     .file = file});
}

void flip(TriangleMesh& mesh, const TransformOptions& options) {
    if (!options.flipsU && !options.flipsV) return;
    if (!mesh.hasUV)
        throw Error({.found = "found --flip-u or --flip-v for a mesh without usable UV",
                     .expected = "a mesh with UV; see quarnscreen info",
                     .file = options.input});
    if (options.flipsU) flipUVs(mesh.triangles, UvAxis::U);
    if (options.flipsV) flipUVs(mesh.triangles, UvAxis::V);
}

void run(const TransformOptions& options) {
    requireOutputName(options.output, {"obj", "xml"});
    const PositionTransform transform = transformFrom(options);
    TriangleMesh mesh = readTriangles(options);
    refuseUnrepresentable(mesh.triangles, transform, options.input);
    flip(mesh, options);
    if (transform.moves()) transformPositions(mesh.triangles, transform);
    writeMesh(std::move(mesh.triangles), "transformed by quarnscreen", options);
}

}  // namespace

void registerTransformCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "transform",
         .summary = "Scale, rotate and translate a mesh, and flip its UV",
         .example = "quarnscreen transform Samples/measured-dome.obj --rotate 90,0,0 -o rotated.obj"});
    TransformOptions& options = command.onRun(run);
    command.option("--scale FACTOR", options.scale,
                   "Applied first: factor of all positions; mirrors if negative");
    command.option(
        "--rotate Z,X,Y", options.rotation,
        "Applied second: three angles, in degrees or such as 0.5rad. Z rotates +Y to +X, X rotates +Y to +Z, "
        "Y rotates +Z to +X, all about the origin; Y is applied first, then X, then Z");
    command.option("--translate X,Y,Z", options.translation, "Applied last: three lengths");
    command.flag("--flip-u", options.flipsU, true, "Flip UV horizontally: u becomes 1 - u");
    command.flag("--flip-v", options.flipsV, true, "Flip UV vertically: v becomes 1 - v");
    addMeshEditOptions(command, options);
    addObjAxisOptions(command, options.obj);
}

}  // namespace quarn::tool
