#include "Commands/CheckInput.h"

#include <optional>

#include <QuarnScreen/Detail/ObjScan.h>
#include <QuarnScreen/Detail/ObjTriangles.h>

#include "ObjContents.h"
#include "ObjMender.h"
#include "ScreenReader.h"
#include "ShellWord.h"
#include "ToolError.h"

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

CheckInput inputOf(const ObjSource& source, std::uint64_t maxMemory) {
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

}  // namespace

CheckInput readCheckInput(const std::string& path, const ObjOptions& options, std::uint64_t maxMemory) {
    ScreenFile file = readScreenFile(path, maxMemory);
    if (file.format != ScreenFormat::Xml) return inputOf(objSourceOf(std::move(file), options), maxMemory);

    std::optional<CheckInput> input;
    try {
        (void)readScreen(path, maxMemory, options,
                         [&](ObjSource& source) { input = inputOf(source, maxMemory); });
    } catch (const ToolError&) {
        // Whether the text loads as it stands is no matter here.
        if (!input) throw;
    }
    if (!input)
        throw ToolError{.found = "found a screen without triangles",
                        .expected = "a mesh; there is nothing to check in other screens",
                        .file = path};
    return std::move(*input);
}

}  // namespace quarn
