#include "ScreenReader.h"

#include <variant>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Formats/Obj/CoordinateRounding.h>
#include <QuarnKit/Formats/Obj/Edit/ObjTextEdit.h>
#include <QuarnKit/Formats/Obj/Parts/ObjSelection.h>
#include <QuarnKit/Formats/Stl/StlLoader.h>
#include <QuarnKit/Formats/Xml/ScreenElement.h>
#include <QuarnKit/Mesh/TriangleCorners.h>
#include <QuarnScreen/ScreenGeometryFactory.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace quarn {

namespace {

// Only the numbers of an OBJ text may be more exact than those of the screen.
void warnOfRounding(const Bounds<3>& bounds, const std::string& file, ScreenFormat format,
                    Observer& observer) {
    if (!isFinite(bounds.min) || !isFinite(bounds.max)) return;
    const CoordinateRounding rounding = roundingOf(bounds);
    if (!rounding.isLarge()) return;
    const bool canMove = format == ScreenFormat::Obj;
    observer.notify({.level = NoticeLevel::Warning,
                     .text = roundingText(rounding, {}),
                     .file = file,
                     .remedy = {.kind = canMove ? RemedyKind::MoveOrigin : RemedyKind::None, .file = file}});
}

Bounds<3> storedBoundsOf(const IScreenGeometry& geometry) {
    Bounds<3> bounds;
    geometry.getBounds(&bounds.min, &bounds.max);
    return bounds;
}

// A text that was edited and repaired as the options demand.
struct PreparedText {
    MeshText text;
    ScreenFormat fileFormat;
    std::vector<MeshRepair> repairs = {};
};

PreparedText prepareText(MeshText text, const ObjOptions& objOptions,
                         const std::function<void(ObjSource&)>& prepare, Observer& observer) {
    const ScreenFormat fileFormat = text.format;
    PreparedText prepared{.text = std::move(text), .fileFormat = fileFormat};
    ObjSource& source = prepared.text.source;
    // The numbers of an OBJ text are edited before a repair may round them.
    if (prepared.fileFormat == ScreenFormat::Obj) editObjText(source, objOptions);
    if (objOptions.repair == RepairPolicy::Repair) prepared.repairs = repairMesh(prepared.text, observer);
    if (prepared.text.format == ScreenFormat::Stl) return prepared;
    if (prepared.fileFormat == ScreenFormat::Stl) editObjText(source, objOptions);
    if (prepare) prepare(source);
    return prepared;
}

Screen buildStlScreen(ObjSource source, std::uint64_t maxMemory, Observer& observer) {
    const std::string file = source.file;
    StlMesh mesh = loadStl(std::move(source), maxMemory);
    Screen screen{.file = file, .geometry = std::move(mesh.screen), .mesh = MeshSource()};
    screen.mesh->counts.triangles = mesh.triangleCount;
    warnOfRounding(storedBoundsOf(*screen.geometry), file, ScreenFormat::Stl, observer);
    return screen;
}

Screen buildScreenOf(PreparedText prepared, std::uint64_t maxMemory, Observer& observer) {
    ObjSource& source = prepared.text.source;
    if (prepared.text.format == ScreenFormat::Stl)
        return buildStlScreen(std::move(source), maxMemory, observer);
    const std::string file = source.file;
    const std::string name = source.name;
    ObjMesh mesh = loadObj(std::move(source), maxMemory, observer);
    noteRepairs(name, prepared.repairs, observer);
    Screen screen{.file = file,
                  .geometry = std::move(mesh.screen),
                  .mesh = std::move(mesh.source),
                  .repairs = std::move(prepared.repairs)};
    warnOfRounding(storedBoundsOf(*screen.geometry), file, prepared.fileFormat, observer);
    return screen;
}

UnindexedScreen buildUnindexedScreenOf(PreparedText prepared, std::uint64_t maxMemory, Observer& observer) {
    ObjSource& source = prepared.text.source;
    if (prepared.text.format == ScreenFormat::Stl)
        return buildStlScreen(std::move(source), maxMemory, observer);
    const std::string file = source.file;
    const std::string name = source.name;
    UnindexedMesh mesh = loadUnindexedObj(std::move(source), maxMemory, observer);
    noteRepairs(name, prepared.repairs, observer);
    warnOfRounding(boundsOf(mesh.triangles), file, prepared.fileFormat, observer);
    return mesh;
}

void refuseFrame(const ObjOptions& options, const std::string& path) {
    if (options.changesFrame())
        throw Error({.found = "found axes or a scale for a screen that is not an OBJ file",
                     .expected = "them with an OBJ file only",
                     .file = path});
}

void refuseObjects(const ObjOptions& options, const std::string& path) {
    if (!options.objects.empty())
        throw Error({.found = "found the name of an object for a screen that is not an OBJ mesh",
                     .expected = "it with an OBJ mesh only",
                     .file = path});
}

void warnOfFurtherScreens(const std::string& path, const XmlDocument& document,
                          const std::vector<xercesc::DOMElement*>& elements, Observer& observer) {
    if (elements.size() > 1)
        observer.notify(
            {.level = NoticeLevel::Warning,
             .text = "found " + std::to_string(elements.size()) + " screens, only the first is read",
             .file = path,
             .line = document.lineOf(*elements[1])});
}

// Returns the whole text of a mesh, or an analytic screen.
std::variant<MeshText, Screen> readWholeContents(ScreenFile file, std::uint64_t maxMemory,
                                                 const ObjOptions& objOptions, Observer& observer) {
    const std::string path = file.path;
    if (file.format != ScreenFormat::Xml) return meshTextOf(std::move(file), objOptions);
    refuseFrame(objOptions, path);
    const XmlDocument document(path, file.text, maxMemory);
    const auto elements = document.elementsNamed(ScreenGeometryXmlHelper::rootNodeName());
    if (elements.empty())
        throw Error({.found = "found no screen", .expected = "a ScreenGeometry element", .file = path});

    const ScreenElement element(path, document, *elements.front(), observer);
    const std::string type = element.typeName();
    warnOfFurtherScreens(path, document, elements, observer);
    if (type == OBJScreen::type()) return objTextOfElement(path, document, *elements.front());
    // The factory does not know this type.
    if (type == STLScreen::type()) return stlTextOfElement(path, document, *elements.front());
    Screen screen{.file = path,
                  .geometry = ScreenGeometryFactory::createScreenGeometry(type),
                  .parameters = element.parametersOf(*findScreenType(type))};
    screen.geometry->deserialize(elements.front());
    return screen;
}

// Returns the text of a mesh or of its objects, or an analytic screen.
std::variant<MeshText, Screen> readContents(ScreenFile file, std::uint64_t maxMemory,
                                            const ObjOptions& objOptions, Observer& observer) {
    const std::string path = file.path;
    auto contents = readWholeContents(std::move(file), maxMemory, objOptions, observer);
    auto* const text = std::get_if<MeshText>(&contents);
    if (text != nullptr && text->format == ScreenFormat::Obj)
        selectObjParts(text->source, objOptions.objects);
    else
        refuseObjects(objOptions, path);
    return contents;
}

// Returns the contents of a file from which a screen is built.
std::variant<MeshText, Screen> readFile(const std::string& path, std::uint64_t maxMemory,
                                        const ObjOptions& objOptions, Observer& observer) {
    observer.setStage("reading " + path);
    ScreenFile file = readScreenFile(path, maxMemory);
    const bool isRepaired = objOptions.repair == RepairPolicy::Repair;
    if (file.format == ScreenFormat::Stl && !isRepaired) refuseFrame(objOptions, path);
    return readContents(std::move(file), maxMemory, objOptions, observer);
}

}  // namespace

std::optional<MeshText> readMeshText(const std::string& path, std::uint64_t maxMemory,
                                     const ObjOptions& objOptions, Observer& observer) {
    auto contents = readContents(readScreenFile(path, maxMemory), maxMemory, objOptions, observer);
    auto* const text = std::get_if<MeshText>(&contents);
    return text == nullptr ? std::nullopt : std::optional(std::move(*text));
}

Screen readScreen(const std::string& path, std::uint64_t maxMemory, const ObjOptions& objOptions,
                  Observer& observer, const std::function<void(ObjSource&)>& prepare) {
    auto contents = readFile(path, maxMemory, objOptions, observer);
    if (auto* const screen = std::get_if<Screen>(&contents)) return std::move(*screen);
    return buildScreenOf(prepareText(std::move(std::get<MeshText>(contents)), objOptions, prepare, observer),
                         maxMemory, observer);
}

UnindexedScreen readUnindexedScreen(const std::string& path, std::uint64_t maxMemory,
                                    const ObjOptions& objOptions, Observer& observer,
                                    const std::function<void(ObjSource&)>& prepare) {
    auto contents = readFile(path, maxMemory, objOptions, observer);
    if (auto* const screen = std::get_if<Screen>(&contents)) return std::move(*screen);
    return buildUnindexedScreenOf(
        prepareText(std::move(std::get<MeshText>(contents)), objOptions, prepare, observer), maxMemory,
        observer);
}

}  // namespace quarn
