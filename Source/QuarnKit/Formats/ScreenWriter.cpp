#include "ScreenWriter.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include <Common/TextConversion.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/MeshMemory.h>

#include "MeshStatus.h"

namespace quarn {

namespace {

void refuseInfinite(const MeshDocument& mesh, const std::string& file) {
    for (const auto& position : mesh.positions)
        if (!std::all_of(position.begin(), position.end(),
                         [](float number) { return std::isfinite(number); }))
            throw Error({.found = "found a position that no OBJ file can hold",
                         .expected = "a screen whose positions are finite as floats",
                         .file = file});
}

std::string gridDescription(const Screen& screen, const GridSize& grid) {
    return screen.geometry->getType() + ", a grid of " + std::to_string(grid.rows) + " by " +
           std::to_string(grid.columns) + " cells, made by quarnscreen";
}

// Whether the OBJ text of a screen is the one that it was loaded from.
bool isOwnText(const Screen& screen) {
    return screen.mesh && screen.mesh->frame.matrix() == Matrix<float, 4>::identity();
}

std::string nameOf(const std::string& path) {
    return path == "-" ? "standard output" : path;
}

void noteStatus(const std::string& path, const OBJScreen& loaded, const MeshSource& source,
                Observer& observer) {
    if (loaded.getStatus() != OBJScreen::StatusOk)
        observer.notify({.text = meshStatusOf(loaded, source).text, .file = nameOf(path)});
}

}  // namespace

ScreenFormat formatByName(const std::string& path, ScreenFormat fallback) {
    std::string name = path;
    std::transform(name.begin(), name.end(), name.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    if (name.ends_with(".obj")) return ScreenFormat::Obj;
    if (name.ends_with(".xml")) return ScreenFormat::Xml;
    return fallback;
}

std::string xmlTextOf(IScreenGeometry& screen) {
    std::wostringstream text;
    text << L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    screen.serialize(text, 0);
    return toUtf8(text.str());
}

std::string objTextOf(const Screen& screen, const GridSize& grid, std::uint64_t maxMemory) {
    if (!screen.mesh) {
        const auto cells = static_cast<std::uint64_t>(grid.rows) * static_cast<std::uint64_t>(grid.columns);
        refuseMeshAbove(maxMemory, screen.file, {.triangles = 2 * cells});
        const MeshDocument mesh = gridMeshOf(*screen.geometry, grid);
        refuseInfinite(mesh, screen.file);
        return objTextOf(mesh, gridDescription(screen, grid));
    }
    std::string text(screen.mesh->text.text);
    if (isOwnText(screen)) {
        for (const std::size_t feed : screen.mesh->text.joinedLines) text.replace(feed - 1, 2, "\\\n");
        return text;
    }
    return objTextOf(meshDocumentOf(text, screen.mesh->frame.matrix()),
                     "in the frame of the screen, written by quarnscreen");
}

void noteMeshStatus(const std::string& path, const Screen& screen, const std::string& objText,
                    std::uint64_t maxMemory, Observer& observer) {
    if (isOwnText(screen))
        noteStatus(path, dynamic_cast<const OBJScreen&>(*screen.geometry), *screen.mesh, observer);
    else
        static_cast<void>(loadGeneratedText(path, objText, maxMemory, observer));
}

std::shared_ptr<OBJScreen> loadGeneratedText(const std::string& path, const std::string& objText,
                                             std::uint64_t maxMemory, Observer& observer) {
    const ObjMesh mesh =
        loadObj({.file = path, .name = nameOf(path), .text = objText, .frame = {}}, maxMemory, observer);
    noteStatus(path, *mesh.screen, mesh.source, observer);
    return mesh.screen;
}

}  // namespace quarn
