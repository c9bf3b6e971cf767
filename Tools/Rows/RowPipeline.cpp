#include "Rows/RowPipeline.h"

#include <algorithm>

#include "Base/LogWarnings.h"

namespace quarn::tool {

namespace {

// A thread's share of a block: several thousand rows, which take a few milliseconds, so that
// threads rarely wait for each other.
constexpr std::size_t kBlockBytesPerThread = 262144;
// Small enough that the threads finish at about the same time, and large enough that the
// cost of scheduling does not show.
constexpr std::size_t kChunkBytes = 8192;

}  // namespace

RowPipeline::RowPipeline(InputStream source, const InputColumns& columns, const std::string& unit,
                         std::size_t threads)
    : blocks(std::move(source), threads * kBlockBytesPerThread),
      head(readCsvHead(blocks, columns, unit)),
      pool(threads),
      lineCount(head.lineCount) {}

void RowPipeline::run(const RowQuery& query, RowSink& sink) {
    std::string_view lines;
    while (blocks.next(lines)) {
        split(lines, sink);
        pool.parallelFor(chunkCount, [this](std::size_t i) {
            chunks[i].rows.read(chunks[i].lines, head.format, blocks.splitter());
        });
        countRows();
        pool.parallelFor(chunkCount, [&](std::size_t i) { queryChunk(chunks[i], query); });
        write(sink);
        sink.flush();
    }
    if (rowCount == 0) throw head.format.noRowsError().at(blocks.name(), 0);
}

void RowPipeline::split(std::string_view lines, const RowSink& sink) {
    chunkCount = 0;
    while (!lines.empty()) {
        const std::size_t length = std::min(blocks.splitter().lengthOfRows(lines, kChunkBytes), lines.size());
        if (chunkCount == chunks.size()) chunks.emplace_back(sink.makeRows());
        chunks[chunkCount].lines = lines.substr(0, length);
        ++chunkCount;
        lines.remove_prefix(length);
    }
}

// Numbers the rows, up to the first chunk with a line that is not valid.
void RowPipeline::countRows() {
    for (std::size_t i = 0; i < chunkCount; ++i) {
        Chunk& chunk = chunks[i];
        chunk.rowsBefore = rowCount;
        rowCount += static_cast<std::int64_t>(chunk.rows.numbers.size() / head.format.numberCount());
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
    const std::size_t width = head.format.numberCount();
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
        if (chunk.rows.error) throw chunk.rows.error->at(blocks.name(), lineCount);
    }
}

}  // namespace quarn::tool
