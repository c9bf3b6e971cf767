#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Formats/ObjPartReader.h>
#include <QuarnKit/Measure/SurfaceMeasures.h>
#include <QuarnScreen/ScreenUtils.h>

#include "Base/Diagnostics.h"
#include "Base/Json.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Reports/AlignedText.h"
#include "Reports/MeshInfo.h"
#include "Reports/ObjectList.h"
#include "Reports/RoundedNumbers.h"
#include "Rows/QueryResults.h"
#include "Rows/ResultWriter.h"

namespace quarn::tool {

namespace {

constexpr int kMaxDigits = std::numeric_limits<double>::max_digits10;
// A file contains 16 digits of an angle in radians, so a 16th digit of its degrees would be noise.
constexpr int kMaxDegreeDigits = 15;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct InfoOptions : ScreenOptions {
    int digits = 7;
    bool listsObjects = false;
};

// Screens without bounds do not change the positions.
std::optional<Bounds<3>> boundsOf(const IScreenGeometry& geometry) {
    Bounds<3> bounds(Point<double, 3>(kNaN, kNaN, kNaN));
    geometry.getBounds(&bounds.min, &bounds.max);
    if (!isFinite(bounds.min) || !isFinite(bounds.max)) return std::nullopt;
    return bounds;
}

// The aspect ratio is estimated from UV.
std::optional<double> aspectRatioOf(IScreenGeometry& geometry) {
    if (!geometry.hasParameterization()) return std::nullopt;
    return ScreenUtils::estimateAspectRatioUV(geometry);
}

Json jsonPoint(const Point<double, 3>& point) {
    return Json::array({point[0], point[1], point[2]});
}

Json jsonAngle(double radians) {
    return Json::object({{"degrees", radians * kDegreesPerRadian}, {"radians", radians}});
}

Json jsonBounds(const Bounds<3>& bounds) {
    return Json::object({{"min", jsonPoint(bounds.min)}, {"max", jsonPoint(bounds.max)}});
}

// Width and height as a viewer sees them.
Json jsonSize(const Bounds<3>& bounds) {
    const Point<double, 3> extent = bounds.extent();
    return Json::object({{"width", extent[0]}, {"height", extent[2]}});
}

Json jsonEdges(const EdgeLengths& edges) {
    return Json::object(
        {{"top", edges.top}, {"right", edges.right}, {"bottom", edges.bottom}, {"left", edges.left}});
}

Json jsonSurface(const SurfaceMeasures& surface) {
    const Point<double, 3> extent = surface.extent.extent();
    return Json::object(
        {{"extent", jsonBounds(surface.extent)},
         {"size", Json::object({{"width", extent[0]}, {"depth", extent[1]}, {"height", extent[2]}})},
         {"area", surface.area},
         {"edges", surface.edges ? jsonEdges(*surface.edges) : Json()},
         {"boundaryLength", surface.boundaryLength.value_or(kNaN)}});
}

Json jsonParameter(const Parameter& parameter) {
    switch (parameter.kind) {
        case ParameterKind::Angle:
            return jsonAngle(parameter.value);
        case ParameterKind::Position:
            return jsonPoint(parameter.position);
        default:
            return parameter.value;
    }
}

Json jsonInfo(const Screen& screen, const std::string& unit) {
    IScreenGeometry& geometry = *screen.geometry;
    Json parameters = Json::object();
    for (const Parameter& parameter : screen.parameters)
        parameters.set(parameter.name, jsonParameter(parameter));
    const auto bounds = boundsOf(geometry);
    const SurfaceMeasures surface = surfaceMeasuresOf(geometry);
    return Json::object({{"command", "info"},
                         {"screen", screen.file},
                         {"unit", unit},
                         {"type", geometry.getType()},
                         {"parameters", parameters},
                         {"mesh", screen.mesh ? jsonMesh(screen, surface) : Json()},
                         {"surface", jsonSurface(surface)},
                         {"isValid", geometry.isValid()},
                         {"hasParameterization", geometry.hasParameterization()},
                         {"bounds", bounds ? jsonBounds(*bounds) : Json()},
                         {"size", bounds ? jsonSize(*bounds) : Json()},
                         {"eyePoint", jsonPoint(geometry.getEyepoint())},
                         {"heading", jsonPoint(geometry.getCenterOfScreenHeading())},
                         {"maxAngle", jsonAngle(geometry.getMaxAngleFromHeading())},
                         {"aspectRatio", aspectRatioOf(geometry).value_or(kNaN)},
                         {"digest", hexText(geometry.getUniqueDataHash())}});
}

std::string angleText(double radians, const RoundedNumbers& numbers) {
    return roundedNumberText(radians * kDegreesPerRadian, std::min(numbers.digits, kMaxDegreeDigits)) +
           " degrees, " + numbers.number(radians) + " radians";
}

std::string parameterText(const Parameter& parameter, const RoundedNumbers& numbers) {
    switch (parameter.kind) {
        case ParameterKind::Angle:
            return angleText(parameter.value, numbers);
        case ParameterKind::Position:
            return numbers.position(parameter.position);
        default:
            return numbers.length(parameter.value);
    }
}

std::string boundsText(const Bounds<3>& bounds, const RoundedNumbers& numbers) {
    return numbers.point(bounds.min) + " to " + numbers.position(bounds.max);
}

void addSurfaceLines(const SurfaceMeasures& surface, const RoundedNumbers& numbers, AlignedText& info) {
    if (!surface.extent.isEmpty()) {
        const Point<double, 3> extent = surface.extent.extent();
        info.add("extent", boundsText(surface.extent, numbers));
        info.add("width by height", numbers.number(extent[0]) + " by " + numbers.length(extent[2]) +
                                        ", depth " + numbers.length(extent[1]));
    }
    info.add("area", numbers.length(surface.area) + "^2");
    if (surface.edges)
        info.add("edge lengths", "top " + numbers.length(surface.edges->top) + ", right " +
                                     numbers.length(surface.edges->right) + ", bottom " +
                                     numbers.length(surface.edges->bottom) + ", left " +
                                     numbers.length(surface.edges->left));
}

std::string textInfo(const Screen& screen, const InfoOptions& options) {
    IScreenGeometry& geometry = *screen.geometry;
    const SurfaceMeasures surface = surfaceMeasuresOf(geometry);
    const RoundedNumbers numbers{options.digits, options.unit};
    AlignedText info;
    info.add("file", printable(screen.file));
    info.add("type", geometry.getType());
    for (const Parameter& parameter : screen.parameters)
        info.add(parameter.label, parameterText(parameter, numbers));
    if (screen.mesh) addMeshLines(screen, surface, numbers, info);
    info.add("is valid", geometry.isValid() ? "yes" : "no");
    info.add("has UV mapping", geometry.hasParameterization() ? "yes" : "no");
    addSurfaceLines(surface, numbers, info);
    if (const auto bounds = boundsOf(geometry)) info.add("bounds", boundsText(*bounds, numbers));
    info.add("eye point", numbers.position(geometry.getEyepoint()));
    info.add("heading", numbers.point(geometry.getCenterOfScreenHeading()));
    info.add("max angle", angleText(geometry.getMaxAngleFromHeading(), numbers));
    const auto ratio = aspectRatioOf(geometry);
    info.add("aspect ratio", ratio ? numbers.number(*ratio) : "none");
    info.add("digest", hexText(geometry.getUniqueDataHash()));
    return info.text();
}

std::string objectList(const InfoOptions& options) {
    if (!options.obj.objects.empty())
        throw Error({.found = "found --list-objects with --object", .expected = "one of them"});
    ConsoleObserver observer;
    const std::vector<ObjPart> parts = readObjParts(options.screen, options.maxMemory, observer);
    return options.format == ResultFormat::Json
               ? jsonParts(options.screen, parts).text(JsonLayout::Indented) + "\n"
               : partsText(parts);
}

std::string screenInfo(const InfoOptions& options) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    return options.format == ResultFormat::Json
               ? jsonInfo(screen, options.unit).text(JsonLayout::Indented) + "\n"
               : textInfo(screen, options);
}

void run(const InfoOptions& options) {
    refuseInputAsOutput(options.output, {options.screen});
    requireResultName(options.output, options.format, "txt");
    const std::string text = options.listsObjects ? objectList(options) : screenInfo(options);
    OutputFile output(options.output, {options.screen});
    output.write(text);
    output.finish();
}

}  // namespace

void registerInfoCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "info",
         .summary = "Describe the screen in a file",
         .details = "The extent is the box of the surface itself. The bounds are those that the library "
                    "returns: for a section\nof a sphere, the box of the whole sphere.",
         .example = "quarnscreen info Samples/flat-wall.xml"});
    InfoOptions& options = command.onRun(run);
    addScreenOptions(command, options);
    addNumberOption(command, "--digits", options.digits, {.min = 1, .max = kMaxDigits},
                    "Significant digits of the numbers in the text; JSON has all digits");
    command.flag("--list-objects", options.listsObjects, true,
                 "List the objects and groups of an OBJ file, with their faces and vertices, instead");
}

}  // namespace quarn::tool
