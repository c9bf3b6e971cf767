#include <map>
#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Formats/OutputName.h>
#include <QuarnKit/Formats/ScreenBuilder.h>
#include <QuarnKit/Formats/ScreenWriter.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "CommandLine/UnitOptions.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

constexpr const char* kLength = "LENGTH";
constexpr const char* kAngle = "ANGLE";

struct Shape;

// The options for a screen.
class MakeOptions {
public:
    const Shape* shape = nullptr;
    std::string unit = "m";
    std::string output = "-";
    std::optional<GridSize> grid = {};              // a mesh is written if it is given
    std::map<std::string, std::string> texts = {};  // by the name of the option

    [[nodiscard]] bool has(const std::string& option) const { return texts.contains(option); }
    [[nodiscard]] double length(const std::string& option) const {
        return lengthFrom(option, texts.at(option), unit);
    }
    [[nodiscard]] Angle angle(const std::string& option) const { return angleFrom(option, texts.at(option)); }
    [[nodiscard]] Point<double, 3> position(const std::string& option) const {
        return positionFrom(option, texts.at(option), unit);
    }
};

struct ShapeOption {
    std::string name;
    std::string description;
    const char* valueName = kLength;
    bool isRequired = true;
};

// A kind of screen: its options, and their conversion to the parameters of the screen.
struct Shape {
    std::string name;
    std::string description;
    std::string example;
    std::string screenType;
    std::vector<ShapeOption> options;
    void (*fill)(const MakeOptions& options, ScreenValues& values);
};

const ShapeOption kCenter{"--center", "Center of the screen, three lengths; default the origin", "X,Y,Z",
                          false};

void setAround(ScreenValues& values, const std::string& min, const std::string& max, const Angle& arc) {
    values.set(min, arc.halved().negated().radians());
    values.set(max, arc.halved().radians());
}

void fillFlat(const MakeOptions& options, ScreenValues& values) {
    values.set("width", options.length("--width"));
    values.set("height", options.length("--height"));
}

void fillRound(const MakeOptions& options, ScreenValues& values) {
    values.set("radius", options.length("--radius"));
    if (options.has("--center")) values.setCenter(options.position("--center"));
}

void fillCylinder(const MakeOptions& options, ScreenValues& values) {
    fillRound(options, values);
    values.set("height", options.length("--height"));
    if (options.has("--arc")) {
        setAround(values, "minTheta", "maxTheta", options.angle("--arc"));
        return;
    }
    if (!options.has("--min-theta") || !options.has("--max-theta"))
        throw Error({.found = "missing --arc, or --min-theta and --max-theta"});
    values.set("minTheta", options.angle("--min-theta").radians());
    values.set("maxTheta", options.angle("--max-theta").radians());
}

void fillSphere(const MakeOptions& options, ScreenValues& values) {
    fillRound(options, values);
    values.set("minTheta", options.angle("--min-theta").radians());
    values.set("maxTheta", options.angle("--max-theta").radians());
    values.set("minPhi", options.angle("--min-phi").radians());
    values.set("maxPhi", options.angle("--max-phi").radians());
}

void fillDome(const MakeOptions& options, ScreenValues& values) {
    fillRound(options, values);
    setAround(values, "minTheta", "maxTheta", Angle::degrees(360.0));
    const double zenith = Angle::degrees(90.0).radians();
    const double edge = options.angle("--angle").halved().complement().radians();
    if (!(edge >= -zenith && edge <= zenith))
        throw unexpectedText("--angle", options.texts.at("--angle"), "an angle from 0deg to 360deg");
    values.set("minPhi", edge);
    values.set("maxPhi", zenith);
}

void fillRuled(const MakeOptions& options, ScreenValues& values) {
    fillFlat(options, values);
    setAround(values, "minTheta", "maxTheta", options.angle("--top-arc"));
    setAround(values, "minPhi", "maxPhi", options.angle("--bottom-arc"));
}

const std::vector<Shape>& shapes() {
    static const std::vector<Shape> all = {
        {"flat",
         "A rectangle",
         "quarnscreen make flat --width 4m --height 3m",
         FlatScreen::type(),
         {{"--width", "Width"}, {"--height", "Height"}},
         fillFlat},
        {"cylinder",
         "A section of an upright cylinder",
         "quarnscreen make cylinder --radius 3m --arc 200deg --height 2.5m",
         CylinderScreen::type(),
         {{"--radius", "Radius"},
          {"--height", "Height"},
          {"--arc", "Azimuth from edge to edge, half of it to each side of +Y", kAngle, false},
          {"--min-theta", "Azimuth of the edge u = 0, from +Y towards +X", kAngle, false},
          {"--max-theta", "Azimuth of the edge u = 1", kAngle, false},
          kCenter},
         fillCylinder},
        {"sphere",
         "A section of a sphere",
         "quarnscreen make sphere --radius 3m --min-theta -60deg --max-theta 60deg --min-phi -20deg "
         "--max-phi 40deg",
         SphericalScreen::type(),
         {{"--radius", "Radius"},
          {"--min-theta", "Azimuth of the edge u = 0, from +Y towards +X", kAngle},
          {"--max-theta", "Azimuth of the edge u = 1", kAngle},
          {"--min-phi", "Elevation of the bottom edge", kAngle},
          {"--max-phi", "Elevation of the top edge", kAngle},
          kCenter},
         fillSphere},
        {"dome",
         "The part of a sphere around its highest point",
         "quarnscreen make dome --radius 6m --angle 180deg",
         SphericalScreen::type(),
         {{"--radius", "Radius"},
          {"--angle", "Angle from edge to edge over that point; 180deg is half a sphere", kAngle},
          kCenter},
         fillDome},
        {"ruled",
         "Straight lines between a top arc and a bottom arc",
         "quarnscreen make ruled --width 4m --height 2.5m --top-arc 120deg --bottom-arc 60deg",
         RuledSurfaceScreen::type(),
         {{"--width", "Distance between the sides, the chord of both arcs"},
          {"--height", "Height"},
          {"--top-arc", "Angle of the top arc, more than 0 and less than 360deg", kAngle},
          {"--bottom-arc", "Angle of the bottom arc, same range", kAngle}},
         fillRuled},
    };
    return all;
}

void run(const MakeOptions& options) {
    requireOutputName(options.output, options.grid ? std::vector<std::string>{"obj"}
                                                   : std::vector<std::string>{"xml", "obj"});
    const Shape& shape = *options.shape;
    ScreenValues values;
    shape.fill(options, values);
    ConsoleObserver observer;
    const Screen screen{.file = {}, .geometry = buildScreen(shape.screenType, values, observer)};
    const bool isMesh = options.grid || formatByName(options.output, ScreenFormat::Xml) == ScreenFormat::Obj;
    const std::uint64_t maxMemory = defaultMemoryLimit();
    const std::string text = isMesh ? objTextOf(screen, options.grid.value_or(GridSize()), maxMemory)
                                    : xmlTextOf(*screen.geometry);
    if (isMesh) noteMeshStatus(options.output, screen, text, maxMemory, observer);
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
    if (added.contains("--arc"))
        added.at("--arc").excludes(added.at("--min-theta")).excludes(added.at("--max-theta"));
    addUnitOption(command, options.unit,
                  "Unit of the lengths in the file, which stores no unit; lengths are converted to it");
    addOutputOption(command, options.output);
    addGridOption(command, options.grid);
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
