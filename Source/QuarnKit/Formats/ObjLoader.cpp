#include "ObjLoader.h"

#include <new>
#include <sstream>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/Obj/ObjReferences.h>
#include <QuarnKit/Formats/Obj/Repair/ObjReadingCheck.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include <QuarnKit/Formats/Obj/UvIndexLimit.h>

namespace quarn {

namespace {

// Returns the remedy for a text that the library does not load.
Remedy remedyFor(const std::string& file, const ObjSourceText& text) {
    try {
        if (!repairObj(text.name, std::string(text.text)).repairs.any()) return {};
    } catch (const Error&) {
        return {};
    }
    return {.kind = RemedyKind::RepairFile, .file = file};
}

template <class Step>
auto withRemedy(const std::string& file, const ObjSourceText& text, Step step) {
    try {
        return step();
    } catch (const Error& error) {
        const ErrorDetails& details = error.details();
        if (details.kind != ErrorKind::BadInput || details.remedy.kind != RemedyKind::None) throw;
        throw error.with(remedyFor(file, text));
    }
}

// Returns the counts of a text that the library can load. The parsed data is destroyed before the
// screen is built, since a large mesh needs the memory.
ObjCounts validate(const ObjSource& original, const MeshSource& source, std::uint64_t maxMemory,
                   Observer& observer) {
    const std::string& file = original.file;
    const ObjSourceText& text = source.text;
    const detail::ObjData objData =
        withRemedy(file, text, [&] { return parseValidObj(text, source.frame.scale, maxMemory); });
    refuseLargeUvIndex(file, text, objData, maxMemory);
    observer.setStage("building the mesh of " + groupedCount(objData.faces.size()) + " triangles");
    withRemedy(file, text, [&] { requireValidReferences(text, objData); });
    try {
        requireSameReading(original.name, original.text, objData);
    } catch (const Error& error) {
        throw error.with({.kind = RemedyKind::RepairFile, .file = file});
    }
    return countsOf(objData);
}

std::shared_ptr<OBJScreen> load(const ObjFrame& frame, std::string text) {
    auto screen = std::make_shared<OBJScreen>(fromUtf8(frame.forward), fromUtf8(frame.upward), frame.scale);
    std::istringstream stream(std::move(text));
    screen->deserialize(stream);
    return screen;
}

}  // namespace

ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, Observer& observer) {
    ObjMesh mesh;
    try {
        mesh.source.frame = source.frame;
        mesh.source.origin = source.origin;
        mesh.source.text = joinObjLines(source.name, source.text);
        mesh.source.text.lineMap = std::move(source.lineMap);
        mesh.source.counts = validate(source, mesh.source, maxMemory, observer);
        mesh.screen = load(source.frame, std::move(source.text));
        mesh.source.text.text = mesh.screen->getLoadedFileContents();
    } catch (const std::bad_alloc&) {
        throw Error(
            {.kind = ErrorKind::SystemFailure, .found = "out of memory for the mesh", .file = source.name});
    }
    return mesh;
}

}  // namespace quarn
