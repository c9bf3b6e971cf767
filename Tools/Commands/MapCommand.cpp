#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "Commands/Answers.h"
#include "Commands/Commands.h"
#include "Commands/Options.h"
#include "Csv.h"
#include "Finite.h"
#include "ScreenReader.h"

namespace quarn {

namespace {

struct MapOptions : QueryOptions {
    std::string to;
    std::string points = "-";
    bool extrapolates = false;
};

// A position with the word that says how it was got.
template <std::size_t N>
struct Mapped {
    std::string_view status = "outside";
    Point<double, N> point;
    [[nodiscard]] bool isAnswer() const { return status != "outside"; }
};

Mapped<3> mapTo3D(const IScreenGeometry& geometry, const Point<double, 2>& uv, bool extrapolates) {
    Point<double, 3> point;
    if (geometry.mapInto3D(uv, point, false) && isFinite(point)) return {"on_screen", point};
    if (extrapolates && geometry.mapInto3D(uv, point, true) && isFinite(point))
        return {"extrapolated", point};
    return {};
}

Mapped<2> mapTo2D(const IScreenGeometry& geometry, const Point<double, 3>& point, bool extrapolates) {
    const auto isAnswer = [](const Point<double, 2>& uv) { return isFinite(uv) && uv != kNoUV; };
    if (geometry.isOnScreenSection(point)) {
        const Point<double, 2> uv = geometry.mapInto2D(point, false);
        if (isAnswer(uv)) return {"on_screen", uv};
    }
    if (extrapolates) {
        const Point<double, 2> uv = geometry.mapInto2D(point, true);
        if (isAnswer(uv)) return {"extrapolated", uv};
    }
    return {};
}

template <std::size_t N>
void addRow(Answers& answers, const std::vector<double>& numbers, const Mapped<N>& mapped) {
    std::vector<Cell> cells(numbers.begin(), numbers.end());
    cells.emplace_back(mapped.status);
    for (std::size_t i = 0; i < N; ++i) cells.push_back(mapped.isAnswer() ? Cell(mapped.point[i]) : Cell());
    answers.add(cells, mapped.isAnswer() ? Answered::Yes : Answered::No);
}

std::vector<Column> columnsTo(bool to3D) {
    const std::vector<Column> uv = {{"u"}, {"v"}};
    std::vector<Column> columns = to3D ? uv : positionColumns();
    columns.push_back({"status"});
    for (const Column& column : to3D ? positionColumns() : uv) columns.push_back(column);
    return columns;
}

void run(const MapOptions& options) {
    const bool to3D = options.to == "3d";
    const Screen screen = readScreen(options.screen, options.maxMemory, options.obj);
    const std::vector<std::string> inputNames =
        to3D ? std::vector<std::string>{"u", "v"} : std::vector<std::string>{"x", "y", "z"};
    CsvReader points(InputFile::orStandardInput(options.points, "a CSV file of points"), inputNames);
    warnWithoutUV(screen);
    Answers answers(options, {options.screen, options.points},
                    {{"command", "map"}, {"screen", screen.file}, {"to", options.to}}, columnsTo(to3D));

    std::vector<double> numbers;
    while (points.next(numbers)) {
        if (to3D)
            addRow(answers, numbers,
                   mapTo3D(*screen.geometry, {numbers[0], numbers[1]}, options.extrapolates));
        else
            addRow(answers, numbers, mapTo2D(*screen.geometry, pointAt(numbers, 0), options.extrapolates));
        answers.flushBeforeWaiting(points);
    }
    answers.finish();
}

}  // namespace

void registerMapCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "map", "Map UV to positions on the screen, or positions to UV",
                                   "quarnscreen map Samples/flat-wall.xml --to 3d Samples/flat-wall-uv.csv");
    const auto options = std::make_shared<MapOptions>();
    addQueryOptions(command, *options);
    addCsvInput(command, "POINTS", options->points,
                "CSV with u,v for --to 3d or x,y,z for --to 2d; - is the standard input")
        .capture_default_str();
    command.add_option("--to", options->to, "What to map to")->required()->check(CLI::IsMember({"3d", "2d"}));
    command.add_flag("--extrapolate", options->extrapolates, "Answer beyond the screen too");
    command.callback([options] { run(*options); });
}

}  // namespace quarn
