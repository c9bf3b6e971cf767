#include "CheckInput.h"

#include <optional>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/MeshMemory.h>
#include <QuarnKit/Formats/Obj/ObjSourceText.h>
#include <QuarnKit/Formats/Obj/Parts/ObjCompaction.h>
#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Formats/Stl/StlDefect.h>
#include <QuarnKit/Formats/Stl/StlMeshReader.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

namespace quarn {

namespace {

std::vector<Finding> findingsOf(const ObjRepairs& repairs, const std::string& file) {
    std::vector<Finding> findings;
    for (const ObjRepairs::Tally& tally : repairs.tallies())
        findings.push_back({.name = repairName(tally.repair),
                            .count = tally.count,
                            .places = {{.line = tally.firstLine}},
                            .text = repairText(tally),
                            .remedy = {.kind = RemedyKind::RepairFile, .file = file}});
    return findings;
}

// Names the triangles of concave faces, and appends the faces that are not repaired.
void addFaceFindings(const RepairedObj& repaired, CheckInput& input) {
    const CheckedMesh mesh = input.mesh();
    for (Finding& finding : input.textFindings)
        if (finding.name == repairName(ObjRepair::ConcaveFace))
            finding.places = Cases(mesh, repaired.concaveFaces).first();
    const Cases crossed(mesh, repaired.selfIntersectingFaces);
    if (crossed.count() == 0) return;
    input.textFindings.push_back({.name = "self-intersecting-face",
                                  .count = crossed.count(),
                                  .places = crossed.first(),
                                  .text = selfIntersectionText(crossed.count()),
                                  .hint = "divide them into triangles or quads, and export them again"});
}

// Returns the data that the library reads from a text. Most texts have no continued line and need
// no copy.
detail::ObjData parseAsLoaded(const std::string& text) {
    if (text.find(kObjLineJoin) == std::string::npos) return detail::parseObj(text);
    std::string copy = text;
    return detail::parseObj(joinObjLines({}, copy).text);
}

CheckInput objInputOf(const ObjSource& source, std::uint64_t maxMemory) {
    RepairedObj repaired = repairObj(source.name, source.text);
    CheckInput input{.repairedText = std::move(repaired.text),
                     .textFindings = findingsOf(repaired.repairs, source.file),
                     .objData = {},
                     .triangles = {},
                     .lines = std::move(repaired.triangleLines),
                     .file = source.file};
    refuseMeshAbove(maxMemory, source.name,
                    {.textBytes = input.repairedText.size(), .triangles = input.lines.size()});
    input.objData = repaired.objData ? std::move(*repaired.objData) : parseAsLoaded(input.repairedText);
    // A repaired text has no bad reference.
    (void)detail::buildObjTriangles(input.objData, source.frame.matrix(), input.triangles);
    addFaceFindings(repaired, input);
    return input;
}

Triangle triangleOf(const StlCorners& corners, const Matrix<float, 4>& transform) {
    Triangle triangle;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const auto [x, y, z] = corners.at(i);
        const Point<float, 3> position = transform.transformPoint(x, y, z);
        triangle.vertices.at(i).position = {position[0], position[1], position[2]};
    }
    triangle.computeGeometry();
    triangle.computeCentroids();
    return triangle;
}

void addStlFindings(const ObjSource& source, const std::optional<StlWarning>& warning, CheckInput& input) {
    const Remedy remedy{.kind = RemedyKind::RepairFile, .file = source.file};
    const auto defect = findStlDefect(source.text);
    // Numbers that are not finite are searched in all triangles elsewhere.
    if (defect && defect->isRepairable)
        input.textFindings.push_back({.name = defect->name,
                                      .count = 1,
                                      .places = defect->triangle == 0
                                                    ? std::vector<Place>()
                                                    : std::vector{Place{.triangle = defect->triangle}},
                                      .text = defect->found + ", which the other commands reject",
                                      .remedy = remedy});
    if (warning && !(defect && defect->name == warning->name))
        input.textFindings.push_back({.name = warning->name,
                                      .count = 1,
                                      .places = {{.line = warning->line}},
                                      .text = warning->text,
                                      .hint = "export it again, or keep the triangles that are present",
                                      .remedy = remedy});
}

CheckInput stlInputOf(const ObjSource& source, std::uint64_t maxMemory, RepairedText repairedText,
                      Observer& observer) {
    // Number of triangles after which the memory is checked again.
    constexpr std::size_t kStep = std::size_t{1} << 16U;
    CheckInput input{.repairedText = {},
                     .textFindings = {},
                     .objData = {},
                     .triangles = {},
                     .lines = {},
                     .canHaveUV = false,
                     .file = source.file};
    const Matrix<float, 4> transform = source.frame.matrix();
    const auto refuseTooMany = [&] {
        refuseMeshAbove(maxMemory, source.name,
                        {.textBytes = source.text.size(), .triangles = input.triangles.size()});
    };
    const auto warning = forEachStlTriangle(source.name, source.text, [&](const StlCorners& corners) {
        input.triangles.push_back(triangleOf(corners, transform));
        if (input.triangles.size() % kStep == 0) refuseTooMany();
    });
    refuseTooMany();
    if (input.triangles.empty()) refuseStlWithoutTriangle(source.name);
    addStlFindings(source, warning, input);
    if (repairedText == RepairedText::Build)
        input.repairedText = objTextOfStl(source.name, source.text, observer);
    return input;
}

}  // namespace

CheckInput readCheckInput(const std::string& path, const ObjOptions& options, std::uint64_t maxMemory,
                          RepairedText repairedText, Observer& observer) {
    auto text = readMeshText(path, maxMemory, options, observer);
    if (!text)
        throw Error({.found = "found a screen without triangles",
                     .expected = "a mesh; there is nothing to check in other screens",
                     .file = path});
    if (text->format == ScreenFormat::Stl) return stlInputOf(text->source, maxMemory, repairedText, observer);
    CheckInput input = objInputOf(text->source, maxMemory);
    if (repairedText == RepairedText::Build && !options.objects.empty()) {
        text->source.text = std::move(input.repairedText);
        removeUnusedObjData(text->source);
        input.repairedText = std::move(text->source.text);
    }
    return input;
}

}  // namespace quarn
