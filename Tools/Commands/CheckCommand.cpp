#include <iterator>

#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Check/CheckInput.h>
#include <QuarnKit/Check/MeshCheck.h>

#include "Base/ScreenInput.h"
#include "Base/ToolError.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Reports/CheckReport.h"

namespace quarn::tool {

namespace {

struct CheckOptions : ScreenOptions {
    RepairedText repairedText = RepairedText::Skip;
    std::string repairedFile;
};

// What was mended is no problem any more.
void noteAsRepaired(std::vector<Finding>& findings) {
    for (Finding& finding : findings) {
        finding.severity = Severity::Note;
        finding.text = "mended " + finding.text;
        finding.hint = "geometry, order and UVs stay";
        finding.remedy = {};
    }
}

CheckReport reportOf(CheckInput input, const CheckOptions& options) {
    CheckReport report{.file = options.screen,
                       .unit = options.unit,
                       .triangles = input.triangles.size(),
                       .findings = std::move(input.textFindings)};
    std::vector<Finding> ofMesh = checkMesh(input.mesh(), options.unit);
    report.findings.insert(report.findings.end(), std::make_move_iterator(ofMesh.begin()),
                           std::make_move_iterator(ofMesh.end()));
    return report;
}

void run(const CheckOptions& options) {
    ConsoleObserver observer;
    CheckInput input =
        readCheckInput(options.screen, options.obj, options.maxMemory, options.repairedText, observer);
    if (options.repairedText == RepairedText::Build) {
        OutputFile repaired(options.repairedFile, {options.screen});
        repaired.write(input.repairedText);
        repaired.finish();
        noteAsRepaired(input.textFindings);
    }
    const CheckReport report = reportOf(std::move(input), options);
    OutputFile output("-", {});
    output.write(options.format == ResultFormat::Json ? reportJson(report).text(JsonLayout::Indented) + "\n"
                                                      : reportText(report));
    output.finish();
    if (report.problemCount() > 0)
        throw NegativeResult(
            {.found = counted(report.problemCount(), "finding"), .expected = "none", .file = options.screen});
}

}  // namespace

void registerCheckCommand(Command& tool) {
    Command command = tool.addCommand({.name = "check",
                                       .summary = "Look for what would make a calibration with a mesh fail",
                                       .details = "Looks for values that are not finite, triangles that are "
                                                  "degenerate, doubled or flipped, edges of "
                                                  "more\nthan two triangles, pieces, holes, UVs that are "
                                                  "missing, outside of 0 to 1, flat, mirrored or"
                                                  "\noverlapping, and a size that is implausible for --unit; "
                                                  "in STL files also for what keeps them from"
                                                  "\nloading. Exits with 1 when something was found.",
                                       .example = "quarnscreen check Samples/measured-dome.obj --unit mm"});
    CheckOptions& options = command.onRun(run);
    addScreenInput(command, options);
    addJsonFlag(command, options.format);
    addMemoryOption(command, options.maxMemory);
    Option fix = command.flag("--fix", options.repairedText, RepairedText::Build,
                              "Write what can be mended without changing geometry: OBJ text that loads");
    Option output = command.option("-o,--output FILE", options.repairedFile,
                                   "File for --fix to write, whole or not at all");
    fix.needs(output);
    output.needs(fix);
}

}  // namespace quarn::tool
