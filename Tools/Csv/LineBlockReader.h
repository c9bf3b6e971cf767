/// \file
/// Input in blocks of whole lines. For the readers of CSV inputs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/InputStream.h>

#include "Csv/RowSplitter.h"

namespace quarn::tool {

/// Longest line of an input. Without a limit an endless line would fill the memory.
inline constexpr std::size_t kMaxLineBytes = 1000000;

/// Splits an input between lines, or between rows once their separator is known. If the first line
/// ends with a carriage return alone, all of them become line feeds. Not safe on several threads.
class LineBlockReader {
public:
    /// \param size bytes of a block, unless a line is longer
    LineBlockReader(InputStream source, std::size_t size) : input(std::move(source)), blockSize(size) {}

    /// Returns the lines that are available, as far as they fit into a block. Waits for input only
    /// if no line is complete. A line of more than kMaxLineBytes bytes may be split.
    /// \param[out] lines whole lines, valid until the next call; the last line of the input may
    /// lack its line feed
    /// \return false at the end of the input
    [[nodiscard]] bool next(std::string_view& lines);

    /// Makes the last \p size bytes of the block the beginning of the next one, and all further
    /// blocks end between rows whose cells have this separator.
    void giveBack(std::size_t size, char separator);

    /// Returns the splitter for the rows of the block.
    [[nodiscard]] const RowSplitter& splitter() const { return rows; }

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] const std::string& name() const { return input.name(); }

private:
    enum class LineEnd { Unknown, LineFeed, CarriageReturn };

    void discardConsumedLines();
    [[nodiscard]] bool ensureCapacity(std::size_t completeBytes);
    void convertLineEnds(std::size_t newBytes);
    void findLineEnd();

    InputStream input;
    std::size_t blockSize;
    std::vector<char> buffer;
    std::size_t filled = 0;    // bytes in use, from the buffer's beginning
    std::size_t consumed = 0;  // bytes of the last block among them
    bool isAtEnd = false;
    LineEnd lineEnd = LineEnd::Unknown;
    bool isSeparatorKnown = false;
    RowSplitter rows;
};

}  // namespace quarn::tool
