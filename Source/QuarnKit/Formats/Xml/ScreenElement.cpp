#include "ScreenElement.h"

#include <algorithm>
#include <array>
#include <optional>

#include <Common/Detail/NodeText.h>
#include <Common/TextConversion.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/STLScreen.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

#include "ScreenRules.h"

namespace quarn {

namespace {

// Returns the three numbers of a position. A screen reads "1,2,3" as (1, 0, 0), since it splits at
// white space only.
std::optional<std::array<double, 3>> parsePosition(std::string_view text) {
    std::array<double, 3> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t length = i + 1 < numbers.size() ? text.find(',') : text.size();
        if (length == std::string_view::npos) return std::nullopt;
        const std::string_view cell = text.substr(0, length);
        const auto number = parseNumber(cell);
        const bool isApart = i == 0 || trimmed(cell.substr(0, 1)).empty();
        if (!number || !isApart) return std::nullopt;
        numbers.at(i) = *number;
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return numbers;
}

}  // namespace

std::string ScreenElement::typeName() const {
    std::string known = '"' + OBJScreen::type() + "\", \"" + STLScreen::type() + '"';
    for (const ScreenType& type : screenTypes()) known += ", \"" + type.name + "\"";

    const std::wstring& name16 = ScreenGeometryXmlHelper::classTypeNodeName();
    const std::basic_string<XMLCh> attribute(name16.begin(), name16.end());  // plain ASCII
    if (!element.hasAttribute(attribute.c_str()))
        throw error(element, "found no ClassType in the ScreenGeometry element", known);
    std::string name = toUtf8(detail::fromXmlText(element.getAttribute(attribute.c_str())));
    if (name == OBJScreen::type() || name == STLScreen::type() || findScreenType(name) != nullptr)
        return name;
    throw error(element, "found the ClassType " + quotedExcerpt(name), known);
}

std::vector<Parameter> ScreenElement::parametersOf(const ScreenType& screenType) const {
    std::vector<Parameter> parameters;
    for (const ScreenTag& tag : screenType.tags) parameters.push_back(parameterOf(tag));
    checkRanges(screenType, parameters, file, document.lineOf(element), observer);
    return parameters;
}

Parameter ScreenElement::parameterOf(const ScreenTag& tag) const {
    // The screen uses the last one of repeated tags; all of them have to be valid.
    Parameter parameter{.name = tag.parameter, .kind = tag.kind, .label = tag.label};
    bool exists = false;
    for (const auto* child = element.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        if (detail::fromXmlText(child->getNodeName()) != tag.tag) continue;
        readInto(parameter, tag, *child);
        exists = true;
    }
    const std::string name = toUtf8(tag.tag);
    if (!exists)
        throw error(element, "found no " + name + " in the ScreenGeometry element", "<" + name + ">");
    return parameter;
}

void ScreenElement::readInto(Parameter& parameter, const ScreenTag& tag,
                             const xercesc::DOMNode& child) const {
    const std::string text(trimmed(toUtf8(detail::textContent(child))));
    const std::string found = "found " + quotedExcerpt(text) + " in " + toUtf8(tag.tag);
    const auto check = [&](double number) {
        if (const auto expected = expectedInsteadOf(number, tag.kind)) throw error(child, found, *expected);
    };
    if (tag.kind == ParameterKind::Position) {
        const auto numbers = parsePosition(text);
        if (!numbers) throw error(child, found, R"(three numbers such as "0, 1.5, -2")");
        parameter.position = {numbers->at(0), numbers->at(1), numbers->at(2)};
        for (const double number : *numbers) check(number);
        return;
    }
    const auto number = parseNumber(text);
    if (!number) throw error(child, found, "a number");
    parameter.value = *number;
    check(parameter.value);
    warnIfZero(parameter, file, document.lineOf(child), observer);
}

}  // namespace quarn
