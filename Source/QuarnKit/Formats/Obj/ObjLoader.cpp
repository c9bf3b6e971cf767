#include "ObjLoader.h"

#include <new>
#include <sstream>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnScreen/ObjLoadException.h>

#include "Base/ShellQuote.h"
#include "Base/ToolError.h"
#include "ObjReferences.h"
#include "ObjRepairer.h"
#include "UvIndexLimit.h"

namespace quarn {

namespace {

// What to do about a text that the library does not load; empty where nothing helps.
std::string remedyFor(const std::string& file, const ObjText& text) {
    try {
        if (!mendObj(text.name, std::string(text.text)).repairs.any()) return {};
    } catch (const ToolError&) {
        return {};
    }
    return "quarnscreen convert " + shellWord(file) + " -o mended.obj";
}

template <class Step>
void withRemedy(const std::string& file, const ObjText& text, Step step) {
    try {
        step();
    } catch (ToolError& error) {
        if (error.code == ExitCode::BadInput) error.remedy = remedyFor(file, text);
        throw;
    }
}

void load(ObjMesh& mesh, std::string text) {
    ObjText& kept = mesh.source.text;
    try {
        std::istringstream stream(std::move(text));
        mesh.screen->deserialize(stream);
        kept.text = mesh.screen->getLoadedFileContents();
    } catch (const ObjLoadException&) {
        kept.text = mesh.screen->getLoadedFileContents();
        throw badReferenceError(kept, mesh.source.contents);
    } catch (const std::bad_alloc&) {
        throw ToolError{.code = ExitCode::SystemFailed,
                        .found = "the memory does not suffice for the mesh",
                        .file = kept.name};
    }
}

}  // namespace

ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, StageClock& clock) {
    ObjMesh mesh;
    const ObjFrame& frame = mesh.source.frame = source.frame;
    mesh.source.text = joinObjLines(source.name, source.text);
    mesh.screen = std::make_shared<OBJScreen>(fromUtf8(frame.forward), fromUtf8(frame.upward), frame.scale);
    withRemedy(source.file, mesh.source.text,
               [&] { mesh.source.contents = examineObj(mesh.source.text, frame.scale); });
    refuseMeshAbove(maxMemory, source.name, mesh.source.text.text.size(), mesh.source.contents.triangles);
    refuseLargeUvIndex(source.file, mesh.source.text, mesh.source.contents, maxMemory);
    clock.enter("building the mesh of " + groupedCount(mesh.source.contents.triangles) + " triangles");
    withRemedy(source.file, mesh.source.text, [&] { load(mesh, std::move(source.text)); });
    return mesh;
}

}  // namespace quarn
