/// \file
/// Warnings of the library's log, in an order that does not depend on threads.
#pragma once

#include <string>
#include <vector>

namespace quarn {

/// Writes a warning line, but not the same line twice in a row, as a query may tell the same of each of its samples. On
/// a thread with HeldLogWarnings the text is only kept. Safe on any number of threads.
void addLogWarning(const std::string& text);

/// While it lives, addLogWarning() keeps the texts of this thread, but no text twice in a row.
class HeldLogWarnings {
public:
    /// \param texts that are kept; they have to outlive this object
    explicit HeldLogWarnings(std::vector<std::string>& texts);
    HeldLogWarnings(const HeldLogWarnings&) = delete;
    HeldLogWarnings& operator=(const HeldLogWarnings&) = delete;
    ~HeldLogWarnings();
};

}  // namespace quarn
