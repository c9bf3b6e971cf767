/// \file
/// Input in blocks of whole lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/InputStream.h>

namespace quarn::tool {

/// A line of a million bytes holds no row of numbers; without a limit an endless line would fill the memory.
inline constexpr std::size_t kMaxLineBytes = 1000000;

/// Cuts an input between lines. Not safe on several threads.
class LineBlockReader {
public:
    /// \param size bytes of a block, where no line needs more
    LineBlockReader(InputStream source, std::size_t size) : input(std::move(source)), blockSize(size) {}

    /// Hands out all lines that are at hand, as far as they fit into a block. Waits for input only where not one line is
    /// complete. A line of more than kMaxLineBytes bytes may be cut.
    /// \param[out] lines whole lines, valid until the next call; the last one of the input may lack its line feed
    /// \return false at the end of the input
    [[nodiscard]] bool next(std::string_view& lines);

    /// What error lines call the input.
    [[nodiscard]] const std::string& name() const { return input.name(); }

private:
    void discardConsumedLines();
    [[nodiscard]] bool ensureCapacity(bool hasLine);

    InputStream input;
    std::size_t blockSize;
    std::vector<char> buffer;
    std::size_t filled = 0;    // bytes in use, from the buffer's beginning
    std::size_t consumed = 0;  // of them, those of the last block
    bool isAtEnd = false;
};

}  // namespace quarn::tool
