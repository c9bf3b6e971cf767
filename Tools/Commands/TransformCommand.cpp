#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/OutputName.h>

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

struct Transform {
    Point<double, 3> translation;
    Point<double, 3> rotation;  // degrees
    double scale = 1.0;

    [[nodiscard]] bool moves() const {
        return translation != Point<double, 3>() || rotation != Point<double, 3>() || scale != 1.0;
    }
};

double factorFrom(const std::string& text) {
    const auto factor = parseNumber(text);
    if (!factor || !std::isfinite(*factor) || *factor == 0.0)
        throw unexpectedText("--scale", text, "a number that is not 0");
    return *factor;
}

Transform transformFrom(const TransformOptions& options) {
    const Transform transform{.translation = positionFrom("--translate", options.translation, options.unit),
                              .rotation = degreesFrom("--rotate", options.rotation),
                              .scale = factorFrom(options.scale)};
    if (!transform.moves() && !options.flipsU && !options.flipsV)
        throw Error({.found = "found options that change nothing",
                     .expected = "--translate, --rotate, --scale, --flip-u or --flip-v with an effect"});
    return transform;
}

// A rotation makes no coordinate larger than the distance from the origin. With coordinates that
// are not finite, the search for the boundary would not terminate.
void refuseUnrepresentable(const MeshScreen& mesh, const Transform& transform, const std::string& file) {
    Point<double, 3> min;
    Point<double, 3> max;
    mesh.getBounds(&min, &max);
    Point<double, 3> farthest;
    for (std::size_t i = 0; i < 3; ++i) farthest[i] = std::max(std::abs(min[i]), std::abs(max[i]));
    const double reach = length(farthest) * std::abs(transform.scale) + length(transform.translation);
    if (!(reach <= kMaxCoordinate))
        throw Error({.found = "found --scale or --translate that lead to coordinates above " +
                              numberText(kMaxCoordinate),
                     .expected = "smaller values",
                     .file = file});
    if (transform.scale != 1.0 && length(max - min) * std::abs(transform.scale) < kMinDiagonal)
        throw Error({.found = "found --scale that makes the mesh smaller than " + numberText(kMinDiagonal),
                     .expected = "a larger factor",
                     .file = file});
}

void flip(MeshScreen& mesh, const TransformOptions& options) {
    if (!options.flipsU && !options.flipsV) return;
    if (!mesh.hasParameterization())
        throw Error({.found = "found --flip-u or --flip-v for a mesh without usable UV",
                     .expected = "a mesh with UV; see quarnscreen info",
                     .file = options.input});
    mesh.applyParameterizationTransform(options.flipsU, options.flipsV);
}

void run(const TransformOptions& options) {
    requireOutputName(options.output, {"obj", "xml"});
    const Transform transform = transformFrom(options);
    const Screen screen = openScreen(options.input, options.maxMemory, options.obj);
    MeshScreen& mesh = meshOf(screen);
    refuseUnrepresentable(mesh, transform, options.input);
    flip(mesh, options);
    if (transform.moves()) mesh.applyTransform(transform.translation, transform.rotation, transform.scale);
    std::vector<Triangle> triangles;
    mesh.getTesselation(triangles);
    writeMesh(triangles, "transformed by quarnscreen", options);
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
