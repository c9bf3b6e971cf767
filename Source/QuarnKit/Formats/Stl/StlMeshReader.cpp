#include "StlMeshReader.h"

#include <algorithm>
#include <cmath>

#include <QuarnKit/Formats/UniqueRecords.h>

#include "Base/Diagnostics.h"
#include "Base/ToolError.h"
#include "StlLayout.h"

namespace quarn {

namespace {

std::optional<StlRemark> forEachBinaryTriangle(const std::string& name, std::string_view text,
                                               const std::function<void(const StlCorners&)>& visit) {
    const auto layout = stlLayoutOf(text);
    if (!layout)
        throw ToolError{.found = "found " + std::to_string(text.size()) + " bytes",
                        .expected = "84 at least, as a binary STL file has",
                        .file = name};
    // A count that lies is no reason to lose what is there.
    forEachStlRecord(text, layout->recordCount, [&](std::uint64_t, const std::array<float, 12>& n) {
        visit({{{n[3], n[4], n[5]}, {n[6], n[7], n[8]}, {n[9], n[10], n[11]}}});
    });
    if (layout->toldCount >= 0 && layout->recordCount == static_cast<std::uint64_t>(layout->toldCount))
        return {};
    return StlRemark{.name = "stl-count",
                     .text = "the header tells of " + std::to_string(layout->toldCount) + " triangles, and " +
                             std::to_string(layout->recordCount) + " are there and taken"};
}

}  // namespace

std::optional<StlRemark> forEachStlTriangle(const std::string& name, std::string_view text,
                                            const std::function<void(const StlCorners&)>& visit) {
    if (isBinaryStl(text)) return forEachBinaryTriangle(name, text, visit);
    const std::uint64_t line = forEachStlTextTriangle(name, text, visit);
    if (line == 0) return {};
    return StlRemark{.name = "stl-cut-off",
                     .line = line,
                     .text = "the file ends within a solid; the triangles before are taken"};
}

void refuseStlWithoutTriangle(const std::string& name) {
    throw ToolError{.found = "found no triangle in the STL file", .expected = "one at least", .file = name};
}

MeshDocument meshOfAnyStl(const std::string& name, std::string_view text) {
    MeshDocument mesh;
    SharedRecords<3> positions(mesh.positions);
    const auto remark = forEachStlTriangle(name, text, [&](const StlCorners& corners) {
        ObjFace& face = mesh.faces.emplace_back();
        for (std::size_t i = 0; i < face.size(); ++i) {
            const auto& corner = corners.at(i);
            if (!std::all_of(corner.begin(), corner.end(), [](float value) { return std::isfinite(value); }))
                throw ToolError{.found = "found a coordinate that is not finite in triangle " +
                                         std::to_string(mesh.faces.size()),
                                .expected = "finite ones",
                                .file = name};
            face.at(i).vertex = positions.indexOf(corner);
        }
    });
    if (remark) writeNoteLine(atPlace(name, remark->line, remark->text));
    if (mesh.faces.empty()) refuseStlWithoutTriangle(name);
    return mesh;
}

std::string objTextOfStl(const std::string& name, std::string_view text) {
    return objTextOf(meshOfAnyStl(name, text), "from an STL file, written by quarnscreen");
}

}  // namespace quarn
