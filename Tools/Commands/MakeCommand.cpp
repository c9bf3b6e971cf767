#include <map>
#include <optional>
#include <string>
#include <utility>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Formats/OutputName.h>
#include <QuarnKit/Formats/ScreenBuilder.h>
#include <QuarnKit/Formats/ScreenWriter.h>
#include <QuarnKit/Measure/PlausibleSize.h>
#include <QuarnKit/Measure/SurfaceMeasures.h>

#include "Base/Diagnostics.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Commands/MakeShapes.h"

namespace quarn::tool {

namespace {

// The options for a screen.
struct MakeOptions : ShapeTexts {
    const Shape* shape = nullptr;
    std::string output = "-";
    std::optional<GridSize> grid;  // a mesh is written if it is given
    VDirection vDirection = VDirection::Downward;
    std::uint64_t maxMemory = defaultMemoryLimit();
};

constexpr int kSizeDigits = 7;

// The first length of the command line as it would be in another unit, as in "--radius 6000mm".
std::string lengthInUnit(const MakeOptions& options, const std::string& unit) {
    for (const ShapeOption& option : options.shape->options) {
        if (!option.isLength() || !options.has(option.name)) continue;
        return option.name + " " + roundedNumberText(options.length(option.name), kSizeDigits) + unit;
    }
    return unit;
}

void warnOfImplausibleSize(const MakeOptions& options, const Screen& screen) {
    const double size = length(surfaceMeasuresOf(*screen.geometry).extent.extent());
    const double meters = size * metersPerUnit(options.unit).value_or(1.0);
    if (isPlausibleSize(meters)) return;
    const auto unit = likelyUnitOf(size);
    writeWarningLine("the screen is " + roundedNumberText(size, kSizeDigits) + " " + options.unit +
                     " across, which is too " + (meters < 1.0 ? "small" : "large") + " for a screen; " +
                     (unit && *unit != options.unit
                          ? "if its lengths are in " + *unit + ", write " + lengthInUnit(options, *unit)
                          : "check the units of its lengths"));
}

void run(const MakeOptions& options) {
    requireOutputName(options.output, options.grid ? std::vector<std::string>{"obj"}
                                                   : std::vector<std::string>{"xml", "obj"});
    const Shape& shape = *options.shape;
    ScreenValues values;
    shape.fill(options, values);
    ConsoleObserver observer;
    const Screen screen{.file = {}, .geometry = buildScreen(shape.screenType, values, observer)};
    warnOfImplausibleSize(options, screen);
    const bool isMesh = options.grid || formatByName(options.output, ScreenFormat::Xml) == ScreenFormat::Obj;
    if (!isMesh && options.vDirection == VDirection::Upward)
        throw Error({.found = "found --v up for the XML file of a screen, in which v runs downward",
                     .expected = "--grid, or an output that ends with .obj"});
    std::string text =
        isMesh ? objTextOf(screen, gridFor(screen, options.grid), options.vDirection, options.maxMemory)
               : xmlTextOf(*screen.geometry);
    if (isMesh) text = verifyGeneratedText(options.output, std::move(text), options.maxMemory, observer);
    OutputFile output(options.output, {});
    output.write(text);
    output.finish();
}

void registerShape(Command& make, const Shape& shape) {
    Command command =
        make.addCommand({.name = shape.name, .summary = shape.description, .example = shape.example});
    MakeOptions& options = command.onRun(run);
    options.shape = &shape;
    std::map<std::string, Option> added;
    for (const ShapeOption& option : shape.options) {
        const auto setText = [&options, name = option.name](const std::string& text) {
            options.texts[name] = text;
        };
        const auto place = added.emplace(
            option.name, command.option(option.name + " " + option.valueName, setText, option.description));
        if (option.isRequired) place.first->second.required();
    }
    if (added.contains("--diameter")) added.at("--diameter").excludes(added.at("--radius"));
    if (added.contains("--arc"))
        added.at("--arc").excludes(added.at("--min-theta")).excludes(added.at("--max-theta"));
    addUnitOption(command, options.unit,
                  "Unit of the lengths in the file, which stores no unit; lengths are converted to it");
    addOutputOption(command, options.output);
    addGridOption(command, options.grid);
    addMemoryOption(command, options.maxMemory);
    addVDirectionOption(command, options.vDirection,
                        "Direction of v in the mesh: down is 0 at the top, up is 0 at the bottom");
}

}  // namespace

void registerMakeCommand(Command& tool) {
    Command make = tool.addCommand({.name = "make",
                                    .summary = "Make the XML file of a screen, or its mesh as OBJ",
                                    .example = "quarnscreen make dome --radius 6m --angle 180deg"});
    make.requireCommand();
    for (const Shape& shape : shapes()) registerShape(make, shape);
}

}  // namespace quarn::tool
