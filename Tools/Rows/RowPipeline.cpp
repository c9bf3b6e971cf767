#include "Rows/RowPipeline.h"

#include "Base/LogWarnings.h"

namespace quarn::tool {

namespace {

// A thread's share of a block: several thousand rows, which take a few milliseconds, so that
// threads rarely wait for each other.
constexpr std::size_t kBlockBytesPerThread = 262144;

}  // namespace

RowPipeline::RowPipeline(InputStream source, const InputColumns& columns, const std::string& unit,
                         std::size_t threads)
    : rowInput(openRowInput(std::move(source), columns, unit, threads * kBlockBytesPerThread)),
      pool(threads),
      lineCount(rowInput->headLineCount()) {}

void RowPipeline::run(const RowQuery& query, RowSink& sink) {
    for (;;) {
        chunkCount = rowInput->nextBlock();
        if (chunkCount == 0) break;
        while (chunks.size() < chunkCount) chunks.emplace_back(sink.makeRows());
        pool.parallelFor(chunkCount, [this](std::size_t i) { rowInput->parse(i, chunks[i].rows); });
        countRows();
        pool.parallelFor(chunkCount, [&](std::size_t i) { queryChunk(chunks[i], query); });
        write(sink);
        sink.flush();
    }
    if (rowCount == 0) throw rowInput->noRowsError();
}

// Numbers the rows, up to the first chunk with a line that is not valid.
void RowPipeline::countRows() {
    for (std::size_t i = 0; i < chunkCount; ++i) {
        Chunk& chunk = chunks[i];
        chunk.rowsBefore = rowCount;
        rowCount += static_cast<std::int64_t>(chunk.rows.numbers.size() / rowInput->numberCount());
        if (chunk.rows.error) chunkCount = i + 1;
    }
}

void RowPipeline::queryChunk(Chunk& chunk, const RowQuery& query) const {
    chunk.results.clear();
    chunk.error = nullptr;
    chunk.warnings.clear();
    const LogWarningCollector collector(chunk.warnings);
    try {
        queryRows(chunk, query);
    } catch (...) {
        chunk.error = std::current_exception();
    }
}

void RowPipeline::queryRows(Chunk& chunk, const RowQuery& query) const {
    const std::size_t width = rowInput->numberCount();
    const std::span<const double> numbers = chunk.rows.numbers;
    const std::size_t count = numbers.size() / width;
    const std::size_t passedWidth = count == 0 ? 0 : chunk.rows.passed.size() / count;
    const std::span<const std::string_view> passed = chunk.rows.passed;
    auto emptyRow = chunk.rows.emptyRows.begin();
    for (std::size_t i = 0; i < count; ++i) {
        const bool isEmpty = emptyRow != chunk.rows.emptyRows.end() && *emptyRow == i;
        if (isEmpty) ++emptyRow;
        if (passedWidth > 0) chunk.results.setPassedCells(passed.subspan(i * passedWidth, passedWidth));
        query(chunk.rowsBefore + static_cast<std::int64_t>(i) + 1,
              isEmpty ? std::span<const double>() : numbers.subspan(i * width, width), chunk.results);
    }
}

void RowPipeline::write(RowSink& sink) {
    for (std::size_t i = 0; i < chunkCount; ++i) {
        const Chunk& chunk = chunks[i];
        for (const std::string& warning : chunk.warnings) addLogWarning(warning);
        sink.write(chunk.results);
        if (chunk.error) std::rethrow_exception(chunk.error);
        lineCount += chunk.rows.lineCount;
        if (chunk.rows.error) throw chunk.rows.error->at(rowInput->name(), lineCount);
    }
}

}  // namespace quarn::tool
