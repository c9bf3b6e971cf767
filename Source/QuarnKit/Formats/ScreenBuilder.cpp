#include "ScreenBuilder.h"

#include <vector>

#include <Common/TextConversion.h>
#include <Common/XmlHelper.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/Xml/ScreenRules.h>
#include <QuarnKit/Formats/Xml/ScreenTags.h>
#include <QuarnScreen/ScreenGeometryFactory.h>

namespace quarn {

namespace {

// Returns the number that is read from a file, which stores 16 digits. Writing it again changes
// nothing more.
double asInFile(double number) {
    return parseNumber(toUtf8(XmlHelper::format(L"%.15e", number))).value_or(number);
}

ScreenValues asInFile(const ScreenType& type, const ScreenValues& values) {
    ScreenValues stored;
    for (const ScreenTag& tag : type.tags) stored.set(tag.parameter, asInFile(values.valueOf(tag.parameter)));
    const Point<double, 3> center = values.getCenter();
    stored.setCenter({asInFile(center[0]), asInFile(center[1]), asInFile(center[2])});
    return stored;
}

void check(double number, const ScreenTag& tag) {
    if (const auto expected = expectedInsteadOf(number, tag.kind))
        throw Error({.found = "found the " + tag.label + " " + numberText(number), .expected = *expected});
}

void check(const ScreenType& type, const ScreenValues& values, Observer& observer) {
    std::vector<Parameter> parameters;
    for (const ScreenTag& tag : type.tags) {
        const Parameter parameter{.name = tag.parameter,
                                  .value = values.valueOf(tag.parameter),
                                  .kind = tag.kind,
                                  .position = values.getCenter(),
                                  .label = tag.label};
        if (tag.kind == ParameterKind::Position)
            for (std::size_t i = 0; i < 3; ++i) check(parameter.position[i], tag);
        else
            check(parameter.value, tag);
        warnIfZero(parameter, "", 0, observer);
        parameters.push_back(parameter);
    }
    checkRanges(type, parameters, "", 0, observer);
}

}  // namespace

double ScreenValues::valueOf(const std::string& parameter) const {
    const auto number = numbers.find(parameter);
    return number == numbers.end() ? 0.0 : number->second;
}

std::shared_ptr<IScreenGeometry> buildScreen(const std::string& typeName, const ScreenValues& values,
                                             Observer& observer) {
    const ScreenType& type = *findScreenType(typeName);
    ScreenValues stored = asInFile(type, values);
    check(type, stored, observer);
    auto screen = ScreenGeometryFactory::createScreenGeometry(typeName);
    screen->updateGeometry(&stored);
    return screen;
}

}  // namespace quarn
