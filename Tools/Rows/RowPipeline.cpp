#include "Rows/RowPipeline.h"

#include <algorithm>

#include "Base/LogWarnings.h"

namespace quarn {

namespace {

// A thread's share of a block: some thousand rows, which take it a few milliseconds, so that threads seldom wait for
// each other.
constexpr std::size_t kBlockBytesPerThread = 262144;
// A part: so small that the threads end at about the same time, and so large that handing it out costs nothing.
constexpr std::size_t kPartBytes = 8192;

}  // namespace

RowPipeline::RowPipeline(InputFile source, std::vector<std::string> columnNames, std::size_t threads)
    : blocks(std::move(source), threads * kBlockBytesPerThread),
      format(std::move(columnNames)),
      team(threads) {}

void RowPipeline::run(const RowAnswer& answer, RowSink& sink) {
    std::string_view lines;
    while (blocks.next(lines)) {
        lineCount += head.skip(lines);
        split(lines, sink);
        team.run(partCount, [this](std::size_t i) { parts[i].rows.read(parts[i].lines, format); });
        countRows();
        team.run(partCount, [&](std::size_t i) { answerPart(parts[i], answer); });
        write(sink);
        sink.flush();
    }
}

void RowPipeline::split(std::string_view lines, const RowSink& sink) {
    partCount = 0;
    while (!lines.empty()) {
        const std::size_t feed = lines.find('\n', std::min(kPartBytes, lines.size()) - 1);
        const std::size_t length = feed == std::string_view::npos ? lines.size() : feed + 1;
        if (partCount == parts.size()) parts.emplace_back(sink.makeRows());
        parts[partCount].lines = lines.substr(0, length);
        ++partCount;
        lines.remove_prefix(length);
    }
}

// Numbers the rows, as far as the first part with a line that is wrong.
void RowPipeline::countRows() {
    for (std::size_t i = 0; i < partCount; ++i) {
        Part& part = parts[i];
        part.rowsBefore = rowCount;
        rowCount += static_cast<std::int64_t>(part.rows.numbers.size() / format.columnCount());
        if (part.rows.error) partCount = i + 1;
    }
}

void RowPipeline::answerPart(Part& part, const RowAnswer& answer) const {
    part.answers.clear();
    part.error = nullptr;
    part.warnings.clear();
    const HeldLogWarnings held(part.warnings);
    try {
        std::int64_t number = part.rowsBefore;
        std::span<const double> rest = part.rows.numbers;
        for (; !rest.empty(); rest = rest.subspan(format.columnCount()))
            answer(++number, rest.first(format.columnCount()), part.answers);
    } catch (...) {
        part.error = std::current_exception();
    }
}

void RowPipeline::write(RowSink& sink) {
    for (std::size_t i = 0; i < partCount; ++i) {
        const Part& part = parts[i];
        for (const std::string& warning : part.warnings) addLogWarning(warning);
        sink.write(part.answers);
        if (part.error) std::rethrow_exception(part.error);
        lineCount += part.rows.lineCount;
        if (part.rows.error) throw errorAt(*part.rows.error, blocks.name(), lineCount);
    }
}

}  // namespace quarn
