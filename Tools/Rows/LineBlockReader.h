/// \file
/// Input in blocks of whole lines. For the readers of CSV inputs.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/InputStream.h>

namespace quarn::tool {

/// Longest line of an input. Without a limit an endless line would fill the memory.
inline constexpr std::size_t kMaxLineBytes = 1000000;

/// Splits an input between lines. Not safe on several threads.
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

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] const std::string& name() const { return input.name(); }

private:
    void discardConsumedLines();
    [[nodiscard]] bool ensureCapacity(bool hasLine);

    InputStream input;
    std::size_t blockSize;
    std::vector<char> buffer;
    std::size_t filled = 0;    // bytes in use, from the buffer's beginning
    std::size_t consumed = 0;  // bytes of the last block among them
    bool isAtEnd = false;
};

}  // namespace quarn::tool
