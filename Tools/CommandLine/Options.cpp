#include "CommandLine/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <limits>
#include <thread>

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

struct CountRange {
    int min;
    int max;
};

constexpr CountRange kGridCounts = {2, std::numeric_limits<int>::max()};
// More threads than any machine that the tool is used on has processors.
constexpr CountRange kThreadCounts = {1, 256};

int countFrom(const std::string& name, const std::string& text, const CountRange& range) {
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size() || count < range.min || count > range.max)
        throw Error({.found = "found " + name + " " + quotedExcerpt(text),
                     .expected = "a whole number from " + std::to_string(range.min) + " to " +
                                 std::to_string(range.max)});
    return count;
}

void addAxisOption(CLI::App& command, const std::string& name, std::optional<std::string>& axis,
                   const std::string& description) {
    command
        .add_option_function<std::string>(
            name, [&axis](const std::string& text) { axis = text; }, description)
        ->check(CLI::IsMember({"X", "Y", "Z", "-X", "-Y", "-Z"}))
        ->type_name("AXIS");
}

// Cells of a grid that is written, each way; a mesh of them has 33 million triangles.
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

CLI::App& addCommand(CLI::App& tool, const std::string& name, const std::string& description,
                     const std::string& example) {
    CLI::App* command = tool.add_subcommand(name, description);
    command->footer("Example:\n  " + example);
    return *command;
}

void addScreenOptions(CLI::App& command, ScreenOptions& options) {
    command
        .add_option("SCREEN", options.screen, "OBJ or STL file, or XML file with a ScreenGeometry element")
        ->required()
        ->type_name("FILE");
    addObjOptions(command, options.obj);
    addUnitOption(command, options.unit, "Unit of the lengths in all files; it is named, never converted");
    command.add_flag_callback(
        "--json", [&options] { options.format = ResultFormat::Json; }, "Answer with one JSON document");
    addMemoryOption(command, options.maxMemory);
    addOutputOption(command, options.output);
}

void addQueryOptions(CLI::App& command, QueryOptions& options) {
    addScreenOptions(command, options);
    command.add_flag("--require", options.areResultsRequired, "Exit with 1 when a row has no answer");
}

void addObjOptions(CLI::App& command, ObjOptions& options) {
    addObjAxisOptions(command, options);
    addObjScaleOption(command, options);
}

void addObjAxisOptions(CLI::App& command, ObjOptions& options, const std::string& suffix,
                       const std::string& file) {
    addAxisOption(command, "--forward" + suffix, options.forward,
                  file + ": axis that leads away from the viewer; Y if not told");
    addAxisOption(command, "--up" + suffix, options.upward,
                  file + ": axis that leads upwards; Z if not told");
}

void addObjScaleOption(CLI::App& command, ObjOptions& options, const std::string& suffix,
                       const std::string& file) {
    const std::string name = "--scale" + suffix;
    command
        .add_option_function<std::string>(
            name, [&options, name](const std::string& text) { options.scale = objScaleFrom(name, text); },
            file + ": factor of all positions; 1 if not told")
        ->type_name("FACTOR");
}

std::size_t defaultThreadCount() {
    const auto max = static_cast<unsigned int>(kThreadCounts.max);
    return std::clamp(std::thread::hardware_concurrency(), 1U, max);
}

void addThreadsOption(CLI::App& command, std::size_t& threads) {
    const std::string name = "--threads";
    command
        .add_option_function<std::string>(
            name,
            [name, &threads](const std::string& text) {
                threads = static_cast<std::size_t>(countFrom(name, text, kThreadCounts));
            },
            "Threads that answer; one for each processor if not told. The answers are the same")
        ->type_name("COUNT");
}

void addUnitOption(CLI::App& command, std::string& unit, const std::string& description) {
    command.add_option("--unit", unit, description)
        ->check(CLI::IsMember(lengthUnitNames()))
        ->type_name("NAME")
        ->capture_default_str();
}

CLI::Option& addOutputOption(CLI::App& command, std::string& path) {
    return *command
                .add_option("-o,--output", path,
                            "File to write, whole or not at all; - is the standard output")
                ->type_name("FILE")
                ->capture_default_str();
}

void addMemoryOption(CLI::App& command, std::uint64_t& maxMemory) {
    command
        .add_option_function<std::string>(
            "--max-memory", [&maxMemory](const std::string& text) { maxMemory = memorySizeFrom(text); },
            "Refuse inputs that could need more, such as 500M or 2G; by default 3/4 of the free memory")
        ->type_name("SIZE");
}

CLI::Option& addGridOption(CLI::App& command, GridSize& grid) {
    return *command
                .add_option_function<std::string>(
                    "--grid", [&grid](const std::string& text) { grid = gridSizeFrom(text); },
                    "Cells of the mesh that a shape becomes")
                ->type_name("ROWSxCOLUMNS")
                ->default_str(std::to_string(grid.rows) + "x" + std::to_string(grid.columns));
}

void addCountOption(CLI::App& command, const std::string& name, int& count, const std::string& description) {
    command
        .add_option_function<std::string>(
            name, [name, &count](const std::string& text) { count = countFrom(name, text, kGridCounts); },
            description)
        ->type_name("COUNT")
        ->default_str(std::to_string(count));
}

CLI::Option& addCsvInput(CLI::App& command, const std::string& name, std::string& path,
                         const std::string& description) {
    return *command.add_option(name, path, description)->type_name("FILE");
}

}  // namespace quarn::tool
