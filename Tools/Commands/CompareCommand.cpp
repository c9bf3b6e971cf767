#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Compare/ScreenComparison.h>

#include "Base/Diagnostics.h"
#include "Base/ErrorReport.h"
#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "CommandLine/UnitOptions.h"
#include "Commands/Commands.h"
#include "Rows/ResultRows.h"
#include "Rows/ResultWriter.h"

namespace quarn::tool {

namespace {

struct CompareOptions {
    std::string a;
    std::string b;
    ObjOptions objA;
    ObjOptions objB;
    std::string unit = "m";
    std::string max;
    std::string accuracy;
    ResultFormat format = ResultFormat::Csv;
    std::uint64_t maxMemory = defaultMemoryLimit();
    std::size_t threads = defaultThreadCount();
    std::string output = "-";
};

std::optional<double> accuracyFrom(const CompareOptions& options) {
    if (options.accuracy.empty()) return std::nullopt;
    const double accuracy = lengthFrom("--accuracy", options.accuracy, options.unit);
    if (!(accuracy > 0.0)) throw unexpectedText("--accuracy", options.accuracy, "a length above 0");
    return accuracy;
}

std::optional<double> maxFrom(const CompareOptions& options) {
    if (options.max.empty()) return std::nullopt;
    const double max = lengthFrom("--max", options.max, options.unit);
    if (!(max >= 0.0)) throw unexpectedText("--max", options.max, "a length of 0 or above");
    return max;
}

ScreenComparison compare(const CompareOptions& options, const ComparisonRequirements& requirements) {
    Screen a = openScreen(options.a, options.maxMemory, options.objA);
    Screen b = openScreen(options.b, options.maxMemory, options.objB);
    ThreadPool pool(options.threads);
    return compareScreens(std::move(a), std::move(b), requirements, pool);
}

std::string_view wordFor(DigestComparison digests) {
    switch (digests) {
        case DigestComparison::Same:
            return "same";
        case DigestComparison::Different:
            return "different";
        case DigestComparison::None:
            break;
    }
    return "none";
}

std::string_view wordFor(ComparisonLimit limit) {
    switch (limit) {
        case ComparisonLimit::None:
            break;
        case ComparisonLimit::Work:
            return "work-limit";
        case ComparisonLimit::Grid:
            return "grid-limit";
        case ComparisonLimit::Accuracy:
            return "accuracy";
    }
    return "";
}

std::vector<Column> columns() {
    return {{"comparison"},
            {"status"},
            {"max", Quantity::Length},
            {"accuracy", Quantity::Length},
            {"mean", Quantity::Length},
            {"x", Quantity::Length},
            {"y", Quantity::Length},
            {"z", Quantity::Length},
            {"samples"},
            {"reason"}};
}

constexpr std::monostate kNothing;

// A number, or an empty cell for NaN.
Cell cellOf(double number) {
    if (std::isnan(number)) return kNothing;
    return number;
}

Cell cellOf(ComparisonLimit limit) {
    if (limit == ComparisonLimit::None) return kNothing;
    return wordFor(limit);
}

std::vector<Cell> emptyCells(std::string_view comparison, std::string_view status) {
    std::vector<Cell> cells(columns().size());
    cells[0] = comparison;
    cells[1] = status;
    return cells;
}

std::vector<Cell> distanceCells(std::string_view name, const SurfaceDistance& distance,
                                const ScreenComparison& comparison) {
    return {name,
            std::string_view("measured"),
            distance.max,
            comparison.accuracyOf(distance),
            cellOf(distance.mean),
            distance.where[0],
            distance.where[1],
            distance.where[2],
            static_cast<std::int64_t>(distance.samples),
            cellOf(comparison.limitOf(distance))};
}

std::vector<Cell> uvCells(const std::optional<UvDistance>& distance) {
    constexpr std::string_view kName = "equal_uv";
    if (!distance) return emptyCells(kName, "none");
    return {kName,
            std::string_view("measured"),
            distance->max,
            kNothing,
            distance->mean,
            distance->where[0],
            distance->where[1],
            distance->where[2],
            static_cast<std::int64_t>(distance->samples),
            kNothing};
}

std::vector<Cell> verdictCells(const ScreenComparison& comparison) {
    std::vector<Cell> cells = emptyCells("verdict", nameOf(*comparison.verdict));
    cells.back() = cellOf(comparison.verdictLimit());
    return cells;
}

void writeRows(const ScreenComparison& comparison, const CompareOptions& options, OutputFile& output) {
    const std::vector<Column> head = columns();
    ResultRows rows(options.format, head);
    const auto addRow = [&](const std::vector<Cell>& cells) { rows.add(cells, HasResult::Yes); };
    ResultWriter writer(
        output, options.format,
        {.command = "compare", .members = {{"a", options.a}, {"b", options.b}}, .unit = options.unit}, head);
    addRow(emptyCells("digest", wordFor(comparison.digests)));
    addRow(distanceCells("a_to_b", comparison.aToB, comparison));
    addRow(distanceCells("b_to_a", comparison.bToA, comparison));
    addRow(uvCells(comparison.atEqualUv));
    if (comparison.verdict) addRow(verdictCells(comparison));
    writer.write(rows);
    writer.finish();
}

std::string clauseFor(ComparisonLimit limit) {
    switch (limit) {
        case ComparisonLimit::None:
        case ComparisonLimit::Accuracy:
            break;
        case ComparisonLimit::Work:
            return ", because the search reached its limit of work";
        case ComparisonLimit::Grid:
            return ", because the grid on an analytic screen reached its maximum number of cells";
    }
    return "";
}

// States what is undecided, and which options decide it.
NegativeResult undecided(const ScreenComparison& comparison, const ComparisonRequirements& requirements,
                         const std::string& unit) {
    const auto lengthText = [&](double length) { return numberText(length) + " " + unit; };
    const DistanceRange range = comparison.range();
    const ComparisonLimit limit = comparison.verdictLimit();
    if (requirements.max && range.max > *requirements.max) {
        // Fine enough if the required maximum is not very near to the distance.
        const std::string finer = "--accuracy " + roundedNumberText(range.accuracy / 10.0, 1);
        return NegativeResult(
            {.found = "undecided: the distance is between " + lengthText(range.min) + " and " +
                      lengthText(range.max) + clauseFor(limit),
             .expected = "no more than " + lengthText(*requirements.max) + "; try " +
                         (limit == ComparisonLimit::Accuracy ? finer : "a --max outside of these two")});
    }
    return NegativeResult(
        {.found = "undecided: an accuracy of " + lengthText(range.accuracy) + clauseFor(limit),
         .expected = "no more than " + lengthText(*requirements.accuracy) + "; try a coarser --accuracy"});
}

void reportVerdict(const ScreenComparison& comparison, const ComparisonRequirements& requirements,
                   const std::string& unit) {
    if (comparison.verdict == Verdict::Undecided) throw undecided(comparison, requirements, unit);
    if (comparison.verdict == Verdict::No)
        throw NegativeResult({.found = "a distance of " +
                                       numberText(std::max(comparison.aToB.max, comparison.bToA.max)) + " " +
                                       unit,
                              .expected = "no more than " + numberText(*requirements.max) + " " + unit});
}

void warnOfLimit(const ScreenComparison& comparison, const std::string& unit) {
    for (const SurfaceDistance* distance : {&comparison.aToB, &comparison.bToA})
        if (const ComparisonLimit limit = comparison.limitOf(*distance); limit != ComparisonLimit::None) {
            writeWarningLine("the accuracy of the distances is " + numberText(comparison.range().accuracy) +
                             " " + unit + clauseFor(limit));
            return;
        }
}

void run(const CompareOptions& options) {
    const ComparisonRequirements requirements{.accuracy = accuracyFrom(options), .max = maxFrom(options)};
    refuseInputAsOutput(options.output, {options.a, options.b});
    requireResultName(options.output, options.format);
    const ScreenComparison comparison = compare(options, requirements);
    OutputFile output(options.output, {options.a, options.b});
    writeRows(comparison, options, output);
    output.finish();
    if (!comparison.verdict) warnOfLimit(comparison, options.unit);
    reportVerdict(comparison, requirements, options.unit);
}

}  // namespace

void registerCompareCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "compare",
         .summary = "Measure the distance between the surfaces of two screens",
         .details = "With --max or --accuracy, a row states the verdict: yes, no, or undecided if the "
                    "bounds of the distance do not decide. The exit code is 1 unless it is yes.",
         .example = "quarnscreen compare Samples/dome.xml Samples/dome.xml --max 1mm"});
    CompareOptions& options = command.onRun(run);
    command.argument("A FILE", options.a, "OBJ or STL file, or XML file with a ScreenGeometry element")
        .required();
    command.argument("B FILE", options.b, "The other screen, as A").required();
    command.option("--max LENGTH", options.max,
                   "Exit with 1 unless no position is farther from the other surface");
    command.option(
        "--accuracy LENGTH", options.accuracy,
        "Exit with 1 unless the error of the maximum distances is no more; default 1/50,000 of the "
        "screens' size or 1/1000 of the distance, without a check");
    addObjAxisOptions(command, options.objA, "", "OBJ file A");
    addObjScaleOption(command, options.objA, "", "OBJ file A");
    addObjectOption(command, options.objA, "", "OBJ file A");
    addObjAxisOptions(command, options.objB, "-b", "OBJ file B");
    addObjScaleOption(command, options.objB, "-b", "OBJ file B");
    addObjectOption(command, options.objB, "-b", "OBJ file B");
    addRepairFlag(command, {&options.objA, &options.objB});
    addUnitOption(command, options.unit, "Unit of the lengths in both files; it is named, never converted");
    addJsonFlag(command, options.format);
    addThreadsOption(command, options.threads);
    addMemoryOption(command, options.maxMemory);
    addOutputOption(command, options.output);
}

}  // namespace quarn::tool
