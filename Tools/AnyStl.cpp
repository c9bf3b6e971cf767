#include "AnyStl.h"

#include <algorithm>
#include <cmath>

#include "Message.h"
#include "SharedRecords.h"
#include "StlForm.h"
#include "StlText.h"
#include "ToolError.h"

namespace quarn {

namespace {

// Collects triangles whose corners are shared by their positions.
class Collector {
public:
    explicit Collector(const std::string& stlName) : name(stlName), positions(mesh.positions) {}

    void add(std::uint64_t number, const std::array<std::array<float, 3>, 3>& corners) {
        ObjFace& face = mesh.faces.emplace_back();
        for (std::size_t i = 0; i < face.size(); ++i) {
            const auto& corner = corners.at(i);
            if (!std::all_of(corner.begin(), corner.end(), [](float value) { return std::isfinite(value); }))
                throw ToolError{
                    .found = "found a coordinate that is not finite in triangle " + std::to_string(number),
                    .expected = "finite ones",
                    .file = name};
            face.at(i).vertex = positions.indexOf(corner);
        }
    }

    MeshDocument take() {
        if (mesh.faces.empty())
            throw ToolError{
                .found = "found no triangle in the STL file", .expected = "one at least", .file = name};
        return std::move(mesh);
    }

private:
    const std::string& name;
    MeshDocument mesh;
    SharedRecords<3> positions;
};

void addBinary(Collector& collector, const std::string& name, std::string_view text) {
    const auto layout = stlLayoutOf(text);
    if (!layout)
        throw ToolError{.found = "found " + std::to_string(text.size()) + " bytes",
                        .expected = "84 at least, as a binary STL file has",
                        .file = name};
    if (layout->toldCount < 0 || layout->recordCount != static_cast<std::uint64_t>(layout->toldCount))
        writeNoteLine(atPlace(name, 0,
                              "the header tells of " + std::to_string(layout->toldCount) +
                                  " triangles, and " + std::to_string(layout->recordCount) +
                                  " are there and taken"));
    // A count that lies is no reason to lose what is there.
    forEachStlRecord(text, layout->recordCount, [&](std::uint64_t number, const std::array<float, 12>& n) {
        collector.add(number, {{{n[3], n[4], n[5]}, {n[6], n[7], n[8]}, {n[9], n[10], n[11]}}});
    });
}

}  // namespace

MeshDocument meshOfAnyStl(const std::string& name, std::string_view text) {
    Collector collector(name);
    if (isBinaryStl(text)) {
        addBinary(collector, name, text);
    } else {
        std::uint64_t number = 0;
        forEachStlTextTriangle(name, text, [&](const std::array<std::array<float, 3>, 3>& corners) {
            collector.add(++number, corners);
        });
    }
    return collector.take();
}

}  // namespace quarn
