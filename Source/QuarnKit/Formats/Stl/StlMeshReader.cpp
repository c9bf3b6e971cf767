#include "StlMeshReader.h"

#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/UniqueRecords.h>

#include "StlLayout.h"

namespace quarn {

namespace {

std::optional<StlWarning> forEachBinaryTriangle(const std::string& name, std::string_view text,
                                                const std::function<void(const StlCorners&)>& visit) {
    const auto layout = stlLayoutOf(text);
    if (!layout)
        throw Error({.found = "found " + std::to_string(text.size()) + " bytes",
                     .expected = "at least 84, as a binary STL file has",
                     .file = name});
    // A wrong count is no reason to lose the triangles that are present.
    forEachStlRecord(text, layout->recordCount, [&](std::uint64_t, const std::array<float, 12>& n) {
        visit({{{n[3], n[4], n[5]}, {n[6], n[7], n[8]}, {n[9], n[10], n[11]}}});
    });
    if (layout->declaredCount >= 0 &&
        layout->recordCount == static_cast<std::uint64_t>(layout->declaredCount))
        return {};
    return StlWarning{.name = "stl-count",
                      .text = "the header declares " + std::to_string(layout->declaredCount) +
                              " triangles; the " + std::to_string(layout->recordCount) + " present are used"};
}

}  // namespace

std::optional<StlWarning> forEachStlTriangle(const std::string& name, std::string_view text,
                                             const std::function<void(const StlCorners&)>& visit) {
    if (isBinaryStl(text)) return forEachBinaryTriangle(name, text, visit);
    const std::uint64_t line = forEachStlTextTriangle(name, text, visit);
    if (line == 0) return {};
    return StlWarning{.name = "stl-cut-off",
                      .line = line,
                      .text = "the file ends within a solid; the triangles before its end are used"};
}

void refuseStlWithoutTriangle(const std::string& name) {
    throw Error({.found = "found no triangle in the STL file", .expected = "at least one", .file = name});
}

MeshDocument readStlMesh(const std::string& name, std::string_view text, Observer& observer) {
    MeshDocument mesh;
    UniqueRecords<3> positions(mesh.positions);
    const auto warning = forEachStlTriangle(name, text, [&](const StlCorners& corners) {
        detail::ObjFace& face = mesh.faces.emplace_back();
        for (std::size_t i = 0; i < face.size(); ++i) {
            const auto& corner = corners.at(i);
            if (!std::all_of(corner.begin(), corner.end(), [](float value) { return std::isfinite(value); }))
                throw Error({.found = "found a coordinate that is not finite in triangle " +
                                      std::to_string(mesh.faces.size()),
                             .expected = "finite ones",
                             .file = name});
            face.at(i).vertex = positions.indexOf(corner);
        }
    });
    if (warning) observer.notify({.text = warning->text, .file = name, .line = warning->line});
    if (mesh.faces.empty()) refuseStlWithoutTriangle(name);
    return mesh;
}

std::string objTextOfStl(const std::string& name, std::string_view text, Observer& observer) {
    return objTextOf(readStlMesh(name, text, observer), "from an STL file, written by quarnscreen");
}

}  // namespace quarn
