#include <algorithm>
#include <array>
#include <cmath>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Compare/Surface.h>
#include <QuarnKit/Compare/SurfaceDistance.h>
#include <QuarnKit/Compare/UvDistance.h>

#include "Base/ScreenInput.h"
#include "Base/ToolError.h"
#include "CommandLine/Options.h"
#include "CommandLine/UnitOptions.h"
#include "Commands/Commands.h"
#include "Rows/ResultRows.h"
#include "Rows/ResultWriter.h"

namespace quarn::tool {

namespace {

// Default accuracy of the maximum distance, as a fraction of the screens' size.
constexpr double kDefaultAccuracy = 2e-5;
// The chord error that the triangles of each analytic screen may have, as a fraction of the
// accuracy.
constexpr double kChordErrorRatio = 0.25;

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

// The results for two screens.
struct Comparison {
    std::string_view digests;  // status of their comparison
    std::optional<UvDistance> atEqualUv;
    double chordErrors = 0.0;  // sum over both surfaces
    SurfaceDistance aToB;
    SurfaceDistance bToA;

    [[nodiscard]] double max() const { return std::max(aToB.max, bToA.max); }
};

double accuracyFrom(const CompareOptions& options, const Screen& a, const Screen& b) {
    if (options.accuracy.empty()) return kDefaultAccuracy * std::max(sizeOf(a), sizeOf(b));
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

using Digest = std::array<unsigned char, 20>;

// A digest of zero bytes only, as that of an STL screen, carries no information.
std::string_view digestStatus(const Digest& a, const Digest& b) {
    constexpr Digest kNoDigest{};
    if (a == kNoDigest || b == kNoDigest) return "none";
    return a == b ? "same" : "different";
}

// The surfaces of two screens. The screens themselves are released before the measurement, because
// both may be large.
struct Surfaces {
    Surface a;
    Surface b;
    double accuracy = 0.0;
};

Surfaces readInto(Comparison& comparison, const CompareOptions& options) {
    const Screen a = openScreen(options.a, options.maxMemory, options.objA);
    const Screen b = openScreen(options.b, options.maxMemory, options.objB);
    comparison.digests = digestStatus(a.geometry->getUniqueDataHash(), b.geometry->getUniqueDataHash());
    comparison.atEqualUv = uvDistance(*a.geometry, *b.geometry);
    const double accuracy = accuracyFrom(options, a, b);
    return {.a = surfaceOf(a, accuracy * kChordErrorRatio),
            .b = surfaceOf(b, accuracy * kChordErrorRatio),
            .accuracy = accuracy};
}

void measure(const Surfaces& surfaces, const CompareOptions& options, Comparison& comparison) {
    comparison.chordErrors = surfaces.a.chordError + surfaces.b.chordError;
    const double accuracy = surfaces.accuracy * (1.0 - 2.0 * kChordErrorRatio);
    ThreadPool pool(options.threads);
    std::array<std::optional<TriangleTree>, 2> trees;
    pool.parallelFor(trees.size(), [&](std::size_t i) {
        trees.at(i).emplace((i == 0 ? surfaces.a : surfaces.b).triangles);
    });
    comparison.aToB = surfaceDistance(surfaces.a.triangles, *trees[1], accuracy, pool);
    comparison.bToA = surfaceDistance(surfaces.b.triangles, *trees[0], accuracy, pool);
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
            {"samples"}};
}

constexpr std::monostate kNothing;

// A number, or an empty cell for NaN.
Cell cellOf(double number) {
    if (std::isnan(number)) return kNothing;
    return number;
}

std::vector<Cell> emptyCells(std::string_view comparison, std::string_view status) {
    std::vector<Cell> cells(columns().size());
    cells[0] = comparison;
    cells[1] = status;
    return cells;
}

std::vector<Cell> distanceCells(std::string_view comparison, const SurfaceDistance& distance,
                                double chordErrors) {
    return {comparison,
            std::string_view("measured"),
            distance.max,
            distance.bound - distance.max + chordErrors,
            cellOf(distance.mean),
            distance.where[0],
            distance.where[1],
            distance.where[2],
            static_cast<std::int64_t>(distance.samples)};
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
            static_cast<std::int64_t>(distance->samples)};
}

void run(const CompareOptions& options) {
    const std::optional<double> max = maxFrom(options);
    Comparison comparison;
    const Surfaces surfaces = readInto(comparison, options);
    OutputFile output(options.output, {options.a, options.b});
    requireResultName(options.output, options.format);
    measure(surfaces, options, comparison);
    const std::vector<Column> head = columns();
    ResultRows rows(options.format, head);
    const auto addRow = [&](const std::vector<Cell>& cells) { rows.add(cells, HasResult::Yes); };
    ResultWriter writer(
        output, options.format, options.maxMemory,
        {.command = "compare", .members = {{"a", options.a}, {"b", options.b}}, .unit = options.unit}, head);
    addRow(emptyCells("digest", comparison.digests));
    addRow(distanceCells("a_to_b", comparison.aToB, comparison.chordErrors));
    addRow(distanceCells("b_to_a", comparison.bToA, comparison.chordErrors));
    addRow(uvCells(comparison.atEqualUv));
    writer.write(rows);
    writer.finish();
    output.finish();
    if (max && comparison.max() > *max)
        throw NegativeResult({.found = "a distance of " + numberText(comparison.max()) + " " + options.unit,
                              .expected = "no more than " + numberText(*max) + " " + options.unit});
}

}  // namespace

void registerCompareCommand(Command& tool) {
    Command command =
        tool.addCommand({.name = "compare",
                         .summary = "Measure the distance between the surfaces of two screens",
                         .example = "quarnscreen compare Samples/dome.xml Samples/dome.xml --max 1mm"});
    CompareOptions& options = command.onRun(run);
    command.argument("A FILE", options.a, "OBJ or STL file, or XML file with a ScreenGeometry element")
        .required();
    command.argument("B FILE", options.b, "The other screen, as A").required();
    command.option("--max LENGTH", options.max,
                   "Exit with 1 if a position is farther from the other surface");
    command.option("--accuracy LENGTH", options.accuracy,
                   "Tolerance of the maximum distances; default 1/50,000 of the screens' size");
    addObjAxisOptions(command, options.objA, "", "OBJ file A");
    addObjScaleOption(command, options.objA, "", "OBJ file A");
    addObjAxisOptions(command, options.objB, "-b", "OBJ file B");
    addObjScaleOption(command, options.objB, "-b", "OBJ file B");
    addUnitOption(command, options.unit, "Unit of the lengths in both files; it is named, never converted");
    addJsonFlag(command, options.format);
    addThreadsOption(command, options.threads);
    addMemoryOption(command, options.maxMemory);
    addOutputOption(command, options.output);
}

}  // namespace quarn::tool
