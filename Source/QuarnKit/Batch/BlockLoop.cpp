#include "BlockLoop.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include <QuarnKit/Base/ThreadPool.h>

namespace quarn {

// A pool of the kit's own and not that of the ray tracer's library: it has no dependency, its 100
// lines run under the thread sanitizer, and blocks are so large that scheduling does not count.
BatchEnd runBlocks(std::size_t count, const BatchOptions& options,
                   const std::function<void(std::size_t, std::size_t)>& body) {
    const std::size_t blockSize = std::max<std::size_t>(options.blockSize, 1);
    const std::size_t blocks = count / blockSize + (count % blockSize == 0 ? 0 : 1);
    const std::size_t threads =
        options.threads == 0 ? std::max(std::thread::hardware_concurrency(), 1U) : options.threads;
    const std::thread::id caller = std::this_thread::get_id();
    std::atomic<std::size_t> finished = 0;
    std::atomic<bool> hasFailed = false;

    ThreadPool pool(std::clamp<std::size_t>(blocks, 1, threads));
    pool.parallelFor(blocks, [&](std::size_t block) {
        if (hasFailed || options.stop.stop_requested()) return;
        const std::size_t first = block * blockSize;
        const std::size_t last = std::min(first + blockSize, count);
        try {
            body(first, last);
            const std::size_t done = finished += last - first;
            if (options.progress && std::this_thread::get_id() == caller) options.progress(done);
        } catch (...) {
            hasFailed = true;
            throw;
        }
    });
    return finished == count ? BatchEnd::Complete : BatchEnd::Stopped;
}

}  // namespace quarn
