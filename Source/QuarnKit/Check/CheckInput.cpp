#include "CheckInput.h"

#include <optional>

#include <QuarnKit/Formats/Obj/ObjRepairer.h>
#include <QuarnKit/Formats/Obj/ObjValidation.h>
#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Formats/Stl/StlDefect.h>
#include <QuarnKit/Formats/Stl/StlMeshReader.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/Detail/Obj/ObjTriangles.h>

#include "Base/ShellQuote.h"
#include "Base/ToolError.h"

namespace quarn {

namespace {

std::vector<Finding> findingsOf(const ObjRepairs& repairs, const std::string& file) {
    std::vector<Finding> findings;
    for (const ObjRepairs::Tally& tally : repairs.tallies())
        findings.push_back(
            {.name = repairName(tally.repair),
             .count = tally.count,
             .places = {{.line = tally.firstLine}},
             .text = repairText(tally),
             .hint = "mend it by: quarnscreen check " + shellWord(file) + " --fix -o mended.obj"});
    return findings;
}

CheckInput objInputOf(const ObjSource& source, std::uint64_t maxMemory) {
    MendedObj mended = mendObj(source.name, source.text);
    CheckInput input{.mendedText = std::move(mended.text),
                     .textFindings = findingsOf(mended.repairs, source.file),
                     .lists = {},
                     .triangles = {},
                     .lines = std::move(mended.triangleLines)};
    std::string joined = input.mendedText;
    const ObjText text = joinObjLines(source.name, joined);
    refuseMeshAbove(maxMemory, text.name, text.text.size(), input.lines.size());
    input.lists = scanObjText(text.text, input.triangles, [] {});
    // What has been mended has no bad reference.
    (void)buildObjTriangles(input.lists, source.frame.matrix(), input.triangles);
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

void addStlFindings(const ObjSource& source, const std::optional<StlRemark>& remark, CheckInput& input) {
    const std::string hint = "mend it by: " + stlRemedy(source.file);
    const auto trouble = stlTroubleOf(source.text);
    // Numbers that are not finite are looked for in all triangles.
    if (trouble && trouble->isMendable)
        input.textFindings.push_back({.name = trouble->name,
                                      .count = 1,
                                      .places = trouble->triangle == 0
                                                    ? std::vector<Place>()
                                                    : std::vector{Place{.triangle = trouble->triangle}},
                                      .text = trouble->found + ", which the other commands do not load",
                                      .hint = hint});
    if (remark && !(trouble && trouble->name == remark->name))
        input.textFindings.push_back(
            {.name = remark->name,
             .count = 1,
             .places = {{.line = remark->line}},
             .text = remark->text,
             .hint = "export it anew, or take what is there: " + stlRemedy(source.file)});
}

CheckInput stlInputOf(const ObjSource& source, std::uint64_t maxMemory, bool isMended) {
    // How many triangles more before the memory that they need is looked at again.
    constexpr std::size_t kStep = std::size_t{1} << 16U;
    CheckInput input{
        .mendedText = {}, .textFindings = {}, .lists = {}, .triangles = {}, .lines = {}, .canHaveUV = false};
    const Matrix<float, 4> transform = source.frame.matrix();
    const auto refuseTooMany = [&] {
        refuseMeshAbove(maxMemory, source.name, source.text.size(), input.triangles.size());
    };
    const auto remark = forEachStlTriangle(source.name, source.text, [&](const StlCorners& corners) {
        input.triangles.push_back(triangleOf(corners, transform));
        if (input.triangles.size() % kStep == 0) refuseTooMany();
    });
    refuseTooMany();
    if (input.triangles.empty()) refuseStlWithoutTriangle(source.name);
    addStlFindings(source, remark, input);
    if (isMended) input.mendedText = objTextOfStl(source.name, source.text);
    return input;
}

}  // namespace

CheckInput readCheckInput(const std::string& path, const ObjOptions& options, std::uint64_t maxMemory,
                          bool isMended) {
    const auto text = readMeshText(path, maxMemory, options);
    if (!text)
        throw ToolError{.found = "found a screen without triangles",
                        .expected = "a mesh; there is nothing to check in other screens",
                        .file = path};
    return text->format == ScreenFormat::Stl ? stlInputOf(text->source, maxMemory, isMended)
                                             : objInputOf(text->source, maxMemory);
}

}  // namespace quarn
