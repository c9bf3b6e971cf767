#include "ScreenWriter.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include <Common/TextConversion.h>

#include "MeshStatus.h"
#include "Message.h"
#include "StageClock.h"
#include "ToolError.h"

namespace quarn {

namespace {

void refuseInfinite(const MeshDocument& mesh, const std::string& file) {
    for (const auto& position : mesh.positions)
        if (!std::all_of(position.begin(), position.end(),
                         [](float number) { return std::isfinite(number); }))
            throw ToolError{.found = "found a position that no OBJ file can hold",
                            .expected = "a screen whose positions are finite as floats",
                            .file = file};
}

std::string gridDescription(const Screen& screen, const GridSize& grid) {
    return screen.geometry->getType() + ", a grid of " + std::to_string(grid.rows) + " by " +
           std::to_string(grid.columns) + " cells, made by quarnscreen";
}

}  // namespace

ScreenFormat formatByName(const std::string& path, ScreenFormat otherwise) {
    std::string name = path;
    std::transform(name.begin(), name.end(), name.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    if (name.ends_with(".obj")) return ScreenFormat::Obj;
    if (name.ends_with(".xml")) return ScreenFormat::Xml;
    return otherwise;
}

std::string xmlTextOf(IScreenGeometry& screen) {
    std::wostringstream text;
    text << L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    screen.serialize(text, 0);
    return toUtf8(text.str());
}

std::string objTextOf(const Screen& screen, const GridSize& grid) {
    if (!screen.mesh) {
        const MeshDocument mesh = gridMeshOf(*screen.geometry, grid);
        refuseInfinite(mesh, screen.file);
        return objTextOf(mesh, gridDescription(screen, grid));
    }
    std::string text(screen.mesh->text.text);
    const Matrix<float, 4> matrix = screen.mesh->frame.matrix();
    if (matrix == Matrix<float, 4>::identity()) return text;
    return objTextOf(meshDocumentOf(text, matrix), "in the frame of the screen, written by quarnscreen");
}

void noteMeshStatus(const std::string& path, const std::string& objText, std::uint64_t maxMemory) {
    const std::string name = path == "-" ? "standard output" : path;
    StageClock clock;
    const ObjMesh mesh =
        loadObj({.file = path, .name = name, .text = objText, .frame = {}}, maxMemory, clock);
    if (mesh.screen->getStatus() != OBJScreen::StatusOk)
        writeNoteLine(atPlace(name, 0, meshStatusOf(*mesh.screen, mesh.source).text));
}

}  // namespace quarn
