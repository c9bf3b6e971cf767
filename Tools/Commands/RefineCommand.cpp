#include <algorithm>
#include <limits>
#include <utility>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Formats/OutputName.h>
#include <QuarnKit/Mesh/RefinementSize.h>

#include "Base/Diagnostics.h"
#include "Base/ScreenInput.h"
#include "CommandLine/MeshEdit.h"
#include "CommandLine/Options.h"
#include "CommandLine/UnitOptions.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

// Bytes for each resulting triangle: the screen's own, its indexes, a copy, the text, and the mesh
// of the text. For XML there are three more copies of the text, in wide characters.
constexpr std::uint64_t kMemoryPerTriangle = 2500;
constexpr std::uint64_t kMemoryPerTriangleInXml = 5000;
// Corners are counted by 32-bit numbers.
constexpr std::uint64_t kMaxTriangles = std::numeric_limits<std::int32_t>::max() / 3;

struct RefineOptions : MeshEditOptions {
    std::string maxEdge;
};

// A refinement without limit could take all memory, or not terminate.
void refuseUnboundedRefinement(const std::vector<Triangle>& triangles, double maxEdge,
                               const RefineOptions& options) {
    if (!(maxEdge > 0.0)) throw unexpectedText("--max-edge", options.maxEdge, "a length above 0");
    const std::uint64_t memory = writesXml(options) ? kMemoryPerTriangleInXml : kMemoryPerTriangle;
    const std::uint64_t maxTriangles = std::min(options.maxMemory / memory, kMaxTriangles);
    const auto count = countRefinement(triangles, maxEdge, maxTriangles + 1);
    if (!count)
        throw unexpectedText("--max-edge", options.maxEdge,
                             "a length above the floating-point resolution at the mesh's size");
    if (*count > maxTriangles)
        throw Error({.found = "found --max-edge " + quotedExcerpt(options.maxEdge) +
                              ", for which the mesh becomes more than " + std::to_string(maxTriangles) +
                              " triangles and could need more than " + memorySizeText(options.maxMemory) +
                              " of memory",
                     .expected = "a larger length, or a larger --max-memory",
                     .file = options.input});
}

void run(const RefineOptions& options) {
    requireOutputName(options.output, {"obj", "xml"});
    const double maxEdge = lengthFrom("--max-edge", options.maxEdge, options.unit);
    const Screen screen = openScreen(options.input, options.maxMemory, options.obj);
    MeshScreen& mesh = meshOf(screen);
    std::vector<Triangle> triangles;
    mesh.getTesselation(triangles);
    refuseUnboundedRefinement(triangles, maxEdge, options);
    const std::size_t before = triangles.size();
    mesh.refine(maxEdge);
    mesh.getTesselation(triangles);
    if (triangles.size() == before)
        writeNoteLine(withLocation(options.input, 0, "no edge is longer; the triangles are unchanged"));
    writeMesh(std::move(triangles),
              "refined to edges of " + numberText(maxEdge) + " " + options.unit + " by quarnscreen", options);
}

}  // namespace

void registerRefineCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "refine",
         .summary = "Subdivide the triangles of a mesh until no edge is longer than a limit",
         .example = "quarnscreen refine Samples/measured-dome.obj --max-edge 500 -o fine.obj"});
    RefineOptions& options = command.onRun(run);
    command
        .option("--max-edge LENGTH", options.maxEdge,
                "Maximum length of an edge. Positions are written in single precision, so an edge may be "
                "longer by that rounding")
        .required();
    addMeshEditOptions(command, options);
    addObjOptions(command, options.obj);
}

}  // namespace quarn::tool
