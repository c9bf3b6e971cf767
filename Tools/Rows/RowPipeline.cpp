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

RowPipeline::RowPipeline(InputStream source, std::vector<std::string> columnNames, std::size_t threads)
    : blocks(std::move(source), threads * kBlockBytesPerThread),
      format(std::move(columnNames)),
      pool(threads) {}

void RowPipeline::run(const RowQuery& query, RowSink& sink) {
    std::string_view lines;
    while (blocks.next(lines)) {
        lineCount += head.skip(lines);
        split(lines, sink);
        pool.parallelFor(chunkCount, [this](std::size_t i) { chunks[i].rows.read(chunks[i].lines, format); });
        countRows();
        pool.parallelFor(chunkCount, [&](std::size_t i) { queryChunk(chunks[i], query); });
        write(sink);
        sink.flush();
    }
}

void RowPipeline::split(std::string_view lines, const RowSink& sink) {
    chunkCount = 0;
    while (!lines.empty()) {
        const std::size_t feed = lines.find('\n', std::min(kChunkBytes, lines.size()) - 1);
        const std::size_t length = feed == std::string_view::npos ? lines.size() : feed + 1;
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
        rowCount += static_cast<std::int64_t>(chunk.rows.numbers.size() / format.columnCount());
        if (chunk.rows.error) chunkCount = i + 1;
    }
}

void RowPipeline::queryChunk(Chunk& chunk, const RowQuery& query) const {
    chunk.results.clear();
    chunk.error = nullptr;
    chunk.warnings.clear();
    const LogWarningCollector collector(chunk.warnings);
    try {
        std::int64_t number = chunk.rowsBefore;
        std::span<const double> rest = chunk.rows.numbers;
        for (; !rest.empty(); rest = rest.subspan(format.columnCount()))
            query(++number, rest.first(format.columnCount()), chunk.results);
    } catch (...) {
        chunk.error = std::current_exception();
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
