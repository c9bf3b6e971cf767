#include "ObjLoader.h"

#include <new>
#include <sstream>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnScreen/ObjLoadException.h>

#include "ObjReferences.h"
#include "ObjRepairer.h"
#include "UvIndexLimit.h"

namespace quarn {

namespace {

// Returns what helps with a text that the library does not load.
Remedy remedyFor(const std::string& file, const ObjText& text) {
    try {
        if (!repairObj(text.name, std::string(text.text)).repairs.any()) return {};
    } catch (const Error&) {
        return {};
    }
    return {.kind = RemedyKind::RepairFile, .file = file};
}

template <class Step>
void withRemedy(const std::string& file, const ObjText& text, Step step) {
    try {
        step();
    } catch (const Error& error) {
        if (error.details().kind != ErrorKind::BadInput) throw;
        throw error.with(remedyFor(file, text));
    }
}

void load(ObjMesh& mesh, std::string text) {
    ObjText& loadedText = mesh.source.text;
    try {
        std::istringstream stream(std::move(text));
        mesh.screen->deserialize(stream);
        loadedText.text = mesh.screen->getLoadedFileContents();
    } catch (const ObjLoadException&) {
        loadedText.text = mesh.screen->getLoadedFileContents();
        throw badReferenceError(loadedText, mesh.source.counts);
    } catch (const std::bad_alloc&) {
        throw Error({.kind = ErrorKind::SystemFailure,
                     .found = "out of memory for the mesh",
                     .file = loadedText.name});
    }
}

}  // namespace

ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, Observer& observer) {
    ObjMesh mesh;
    const ObjFrame& frame = mesh.source.frame = source.frame;
    mesh.source.text = joinObjLines(source.name, source.text);
    mesh.screen = std::make_shared<OBJScreen>(fromUtf8(frame.forward), fromUtf8(frame.upward), frame.scale);
    withRemedy(source.file, mesh.source.text,
               [&] { mesh.source.counts = validateObj(mesh.source.text, frame.scale); });
    refuseMeshAbove(maxMemory, source.name, mesh.source.text.text.size(), mesh.source.counts.triangles);
    refuseLargeUvIndex(source.file, mesh.source.text, mesh.source.counts, maxMemory);
    observer.setStage("building the mesh of " + groupedCount(mesh.source.counts.triangles) + " triangles");
    withRemedy(source.file, mesh.source.text, [&] { load(mesh, std::move(source.text)); });
    return mesh;
}

}  // namespace quarn
