#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/ScreenUtils.h>

#include "Base/Diagnostics.h"
#include "Base/Json.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Reports/MeshInfo.h"
#include "Rows/QueryResults.h"
#include "Rows/ResultWriter.h"

namespace quarn::tool {

namespace {

// A file contains 16 digits of an angle in radians, so a 16th digit of its degrees would be noise.
constexpr int kDegreeDigits = 15;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Bounds {
    Point<double, 3> min;
    Point<double, 3> max;
};

// Screens without bounds do not change the positions.
std::optional<Bounds> boundsOf(const IScreenGeometry& geometry) {
    Bounds bounds{{kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN}};
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

Json jsonBounds(const Bounds& bounds) {
    return Json::object({{"min", jsonPoint(bounds.min)}, {"max", jsonPoint(bounds.max)}});
}

// Width and height as a viewer sees them.
Json jsonSize(const Bounds& bounds) {
    return Json::object(
        {{"width", bounds.max[0] - bounds.min[0]}, {"height", bounds.max[2] - bounds.min[2]}});
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
    return Json::object({{"command", "info"},
                         {"screen", screen.file},
                         {"unit", unit},
                         {"type", geometry.getType()},
                         {"parameters", parameters},
                         {"mesh", screen.mesh ? jsonMesh(screen) : Json()},
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

// Lines of "key: value" with aligned values.
class AlignedText {
public:
    void add(const std::string& key, const std::string& value) { lines.emplace_back(key, value); }
    [[nodiscard]] std::string text() const {
        std::size_t width = 0;
        for (const auto& [key, value] : lines) width = std::max(width, key.size());
        std::string result;
        for (const auto& [key, value] : lines) {
            result += key;
            result += ':';
            result.append(width - key.size() + 1, ' ');
            result += value;
            result += '\n';
        }
        return result;
    }

private:
    std::vector<std::pair<std::string, std::string>> lines;
};

std::string pointText(const Point<double, 3>& point) {
    return "(" + numberText(point[0]) + ", " + numberText(point[1]) + ", " + numberText(point[2]) + ")";
}

std::string angleText(double radians) {
    return roundedNumberText(radians * kDegreesPerRadian, kDegreeDigits) + " degrees, " +
           numberText(radians) + " radians";
}

std::string parameterText(const Parameter& parameter, const std::string& unit) {
    switch (parameter.kind) {
        case ParameterKind::Angle:
            return angleText(parameter.value);
        case ParameterKind::Position:
            return pointText(parameter.position) + " " + unit;
        default:
            return numberText(parameter.value) + " " + unit;
    }
}

std::string textInfo(const Screen& screen, const std::string& unit) {
    IScreenGeometry& geometry = *screen.geometry;
    AlignedText info;
    info.add("file", printable(screen.file));
    info.add("type", geometry.getType());
    for (const Parameter& parameter : screen.parameters)
        info.add(parameter.label, parameterText(parameter, unit));
    if (screen.mesh)
        for (const auto& [label, text] : meshLines(screen, unit)) info.add(label, text);
    info.add("is valid", geometry.isValid() ? "yes" : "no");
    info.add("has UV mapping", geometry.hasParameterization() ? "yes" : "no");
    if (const auto bounds = boundsOf(geometry)) {
        info.add("bounds", pointText(bounds->min) + " to " + pointText(bounds->max) + " " + unit);
        info.add("width by height", numberText(bounds->max[0] - bounds->min[0]) + " by " +
                                        numberText(bounds->max[2] - bounds->min[2]) + " " + unit);
    }
    info.add("eye point", pointText(geometry.getEyepoint()) + " " + unit);
    info.add("heading", pointText(geometry.getCenterOfScreenHeading()));
    info.add("max angle", angleText(geometry.getMaxAngleFromHeading()));
    const auto ratio = aspectRatioOf(geometry);
    info.add("aspect ratio", ratio ? numberText(*ratio) : "none");
    info.add("digest", hexText(geometry.getUniqueDataHash()));
    return info.text();
}

void run(const ScreenOptions& options) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    OutputFile output(options.output, {options.screen});
    requireResultName(options.output, options.format, "txt");
    output.write(options.format == ResultFormat::Json
                     ? jsonInfo(screen, options.unit).text(JsonLayout::Indented) + "\n"
                     : textInfo(screen, options.unit));
    output.finish();
}

}  // namespace

void registerInfoCommand(Command& tool) {
    Command command = tool.addCommand({.name = "info",
                                       .summary = "Describe the screen in a file",
                                       .example = "quarnscreen info Samples/flat-wall.xml"});
    addScreenOptions(command, command.onRun(run));
}

}  // namespace quarn::tool
