/// \file
/// The options of the commands that read a screen, as plain values. For commands and result rows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>

#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Formats/Obj/ObjSource.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// More than the processors of any machine that the tool is used on.
inline constexpr int kMaxThreads = 256;

/// Returns the number of processors that the process may use, at most kMaxThreads.
[[nodiscard]] inline std::size_t defaultThreadCount() {
    return std::clamp(std::thread::hardware_concurrency(), 1U, static_cast<unsigned int>(kMaxThreads));
}

/// Options of every command that reads a screen.
struct ScreenOptions {
    std::string screen;
    ObjOptions obj;
    std::string unit = "m";
    ResultFormat format = ResultFormat::Csv;
    std::uint64_t maxMemory = defaultMemoryLimit();  ///< In bytes.
    std::string output = "-";
};

/// Options of the commands that write a result for each row of an input.
struct QueryOptions : ScreenOptions {
    bool areResultsRequired = false;
    std::size_t threads = defaultThreadCount();
};

}  // namespace quarn::tool
