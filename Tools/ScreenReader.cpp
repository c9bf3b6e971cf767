#include "ScreenReader.h"

#include <algorithm>
#include <array>
#include <optional>

#include <Common/NodeText.h>
#include <Common/TextConversion.h>
#include <QuarnScreen/ScreenGeometryFactory.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

#include "Message.h"
#include "NumberText.h"
#include "ScreenRules.h"
#include "StageClock.h"
#include "ToolError.h"
#include "XmlDocument.h"

namespace quarn {

namespace {

// The three numbers of a position. A screen takes what stands between two of them for a word of its own, so
// that "1,2,3" would be (1, 0, 0).
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

// One screen element and the file around it, for errors that name the line.
class ScreenElement {
public:
    ScreenElement(std::string fileName, const XmlDocument& xmlDocument, xercesc::DOMElement& screenElement)
        : file(std::move(fileName)), document(xmlDocument), element(screenElement) {}

    [[nodiscard]] std::string typeName() const;
    [[nodiscard]] std::vector<Parameter> parametersOf(const ScreenType& screenType) const;

private:
    [[nodiscard]] Parameter parameterOf(const ScreenTag& tag) const;
    void readInto(Parameter& parameter, const ScreenTag& tag, const xercesc::DOMNode& child) const;
    [[nodiscard]] ToolError error(const xercesc::DOMNode& node, std::string found,
                                  std::string expected) const {
        return {.found = std::move(found),
                .expected = std::move(expected),
                .file = file,
                .line = document.lineOf(node)};
    }

    std::string file;
    const XmlDocument& document;
    xercesc::DOMElement& element;
};

std::string ScreenElement::typeName() const {
    std::string known = '"' + OBJScreen::type() + '"';
    for (const ScreenType& type : screenTypes()) known += ", \"" + type.name + "\"";

    const std::wstring& name16 = ScreenGeometryXmlHelper::classTypeNodeName();
    const std::basic_string<XMLCh> attribute(name16.begin(), name16.end());  // plain ASCII
    if (!element.hasAttribute(attribute.c_str()))
        throw error(element, "found no ClassType in the ScreenGeometry element", known);
    std::string name = toUtf8(fromXmlText(element.getAttribute(attribute.c_str())));
    if (name == OBJScreen::type() || findScreenType(name) != nullptr) return name;
    throw error(element, "found the ClassType " + quotedExcerpt(name), known);
}

std::vector<Parameter> ScreenElement::parametersOf(const ScreenType& screenType) const {
    std::vector<Parameter> parameters;
    for (const ScreenTag& tag : screenType.tags) parameters.push_back(parameterOf(tag));
    checkRanges(screenType, parameters, file, document.lineOf(element));
    return parameters;
}

Parameter ScreenElement::parameterOf(const ScreenTag& tag) const {
    // The screen takes the last one where a tag is repeated; all of them have to be right.
    Parameter parameter{.name = tag.parameter, .kind = tag.kind, .label = tag.label};
    bool isThere = false;
    for (const auto* child = element.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        if (fromXmlText(child->getNodeName()) != tag.tag) continue;
        readInto(parameter, tag, *child);
        isThere = true;
    }
    const std::string name = toUtf8(tag.tag);
    if (!isThere)
        throw error(element, "found no " + name + " in the ScreenGeometry element", "<" + name + ">");
    return parameter;
}

void ScreenElement::readInto(Parameter& parameter, const ScreenTag& tag,
                             const xercesc::DOMNode& child) const {
    const std::string text(trimmed(toUtf8(textContent(child))));
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
    warnIfZero(parameter, file, document.lineOf(child));
}

Screen loadMesh(ObjSource source, std::uint64_t maxMemory, const std::function<void(ObjSource&)>& prepare,
                StageClock& clock) {
    if (prepare) prepare(source);
    const std::string file = source.file;
    ObjMesh mesh = loadObj(std::move(source), maxMemory, clock);
    return {.file = file, .geometry = std::move(mesh.screen), .mesh = std::move(mesh.source)};
}

void refuseObjOptions(const ObjOptions& options, const std::string& path) {
    if (options.any())
        throw ToolError{.found = "found --forward, --up or --scale for a screen from XML",
                        .expected = "them with an OBJ file only",
                        .file = path};
}

void warnOfFurtherScreens(const std::string& path, const XmlDocument& document,
                          const std::vector<xercesc::DOMElement*>& elements) {
    if (elements.size() > 1)
        writeWarningLine(
            atPlace(path, document.lineOf(*elements[1]),
                    "found " + std::to_string(elements.size()) + " screens, only the first is read"));
}

}  // namespace

Screen readScreen(const std::string& path, std::uint64_t maxMemory, const ObjOptions& objOptions,
                  const std::function<void(ObjSource&)>& prepare) {
    StageClock clock;
    clock.enter("reading " + path);
    ScreenFile file = readScreenFile(path, maxMemory);
    if (file.format == ScreenFormat::Obj)
        return loadMesh(objSourceOf(std::move(file), objOptions), maxMemory, prepare, clock);
    refuseObjOptions(objOptions, path);

    const XmlDocument document(path, file.text, maxMemory);
    const auto elements = document.elementsNamed(ScreenGeometryXmlHelper::rootNodeName());
    if (elements.empty())
        throw ToolError{.found = "found no screen", .expected = "a ScreenGeometry element", .file = path};

    const ScreenElement element(path, document, *elements.front());
    const std::string type = element.typeName();
    if (type == OBJScreen::type()) {
        warnOfFurtherScreens(path, document, elements);
        return loadMesh(objSourceOf(path, document, *elements.front()), maxMemory, prepare, clock);
    }
    Screen screen{.file = path,
                  .geometry = ScreenGeometryFactory::createScreenGeometry(type),
                  .parameters = element.parametersOf(*findScreenType(type))};
    warnOfFurtherScreens(path, document, elements);
    screen.geometry->deserialize(elements.front());
    return screen;
}

}  // namespace quarn
