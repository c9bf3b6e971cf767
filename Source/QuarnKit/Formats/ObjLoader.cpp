#include "ObjLoader.h"

#include <new>
#include <sstream>
#include <utility>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/Obj/ObjReferences.h>
#include <QuarnKit/Formats/Obj/Repair/ObjReadingCheck.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include <QuarnKit/Formats/Obj/UvIndexLimit.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

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

// Returns the data of a text that the library can load.
detail::ObjData parseLoadable(const ObjSource& original, const MeshSource& source, std::uint64_t maxMemory,
                              Observer& observer) {
    const std::string& file = original.file;
    const ObjSourceText& text = source.text;
    detail::ObjData objData =
        withRemedy(file, text, [&] { return parseValidObj(text, source.frame.scale, maxMemory); });
    refuseLargeUvIndex(file, text, objData, maxMemory);
    observer.setStage("building the mesh of " + groupedCount(objData.faces.size()) + " triangles");
    withRemedy(file, text, [&] { requireValidReferences(text, objData); });
    try {
        requireSameReading(original.name, original.text, objData);
    } catch (const Error& error) {
        throw error.with({.kind = RemedyKind::RepairFile, .file = file});
    }
    return objData;
}

std::shared_ptr<OBJScreen> load(const ObjFrame& frame, std::string text) {
    auto screen = std::make_shared<OBJScreen>(fromUtf8(frame.forward), fromUtf8(frame.upward), frame.scale);
    std::istringstream stream(std::move(text));
    screen->deserialize(stream);
    return screen;
}

// Joins the continued lines of the text, to which the result refers.
MeshSource meshSourceOf(ObjSource& source) {
    MeshSource result{.text = joinObjLines(source.name, source.text),
                      .counts = {},
                      .frame = source.frame,
                      .origin = source.origin};
    result.text.lineMap = std::move(source.lineMap);
    return result;
}

// Returns the status as OBJScreen::deserialize() finds it.
OBJScreen::Status statusOf(detail::ObjStatus status, const std::vector<Triangle>& triangles) {
    Boundary boundary;
    // The search logs its warning for a mesh of any status.
    const bool isBoundaryValid = MeshScreen::findBoundaryNew(triangles, boundary);
    if (status == detail::ObjStatus::Ok && !isBoundaryValid) return OBJScreen::StatusBadBoundary;
    return static_cast<OBJScreen::Status>(status);
}

template <class Load>
auto refusingMemoryShortage(const std::string& name, Load load) {
    try {
        return load();
    } catch (const std::bad_alloc&) {
        throw Error({.kind = ErrorKind::SystemFailure, .found = "out of memory for the mesh", .file = name});
    }
}

}  // namespace

ObjMesh loadObj(ObjSource source, std::uint64_t maxMemory, Observer& observer) {
    return refusingMemoryShortage(source.name, [&] {
        ObjMesh mesh{.screen = {}, .source = meshSourceOf(source)};
        // The parsed data is destroyed before the screen is built, since a large mesh needs the
        // memory.
        mesh.source.counts = countsOf(parseLoadable(source, mesh.source, maxMemory, observer));
        mesh.screen = load(source.frame, std::move(source.text));
        mesh.source.text.text = mesh.screen->getLoadedFileContents();
        return mesh;
    });
}

UnindexedMesh loadUnindexedObj(ObjSource source, std::uint64_t maxMemory, Observer& observer) {
    return refusingMemoryShortage(source.name, [&] {
        UnindexedMesh mesh;
        mesh.source = meshSourceOf(source);
        detail::ObjStatus status = detail::ObjStatus::Ok;
        {
            const detail::ObjData objData = parseLoadable(source, mesh.source, maxMemory, observer);
            mesh.source.counts = countsOf(objData);
            status = detail::buildObjTriangles(objData, source.frame.matrix(), mesh.triangles).status;
        }
        mesh.status = statusOf(status, mesh.triangles);
        mesh.text = std::make_unique<std::string>(std::move(source.text));
        mesh.source.text.text = *mesh.text;
        return mesh;
    });
}

}  // namespace quarn
