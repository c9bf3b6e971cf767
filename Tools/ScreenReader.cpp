#include "ScreenReader.h"

#include <QuarnScreen/ScreenGeometryFactory.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

#include "Message.h"
#include "ScreenElement.h"
#include "StageClock.h"
#include "StlReader.h"
#include "ToolError.h"
#include "XmlDocument.h"

namespace quarn {

namespace {

Screen loadMesh(ObjSource source, std::uint64_t maxMemory, const std::function<void(ObjSource&)>& prepare,
                StageClock& clock) {
    if (prepare) prepare(source);
    const std::string file = source.file;
    ObjMesh mesh = loadObj(std::move(source), maxMemory, clock);
    return {.file = file, .geometry = std::move(mesh.screen), .mesh = std::move(mesh.source)};
}

Screen screenOf(const std::string& path, StlMesh mesh) {
    Screen screen{.file = path, .geometry = std::move(mesh.screen), .mesh = MeshSource()};
    screen.mesh->contents.triangles = mesh.triangleCount;
    return screen;
}

// The factory does not know the type. Intended: bytes above 0x7F do not survive in the element, so that hardly a binary
// file comes back whole.
Screen screenOfStlElement(const std::string& path, const XmlDocument& document, xercesc::DOMElement& element,
                          std::uint64_t maxMemory, const std::function<void(ObjSource&)>& prepare,
                          StageClock& clock) {
    const std::string name = path + " (STL text)";
    if (element.getFirstChild() == nullptr)
        throw ToolError{.found = "found no STL text in the ScreenGeometry element",
                        .expected = "its base64",
                        .file = path,
                        .line = document.lineOf(element)};
    std::string text = ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(&element);
    if (!prepare) return screenOf(path, loadStl(path, name, std::move(text), maxMemory));
    ScreenFile file{.path = name, .text = std::move(text), .format = ScreenFormat::Stl};
    return loadMesh(objSourceOf(std::move(file), {}), maxMemory, prepare, clock);
}

void refuseObjOptions(const ObjOptions& options, const std::string& path) {
    if (options.any())
        throw ToolError{.found = "found --forward, --up or --scale for a screen that is no OBJ file",
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
    if (file.format == ScreenFormat::Obj || (file.format == ScreenFormat::Stl && prepare))
        return loadMesh(objSourceOf(std::move(file), objOptions), maxMemory, prepare, clock);
    refuseObjOptions(objOptions, path);
    if (file.format == ScreenFormat::Stl)
        return screenOf(path, loadStl(path, path, std::move(file.text), maxMemory));

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
    if (type == STLScreen::type()) {
        warnOfFurtherScreens(path, document, elements);
        return screenOfStlElement(path, document, *elements.front(), maxMemory, prepare, clock);
    }
    Screen screen{.file = path,
                  .geometry = ScreenGeometryFactory::createScreenGeometry(type),
                  .parameters = element.parametersOf(*findScreenType(type))};
    warnOfFurtherScreens(path, document, elements);
    screen.geometry->deserialize(elements.front());
    return screen;
}

void warnWithoutUV(const Screen& screen) {
    if (screen.mesh && !screen.geometry->hasParameterization())
        writeWarningLine(atPlace(screen.file, 0, "the mesh has no UV to map by, see quarnscreen info"));
}

}  // namespace quarn
