#include "ObjReader.h"

#include <cmath>
#include <new>
#include <sstream>

#include <Common/NodeText.h>
#include <Common/TextConversion.h>
#include <QuarnScreen/ObjLoadException.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

#include "Message.h"
#include "NumberText.h"
#include "ObjReferences.h"
#include "ToolError.h"

namespace quarn {

namespace {

constexpr std::string_view kAxes = "XYZ";

// Axes that are parallel, or none, would give a useless matrix. The last letter of a name counts.
void checkAxes(const ObjFrame& frame, const std::string& file, std::uint64_t line) {
    const auto axisOf = [](const std::string& name) {
        return name.empty() ? std::string_view::npos : kAxes.find(name.back());
    };
    const std::size_t forward = axisOf(frame.forward);
    const std::size_t upward = axisOf(frame.upward);
    if (forward != std::string_view::npos && upward != std::string_view::npos && forward != upward) return;
    throw ToolError{.found = "found the axes " + quotedExcerpt(frame.forward) + " for forward and " +
                             quotedExcerpt(frame.upward) + " for up",
                    .expected = "two different ones of X, Y and Z, such as -Z and Y",
                    .file = file,
                    .line = line};
}

// Runs the load of a text that has been looked through.
template <class Load>
void loadInto(ObjMesh& mesh, Load load) {
    try {
        load();
    } catch (const ObjLoadException&) {
        mesh.source.text.text = mesh.screen->getLoadedFileContents();
        throw badReferenceError(mesh.source.text, mesh.source.contents);
    } catch (const std::bad_alloc&) {
        throw ToolError{.code = ExitCode::SystemFailed,
                        .found = "the memory does not suffice for the mesh",
                        .file = mesh.source.text.name};
    }
    mesh.source.text.text = mesh.screen->getLoadedFileContents();
}

// The older form has no tags, and its text is the OBJ text itself.
constexpr int kLeastChildren = 4;

int countChildren(const xercesc::DOMNode& node) {
    int count = 0;
    for (const auto* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling()) ++count;
    return count;
}

struct ObjElement {
    ObjFrame frame;
    std::string text;
};

ObjElement readElement(const std::string& path, const XmlDocument& document, xercesc::DOMElement& element) {
    ObjElement result;
    if (countChildren(element) < kLeastChildren) {
        if (element.getFirstChild() != nullptr)
            result.text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&element);
        return result;
    }
    for (auto* child = element.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        const std::wstring name = fromXmlText(child->getNodeName());
        if (name == L"AxisForward") result.frame.forward = toUtf8(textContent(*child));
        if (name == L"AxisUpward") result.frame.upward = toUtf8(textContent(*child));
        if (name == L"ScreenString" && child->getFirstChild() != nullptr)
            result.text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(child);
        if (name != L"Scale") continue;
        try {
            result.frame.scale = objScaleFrom("Scale", toUtf8(textContent(*child)));
        } catch (ToolError& error) {
            error.file = path;
            error.line = document.lineOf(*child);
            throw;
        }
    }
    return result;
}

}  // namespace

float objScaleFrom(const std::string& name, const std::string& text) {
    const auto number = parseNumber(text);
    const auto scale = static_cast<float>(number.value_or(0.0));
    if (scale == 0.0F || !std::isfinite(scale))
        throw ToolError{.found = "found " + name + " " + quotedExcerpt(text),
                        .expected = "a number other than 0 that a float holds, such as 0.001"};
    return scale;
}

ObjMesh loadObj(ScreenFile file, const ObjOptions& options, std::uint64_t maxMemory) {
    ObjMesh mesh;
    ObjFrame& frame = mesh.source.frame;
    frame.forward = options.forward.value_or(frame.forward);
    frame.upward = options.upward.value_or(frame.upward);
    frame.scale = options.scale.value_or(frame.scale);
    checkAxes(frame, {}, 0);

    mesh.source.text = joinObjLines(file.path, file.text);
    mesh.source.contents = examineObj(mesh.source.text, frame.scale, maxMemory);
    mesh.screen = std::make_shared<OBJScreen>(fromUtf8(frame.forward), fromUtf8(frame.upward), frame.scale);
    loadInto(mesh, [&] {
        std::istringstream stream(std::move(file.text));
        mesh.screen->deserialize(stream);
    });
    return mesh;
}

ObjMesh loadObjElement(const std::string& path, const XmlDocument& document, xercesc::DOMElement& element,
                       std::uint64_t maxMemory) {
    ObjElement parts = readElement(path, document, element);
    const std::uint64_t line = document.lineOf(element);
    checkAxes(parts.frame, path, line);
    if (parts.text.empty())
        throw ToolError{.found = "found no OBJ text in the ScreenGeometry element",
                        .expected = "<ScreenString> with its base64",
                        .file = path,
                        .line = line};
    ObjMesh mesh;
    mesh.source.frame = parts.frame;
    mesh.source.text = joinObjLines(path + " (OBJ text)", parts.text);
    mesh.source.contents = examineObj(mesh.source.text, parts.frame.scale, maxMemory);
    mesh.screen = std::make_shared<OBJScreen>();
    loadInto(mesh, [&] { mesh.screen->deserialize(&element); });
    return mesh;
}

}  // namespace quarn
