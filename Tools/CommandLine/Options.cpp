#include "CommandLine/Options.h"

#include <charconv>
#include <limits>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Base/Units.h>

namespace quarn::tool {

namespace {

std::uint64_t memorySizeFrom(const std::string& text) {
    const auto size = parseMemorySize(text);
    if (!size)
        throw Error(
            {.found = "found --max-memory \"" + text + "\"", .expected = "a size such as 500M or 2G"});
    return *size;
}

constexpr CountRange kGridCounts = {2, std::numeric_limits<int>::max()};
constexpr CountRange kThreadCounts = {1, kMaxThreads};

int countFrom(const std::string& name, const std::string& text, const CountRange& range) {
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size() || count < range.min || count > range.max)
        throw Error({.found = "found " + name + " " + quotedExcerpt(text),
                     .expected = "a whole number from " + std::to_string(range.min) + " to " +
                                 std::to_string(range.max)});
    return count;
}

void addAxisOption(Command& command, const std::string& name, std::optional<std::string>& axis,
                   const std::string& description) {
    command
        .option(
            name + " AXIS", [&axis](const std::string& text) { axis = text; }, description)
        .choices({"X", "Y", "Z", "-X", "-Y", "-Z"});
}

// Cells of a grid in each direction. The largest mesh has 33 million triangles.
constexpr int kMaxCells = 4096;

GridSize gridSizeFrom(const std::string& text) {
    const std::size_t times = text.find('x');
    const auto cells = [&](std::string_view part) {
        int count = 0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), count);
        const bool isCount =
            error == std::errc() && end == part.data() + part.size() && count >= 1 && count <= kMaxCells;
        if (times == std::string::npos || !isCount)
            throw Error(
                {.found = "found --grid " + quotedExcerpt(text),
                 .expected = "rows and columns from 1 to " + std::to_string(kMaxCells) + ", such as 32x64"});
        return count;
    };
    const std::string_view view = text;
    return {.rows = cells(view.substr(0, times)), .columns = cells(view.substr(times + 1))};
}

}  // namespace

void addScreenInput(Command& command, ScreenOptions& options) {
    command
        .argument("SCREEN FILE", options.screen, "OBJ or STL file, or XML file with a ScreenGeometry element")
        .required();
    addObjOptions(command, options.obj);
    addObjectOption(command, options.obj);
    addRepairFlag(command, {&options.obj});
    addUnitOption(command, options.unit, "Unit of the lengths in all files; it is named, never converted");
}

Option addScreenOptions(Command& command, ScreenOptions& options) {
    addScreenInput(command, options);
    const Option json = addJsonFlag(command, options.format);
    addMemoryOption(command, options.maxMemory);
    addOutputOption(command, options.output);
    return json;
}

void addResultOptions(Command& command, ScreenOptions& options) {
    const Option json = addScreenOptions(command, options);
    command
        .flag("--npy", options.format, ResultFormat::Npy,
              "Write a NumPy array of float64 with the columns of the CSV; also if FILE ends with .npy. "
              "Empty cells are NaN, and a status is a number: 1 on the screen, 2 extrapolated, 3 boundary, "
              "0 no result, -1 empty row")
        .excludes(json);
}

void addQueryOptions(Command& command, QueryOptions& options) {
    addResultOptions(command, options);
    command.flag("--require", options.areResultsRequired, true, "Exit with 1 if a row has no result");
}

void addPointOptions(Command& command, PointOptions& options) {
    addQueryOptions(command, options);
    addThreadsOption(command, options.threads);
    command.argument("POINTS FILE", options.points, "CSV or .npy with x,y,z; - is the standard input");
}

void addObjOptions(Command& command, ObjOptions& options) {
    addObjAxisOptions(command, options);
    addObjScaleOption(command, options);
}

void addObjAxisOptions(Command& command, ObjOptions& options, const std::string& suffix,
                       const std::string& file) {
    addAxisOption(command, "--forward" + suffix, options.forward,
                  file + ": axis that points away from the viewer; default Y");
    addAxisOption(command, "--up" + suffix, options.upward, file + ": axis that points up; default Z");
}

void addObjScaleOption(Command& command, ObjOptions& options, const std::string& suffix,
                       const std::string& file) {
    const std::string name = "--scale" + suffix;
    command.option(
        name + " FACTOR",
        [&options, name](const std::string& text) { options.scale = objScaleFrom(name, text); },
        file + ": factor of all positions; default 1");
}

void addObjectOption(Command& command, ObjOptions& options, const std::string& suffix,
                     const std::string& file) {
    command.repeatedOption("--object" + suffix + " NAME", options.objects,
                           file + ": object or group to read; give it again for more; default all");
}

void addRepairFlag(Command& command, const std::vector<ObjOptions*>& targets) {
    command.flag(
        "--repair",
        [targets] {
            for (ObjOptions* const target : targets) target->repair = RepairPolicy::Repair;
        },
        "Repair a mesh in memory as convert does, and state the repairs");
}

void addUnitOption(Command& command, std::string& unit, const std::string& description) {
    command.option("--unit NAME", unit, description).choices(lengthUnitNames());
}

Option addJsonFlag(Command& command, ResultFormat& format) {
    return command.flag("--json", format, ResultFormat::Json, "Write one JSON document");
}

void addThreadsOption(Command& command, std::size_t& threads) {
    command.option(
        "--threads COUNT",
        [&threads](const std::string& text) {
            threads = static_cast<std::size_t>(countFrom("--threads", text, kThreadCounts));
        },
        "Worker threads; default one per processor. The results do not depend on it");
}

void addMemoryOption(Command& command, std::uint64_t& maxMemory) {
    command.option(
        "--max-memory SIZE", [&maxMemory](const std::string& text) { maxMemory = memorySizeFrom(text); },
        "Reject inputs that could need more, such as 500M or 2G; default 3/4 of the free memory");
}

Option addOutputOption(Command& command, std::string& path, const std::string& description) {
    return command.option("-o,--output FILE", path, description);
}

void addGridOption(Command& command, std::optional<GridSize>& grid) {
    constexpr GridSize kDefault;
    command
        .option(
            "--grid ROWSxCOLUMNS", [&grid](const std::string& text) { grid = gridSizeFrom(text); },
            "Cells of the mesh generated from an analytic screen")
        .defaultText(std::to_string(kDefault.rows) + "x" + std::to_string(kDefault.columns));
}

void addVDirectionOption(Command& command, VDirection& direction, const std::string& description) {
    command
        .choice("--v DIRECTION", direction, {{"down", VDirection::Downward}, {"up", VDirection::Upward}},
                description)
        .defaultText("down");
}

GridSize gridFor(const Screen& screen, const std::optional<GridSize>& grid) {
    const GridSize size = grid.value_or(GridSize());
    if (screen.mesh) return size;
    if (const auto expected = expectedInsteadOf(size, *screen.geometry))
        throw Error({.found = "found " + std::string(grid ? "" : "the default ") + "--grid " +
                              std::to_string(size.rows) + "x" + std::to_string(size.columns),
                     .expected = *expected,
                     .file = screen.file});
    return size;
}

void addNumberOption(Command& command, const std::string& name, int& count, const CountRange& range,
                     const std::string& description) {
    command
        .option(
            name + " COUNT",
            [name, range, &count](const std::string& text) { count = countFrom(name, text, range); },
            description)
        .defaultText(std::to_string(count));
}

void addCountOption(Command& command, const std::string& name, int& count, const std::string& description) {
    addNumberOption(command, name, count, kGridCounts, description);
}

}  // namespace quarn::tool
