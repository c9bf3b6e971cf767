#include "CommandLine/MeshEdit.h"

#include <utility>
#include <variant>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Formats/Obj/MeshDocument.h>
#include <QuarnKit/Formats/ScreenWriter.h>

#include "Base/ScreenInput.h"

namespace quarn::tool {

void addMeshEditOptions(Command& command, MeshEditOptions& options) {
    command.argument("FILE FILE", options.input, "OBJ or STL file, or XML file of a mesh").required();
    addOutputOption(
        command, options.output,
        "File to write, replaced atomically: XML if its name ends with .xml, otherwise OBJ; - is the "
        "standard output");
    addObjectOption(command, options.obj);
    addRepairFlag(command, {&options.obj});
    addUnitOption(command, options.unit,
                  "Unit of the lengths in the file, to which all others are converted");
    addMemoryOption(command, options.maxMemory);
}

bool writesXml(const MeshEditOptions& options) {
    return formatByName(options.output, ScreenFormat::Obj) == ScreenFormat::Xml;
}

MeshScreen& meshOf(const Screen& screen) {
    auto* mesh = dynamic_cast<MeshScreen*>(screen.geometry.get());
    if (mesh == nullptr)
        throw Error({.found = "found an analytic screen, " + screen.geometry->getType(),
                     .expected = "a mesh",
                     .file = screen.file,
                     .remedy = {.kind = RemedyKind::ConvertToObj, .file = screen.file}});
    return *mesh;
}

TriangleMesh readTriangles(const MeshEditOptions& options) {
    UnindexedScreen input = openUnindexedScreen(options.input, options.maxMemory, options.obj);
    if (auto* const mesh = std::get_if<UnindexedMesh>(&input))
        return {.triangles = std::move(mesh->triangles), .hasUV = mesh->hasUV()};
    const MeshScreen& screen = meshOf(std::get<Screen>(input));
    TriangleMesh mesh{.triangles = {}, .hasUV = screen.hasParameterization()};
    screen.getTesselation(mesh.triangles);
    return mesh;
}

void writeMesh(std::vector<Triangle> triangles, const std::string& comment, const MeshEditOptions& options) {
    OutputFile output(options.output, {options.input});
    MeshDocument mesh = meshDocumentOf(triangles);
    triangles = {};
    std::string text = objTextOf(std::move(mesh), comment);
    ConsoleObserver observer;
    if (writesXml(options))
        output.write(
            xmlTextOf(*loadGeneratedText(options.output, std::move(text), options.maxMemory, observer)));
    else
        output.write(verifyGeneratedText(options.output, std::move(text), options.maxMemory, observer));
    output.finish();
}

}  // namespace quarn::tool
