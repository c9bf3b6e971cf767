/// \file
/// Warnings of the library's log, in an order that does not depend on threads.
#pragma once

#include <string>
#include <vector>

namespace quarn::tool {

/// Writes a warning line, but not the same line twice in a row, as a query may tell the same of each of its samples. On
/// a thread with LogWarningCollector the text is only kept. Safe on any number of threads.
void addLogWarning(const std::string& text);

/// While it lives, addLogWarning() keeps the texts of this thread, but no text twice in a row.
class LogWarningCollector {
public:
    /// \param texts that are kept; they have to outlive this object
    explicit LogWarningCollector(std::vector<std::string>& texts);
    LogWarningCollector(const LogWarningCollector&) = delete;
    LogWarningCollector& operator=(const LogWarningCollector&) = delete;
    ~LogWarningCollector();
};

}  // namespace quarn::tool
