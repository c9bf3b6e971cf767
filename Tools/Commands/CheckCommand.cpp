#include <CLI/CLI.hpp>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>

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
    bool isFixed = false;
    std::string fixedFile;
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
    CheckInput input = readCheckInput(options.screen, options.obj, options.maxMemory,
                                      options.isFixed ? RepairedText::Build : RepairedText::Skip, observer);
    if (options.isFixed) {
        OutputFile fixed(options.fixedFile, {options.screen});
        fixed.write(input.repairedText);
        fixed.finish();
        noteAsRepaired(input.textFindings);
    }
    const CheckReport report = reportOf(std::move(input), options);
    OutputFile output("-", {});
    output.write(options.format == ResultFormat::Json ? jsonText(reportJson(report), 2) + "\n"
                                                      : reportText(report));
    output.finish();
    if (report.problemCount() > 0)
        throw NegativeResult(
            {.found = counted(report.problemCount(), "finding"), .expected = "none", .file = options.screen});
}

}  // namespace

void registerCheckCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "check", "Look for what would make a calibration with a mesh fail",
                                   "quarnscreen check Samples/measured-dome.obj --unit mm");
    command.footer(
        "Looks for values that are not finite, triangles that are degenerate, doubled or flipped, edges of "
        "more\n"
        "than two triangles, pieces, holes, UVs that are missing, outside of 0 to 1, flat, mirrored or\n"
        "overlapping, and a size that is implausible for --unit; in STL files also for what keeps them from\n"
        "loading. Exits with 1 when something was found.\n\n" +
        command.get_footer());
    const auto options = std::make_shared<CheckOptions>();
    addScreenOptions(command, *options);
    command.remove_option(command.get_option("--output"));  // the report goes to the standard output
    CLI::Option* const fix = command.add_flag(
        "--fix", options->isFixed, "Write what can be mended without changing geometry: OBJ text that loads");
    CLI::Option* const output =
        command.add_option("-o,--output", options->fixedFile, "File for --fix to write, whole or not at all")
            ->type_name("FILE");
    fix->needs(output);
    output->needs(fix);
    command.callback([options] { run(*options); });
}

}  // namespace quarn::tool
