/// \file
/// Warnings of the library's log, in an order that does not depend on threads. For the log's
/// appender, and for code that runs queries on several threads.
#pragma once

#include <string>
#include <vector>

namespace quarn::tool {

/// Writes a warning line, except for the warning of several boundaries, see
/// takeSeveralBoundaries(). Drops a text that repeats the previous one, because a query may report
/// the same for each of its samples. On a thread with a LogWarningCollector, collects the text
/// instead. Safe on any number of threads.
void addLogWarning(const std::string& text);

/// Returns true if the library warned of a mesh with several boundaries since the last call. Safe
/// on any number of threads.
[[nodiscard]] bool takeSeveralBoundaries();

/// Collects the texts that addLogWarning() gets on this thread during the lifetime of the object,
/// except repeated ones.
class LogWarningCollector {
public:
    /// \param texts the collected texts; they have to outlive this object
    explicit LogWarningCollector(std::vector<std::string>& texts);
    LogWarningCollector(const LogWarningCollector&) = delete;
    LogWarningCollector& operator=(const LogWarningCollector&) = delete;
    ~LogWarningCollector();
};

}  // namespace quarn::tool
