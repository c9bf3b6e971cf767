#include <QuarnKit/Base/ThreadPool.h>

#include <gmock/gmock.h>

#include <atomic>
#include <barrier>
#include <stdexcept>
#include <string>
#include <system_error>

namespace quarn::test {
namespace {

using ::testing::Each;

// Runs \p count tasks, and returns how often each of them ran.
std::vector<int> runsOf(ThreadPool& pool, std::size_t count) {
    std::vector<std::atomic<int>> runs(count);
    pool.parallelFor(count, [&](std::size_t i) { ++runs[i]; });
    return {runs.begin(), runs.end()};
}

TEST(ThreadPool, EachTaskRunsOnce) {
    for (const std::size_t threads : {1U, 2U, 7U}) {
        ThreadPool pool(threads);
        for (const std::size_t count : {0U, 1U, 2U, 3U, 1000U, 5U}) EXPECT_THAT(runsOf(pool, count), Each(1));
    }
}

TEST(ThreadPool, TasksRunAtTheSameTime) {
    constexpr std::size_t kThreads = 3;
    ThreadPool pool(kThreads);
    std::barrier<> together(kThreads);
    // No part ends before all have begun.
    pool.parallelFor(kThreads, [&](std::size_t /*part*/) { together.arrive_and_wait(); });
    EXPECT_EQ(pool.threadCount(), kThreads);
}

TEST(ThreadPool, SingleTaskStartsNoThread) {
    ThreadPool pool(4);
    const auto caller = std::this_thread::get_id();
    pool.parallelFor(1, [&](std::size_t /*part*/) { EXPECT_EQ(std::this_thread::get_id(), caller); });
    EXPECT_EQ(pool.threadCount(), 1U);
}

TEST(ThreadPool, ThreadsThatCannotStartAreDoneWithout) {
    for (const int available : {0, 1, 2}) {
        SCOPED_TRACE(available);
        int started = 0;
        ThreadPool pool(5, [&](std::function<void()> function) {
            if (started == available)
                throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
            ++started;
            return std::thread(std::move(function));
        });
        EXPECT_THAT(runsOf(pool, 100), Each(1));
        EXPECT_THAT(runsOf(pool, 100), Each(1));
        EXPECT_EQ(pool.threadCount(), static_cast<std::size_t>(available) + 1);
    }
}

TEST(ThreadPool, RethrowsTheExceptionOfTheFirstTask) {
    for (const std::size_t threads : {1U, 2U, 7U}) {
        ThreadPool pool(threads);
        std::atomic<int> ended = 0;
        try {
            pool.parallelFor(100, [&](std::size_t i) {
                ++ended;
                if (i % 10 == 7) throw std::runtime_error(std::to_string(i));
            });
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "7");
        }
        EXPECT_EQ(ended, 100);
        EXPECT_THAT(runsOf(pool, 100), Each(1)) << "the pool is as good as before";
    }
}

}  // namespace
}  // namespace quarn::test
