#include <future>
#include <iterator>
#include <memory>
#include <utility>

#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Check/CheckInput.h>
#include <QuarnKit/Check/MeshCheck.h>
#include <QuarnKit/Formats/OutputName.h>

#include "Base/Diagnostics.h"
#include "Base/ErrorReport.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Reports/CheckReport.h"

namespace quarn::tool {

namespace {

struct CheckOptions : ScreenOptions {
    RepairedText repairedText = RepairedText::Skip;
    UvChecks uvChecks = UvChecks::All;
    std::string repairedFile;
};

// Turns findings that were repaired into notes.
void noteAsRepaired(std::vector<Finding>& findings) {
    for (Finding& finding : findings) {
        if (finding.remedy.kind != RemedyKind::RepairFile) continue;
        finding.severity = Severity::Note;
        finding.text = "repaired " + finding.text;
        finding.hint = "geometry, order and UVs stay";
        finding.remedy = {};
    }
}

// As the other commands state repairs.
void writeRepairs(const std::vector<Finding>& findings, const std::string& file) {
    for (const Finding& finding : findings) {
        if (finding.remedy.kind != RemedyKind::RepairFile) continue;
        const std::uint64_t line = finding.places.empty() ? 0 : finding.places.front().line;
        writeNoteLine(withLocation(file, line, "repaired " + finding.text));
    }
}

CheckReport reportOf(CheckInput input, const CheckOptions& options) {
    CheckReport report{.file = options.screen,
                       .unit = options.unit,
                       .triangles = input.triangles.size(),
                       .findings = std::move(input.textFindings)};
    std::vector<Finding> ofMesh = checkMesh(input.mesh(), options.unit, options.uvChecks);
    for (Finding& finding : ofMesh)
        if (finding.name == "missing-uv") finding.hint += "; if no UV is needed, add --without-uv";
    report.findings.insert(report.findings.end(), std::make_move_iterator(ofMesh.begin()),
                           std::make_move_iterator(ofMesh.end()));
    return report;
}

// Writes a file on another thread, or during the call of get() if no thread starts.
std::future<void> writeInBackground(const CheckOptions& options, std::string text) {
    auto file = std::make_unique<OutputFile>(options.repairedFile, std::vector{options.screen});
    return std::async([file = std::move(file), text = std::move(text)] {
        file->write(text);
        file->finish();
    });
}

void run(const CheckOptions& options) {
    if (options.repairedText == RepairedText::Build) requireOutputName(options.repairedFile, {"obj"});
    ConsoleObserver observer;
    CheckInput input =
        readCheckInput(options.screen, options.obj, options.maxMemory, options.repairedText, observer);
    std::future<void> repairedFile;
    if (options.repairedText == RepairedText::Build)
        repairedFile = writeInBackground(options, std::move(input.repairedText));
    const bool isRepaired = options.obj.repair == RepairPolicy::Repair;
    const std::vector<Finding> textFindings = input.textFindings;
    if (isRepaired || options.repairedText == RepairedText::Build) noteAsRepaired(input.textFindings);
    const CheckReport report = reportOf(std::move(input), options);
    if (repairedFile.valid()) repairedFile.get();
    if (isRepaired) writeRepairs(textFindings, options.screen);
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
    Command command = tool.addCommand(
        {.name = "check",
         .summary = "Check a mesh for defects that make a calibration fail",
         .details =
             "Checks for values that are not finite; degenerate, duplicate and flipped triangles; "
             "non-manifold edges;\nseveral components; holes; UVs that are missing, outside of 0 to 1, "
             "degenerate, mirrored or\noverlapping; a size that is implausible for --unit; positions that "
             "single precision rounds; concave\nfaces whose triangles overlap; in STL files also for defects "
             "that prevent loading. Exits with 1 if\nthere are findings.\nSTL files have no UV: add "
             "--without-uv if none is needed.",
         .example = "quarnscreen check Samples/measured-dome.obj --unit mm"});
    CheckOptions& options = command.onRun(run);
    addScreenInput(command, options);
    addJsonFlag(command, options.format);
    addMemoryOption(command, options.maxMemory);
    Option fix = command.flag("--fix", options.repairedText, RepairedText::Build,
                              "Write a repaired OBJ text, geometry unchanged");
    Option output = command.option("-o,--output FILE", options.repairedFile,
                                   "File for --fix to write, replaced atomically");
    fix.needs(output);
    output.needs(fix);
    command.flag("--without-uv", options.uvChecks, UvChecks::None,
                 "Skip the checks of UVs, for a mesh that is not used for mapping");
}

}  // namespace quarn::tool
