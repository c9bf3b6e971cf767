/// \file
/// Work on several threads at once.
#pragma once

#include <barrier>
#include <functional>
#include <thread>
#include <vector>

namespace quarn::test {

/// Calls `work(0)` to `work(count - 1)`, each on a thread of its own; all begin together. Returns
/// when all have ended.
inline void runTogether(int count, const std::function<void(int)>& work) {
    std::barrier start(count);
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
    }
}

}  // namespace quarn::test
