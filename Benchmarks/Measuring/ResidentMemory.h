/// \file
/// The resident memory of a process, and its peak.
#pragma once

#include <malloc.h>

#include <fstream>
#include <string>

namespace quarn::bench {

/// Bytes that the system reports for this process in the given line of its status.
[[nodiscard]] inline double statusBytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    double kilobytes = 0.0;
    for (std::string word; status >> word;)
        if (word == name + ":") status >> kilobytes;
    return 1024.0 * kilobytes;
}

/// Bytes in use. What was released goes back to the system before.
[[nodiscard]] inline double residentBytes() {
    malloc_trim(0);
    return statusBytes("VmRSS");
}

/// The most bytes in use since forgetPeak(), which is what the system counts for all allocators.
[[nodiscard]] inline double peakBytes() {
    return statusBytes("VmHWM");
}
/// \return whether the system lets that be
inline bool forgetPeak() {
    malloc_trim(0);
    std::ofstream references("/proc/self/clear_refs");
    return static_cast<bool>(references << "5" << std::flush);
}

}  // namespace quarn::bench
