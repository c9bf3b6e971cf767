/// \file
/// Loops over blocks of rows, on several threads.
#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>

namespace quarn {

/// How a batch of queries runs. It has no effect on results.
struct BatchOptions {
    /// Maximum number of threads, including the calling one; 0 for one per processor.
    std::size_t threads = 1;
    /// Rows that a thread computes before it looks for a request to stop; at least 1.
    std::size_t blockSize = 4096;
    /// Ends the batch early.
    std::stop_token stop = {};
    /// Called on the calling thread now and then with the number of finished rows.
    std::function<void(std::size_t finishedRows)> progress = {};
};

enum class BatchEnd {
    Complete,  ///< All rows have results.
    Stopped,   ///< Some rows have no results: their outputs are unchanged.
};

/// Calls body(first, last) for consecutive ranges that cover 0 to \p count, in unspecified order
/// and on the threads of the options. If a call throws, no further call begins, and the exception
/// is rethrown.
BatchEnd runBlocks(std::size_t count, const BatchOptions& options,
                   const std::function<void(std::size_t first, std::size_t last)>& body);

}  // namespace quarn
