// The tool's results for many UVs, number text included, compared with the library's for the same
// UVs in memory.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/OutputFile.h>
#include "Inputs/BenchMeshes.h"
#include "Rows/MapRows.h"
#include "Support/Rng.h"

namespace {

using quarn::OutputFile;
using quarn::bench::add;
using quarn::bench::BenchScreen;
using quarn::bench::forEachMesh;
using quarn::bench::MeshCase;
using quarn::bench::Order;
using quarn::bench::screenOf;
using quarn::tool::Column;
using quarn::tool::ResultFormat;
using quarn::tool::ResultRows;

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

constexpr std::size_t kRows = 1'000'000;

std::size_t threadCount() {
    return std::max(1U, std::thread::hardware_concurrency());
}

const std::vector<Point2>& manyUVs() {
    static const std::vector<Point2> uvs = [] {
        std::vector<Point2> randomUVs;
        quarn::test::Rng rng(8);
        while (randomUVs.size() < kRows) {
            const double u = rng.uniform(0.0, 1.0);
            randomUVs.emplace_back(u, rng.uniform(0.0, 1.0));
        }
        return randomUVs;
    }();
    return uvs;
}

// Two files in the folder for temporary ones, which go with the program.
class Files {
public:
    Files() : input(nameOf("uv.csv")), output(nameOf("xyz.csv")) {
        OutputFile file(input, {});
        std::string line;
        for (const Point2& uv : manyUVs()) {
            line.clear();
            quarn::appendNumber(line, uv[0]);
            line += ',';
            quarn::appendNumber(line, uv[1]);
            line += '\n';
            file.write(line);
        }
        file.finish();
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    ~Files() {
        std::filesystem::remove(input);
        std::filesystem::remove(output);
    }

    std::string input;
    std::string output;

private:
    static std::string nameOf(const std::string& end) {
        return std::filesystem::temp_directory_path() / ("quarn-bench-" + std::to_string(::getpid()) + end);
    }
};

class FileSink : public quarn::tool::RowSink {
public:
    explicit FileSink(const std::string& path) : file(path, {}) {}

    [[nodiscard]] ResultRows makeRows() const override { return {ResultFormat::Csv, columns}; }
    void write(const ResultRows& rows) override {
        file.write(rows.text());
        count += rows.rowCount();
    }
    void flush() override { file.flush(); }

    std::uint64_t finish() {
        file.finish();
        return count;
    }

private:
    std::vector<Column> columns = {{"u"}, {"v"}, {"status"}, {"x"}, {"y"}, {"z"}};
    OutputFile file;
    std::uint64_t count = 0;
};

void queryTool(benchmark::State& state, const MeshCase& mesh) {
    static const Files files;
    const quarn::tool::RowQuery query =
        quarn::tool::mapRows(screenOf(mesh), quarn::tool::MapTarget::Position, quarn::BeyondScreen::Reject);
    for ([[maybe_unused]] auto _ : state) {
        FileSink sink(files.output);
        quarn::tool::RowPipeline rows({files.input, "a CSV file"}, quarn::tool::uvInput(), "m",
                                      threadCount());
        rows.run(query, sink);
        if (sink.finish() != kRows) return state.SkipWithError("rows are missing");
    }
}

void queryLibrary(benchmark::State& state, const MeshCase& mesh) {
    const BenchScreen& screen = screenOf(mesh);
    const std::vector<Point2>& uvs = manyUVs();
    std::vector<Point3> points(uvs.size());
    for ([[maybe_unused]] auto _ : state) {
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < threadCount(); ++thread) {
            threads.emplace_back([&, thread] {
                const std::size_t end = (thread + 1) * uvs.size() / threadCount();
                for (std::size_t i = thread * uvs.size() / threadCount(); i < end; ++i)
                    screen.mapInto3D(uvs[i], points[i], false);
            });
        }
        for (std::thread& thread : threads) thread.join();
        benchmark::DoNotOptimize(points.data());
    }
}

void addAll(const MeshCase& mesh) {
    add("map-rows", mesh, "tool", queryTool)->UseRealTime();
    add("map-rows", mesh, "library", queryLibrary)->UseRealTime();
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
