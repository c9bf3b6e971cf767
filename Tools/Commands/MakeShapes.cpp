#include "Commands/MakeShapes.h"

#include <QuarnKit/Formats/Xml/ScreenRules.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "CommandLine/UnitOptions.h"

namespace quarn::tool {

namespace {

constexpr const char* kLength = "LENGTH";
constexpr const char* kAngle = "ANGLE";
constexpr double kFullTurn = 360.0;  // in degrees

const ShapeOption kRadius{"--radius", "Radius", kLength, false};
const ShapeOption kDiameter{"--diameter", "Twice the radius, in place of --radius", kLength, false};
const ShapeOption kCenter{"--center", "Center of the screen, three lengths; default the origin", "X,Y,Z",
                          false};

void setAround(ScreenValues& values, const std::string& min, const std::string& max, const Angle& arc) {
    values.set(min, arc.halved().negated().radians());
    values.set(max, arc.halved().radians());
}

// Sets two limits, such as minTheta and maxTheta by --min-theta and --max-theta. The larger one may
// be first.
void setLimits(const ShapeTexts& options, ScreenValues& values, const std::string& parameter,
               const std::string& option) {
    const double min = options.angle("--min-" + option).radians();
    const double max = options.angle("--max-" + option).radians();
    if (min == max)
        throw options.unexpected("--max-" + option, "an angle other than that of --min-" + option);
    values.set("min" + parameter, min);
    values.set("max" + parameter, max);
}

void fillFlat(const ShapeTexts& options, ScreenValues& values) {
    values.set("width", options.length("--width"));
    values.set("height", options.length("--height"));
}

void fillRound(const ShapeTexts& options, ScreenValues& values) {
    if (!options.has("--radius") && !options.has("--diameter"))
        throw Error({.found = "missing --radius or --diameter"});
    values.set("radius",
               options.has("--radius") ? options.length("--radius") : options.length("--diameter") / 2);
    if (options.has("--center")) values.setCenter(options.position("--center"));
}

void fillCylinder(const ShapeTexts& options, ScreenValues& values) {
    fillRound(options, values);
    values.set("height", options.length("--height"));
    if (options.has("--arc")) {
        setAround(values, "minTheta", "maxTheta", options.angleOfSection("--arc"));
        return;
    }
    if (!options.has("--min-theta") || !options.has("--max-theta"))
        throw Error({.found = "missing --arc, or --min-theta and --max-theta"});
    setLimits(options, values, "Theta", "theta");
}

void fillSphere(const ShapeTexts& options, ScreenValues& values) {
    fillRound(options, values);
    setLimits(options, values, "Theta", "theta");
    setLimits(options, values, "Phi", "phi");
}

void fillDome(const ShapeTexts& options, ScreenValues& values) {
    fillRound(options, values);
    setAround(values, "minTheta", "maxTheta", Angle::degrees(360.0));
    values.set("minPhi", options.angleOfSection("--angle").halved().complement().radians());
    values.set("maxPhi", Angle::degrees(90.0).radians());
}

Angle chordArc(const ShapeTexts& options, const std::string& option) {
    const Angle arc = options.angle(option);
    if (!isValidArc(arc.radians()))
        throw options.unexpected(option, "an angle above 0deg and below 360deg, by at least 1e-9rad");
    return arc;
}

void fillRuled(const ShapeTexts& options, ScreenValues& values) {
    fillFlat(options, values);
    setAround(values, "minTheta", "maxTheta", chordArc(options, "--top-arc"));
    setAround(values, "minPhi", "maxPhi", chordArc(options, "--bottom-arc"));
}

}  // namespace

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
         {kRadius,
          kDiameter,
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
         {kRadius,
          kDiameter,
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
         {kRadius,
          kDiameter,
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

double ShapeTexts::length(const std::string& option) const {
    const double length = lengthFrom(option, texts.at(option), unit);
    if (!(length > 0.0)) throw unexpected(option, "a length above 0");
    refuseOutOfRange(option, length, ParameterKind::Length);
    return length;
}

Angle ShapeTexts::angle(const std::string& option) const {
    const Angle angle = angleFrom(option, texts.at(option));
    refuseOutOfRange(option, angle.radians(), ParameterKind::Angle);
    return angle;
}

Angle ShapeTexts::angleOfSection(const std::string& option) const {
    const Angle angle = angleFrom(option, texts.at(option));
    if (!(angle.radians() > 0.0 && angle.inDegrees() <= kFullTurn))
        throw unexpected(option, "an angle above 0deg, and at most 360deg");
    return angle;
}

Point<double, 3> ShapeTexts::position(const std::string& option) const {
    const Point<double, 3> position = positionFrom(option, texts.at(option), unit);
    for (std::size_t i = 0; i < 3; ++i) refuseOutOfRange(option, position[i], ParameterKind::Position);
    return position;
}

Error ShapeTexts::unexpected(const std::string& option, const std::string& expected) const {
    return unexpectedText(option, texts.at(option), expected);
}

void ShapeTexts::refuseOutOfRange(const std::string& option, double number, ParameterKind kind) const {
    if (const auto expected = expectedInsteadOf(number, kind))
        throw unexpected(option, *expected + (kind == ParameterKind::Angle ? "" : " in " + unit));
}

}  // namespace quarn::tool
