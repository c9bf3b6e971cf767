/// \file
/// The lines of a changed text, and those of the file that it was read from.
#pragma once

#include <cstdint>
#include <vector>

namespace quarn {

/// Maps the lines of a changed text to those of its file. Both count from 1. Without changes, each
/// line is its own.
class ObjLineMap {
public:
    /// Appends the next line of the text, which comes from the line \p original of the file.
    void append(std::uint64_t original);

    /// Inserts lines that come from no line of the file.
    /// \param line the number of the first of them, at most lineCount() + 1
    void insert(std::uint64_t line, std::uint64_t insertedCount);

    /// Returns the number of the lines that were appended or inserted.
    [[nodiscard]] std::uint64_t lineCount() const { return count; }

    /// Returns the line of the file for a line of the text.
    [[nodiscard]] std::uint64_t originalOf(std::uint64_t line) const;

private:
    // A line after which both numbers increase by one, up to the next jump.
    struct Jump {
        std::uint64_t line;
        std::uint64_t original;
    };

    std::vector<Jump> jumps;
    std::uint64_t count = 0;
};

}  // namespace quarn
