#include "Rows/WorkerTeam.h"

#include <gmock/gmock.h>

#include <atomic>
#include <barrier>
#include <stdexcept>
#include <string>
#include <system_error>

namespace quarn::test {
namespace {

using ::testing::Each;

// Runs \p count parts, and tells how often each of them ran.
std::vector<int> runsOf(WorkerTeam& team, std::size_t count) {
    std::vector<std::atomic<int>> runs(count);
    team.run(count, [&](std::size_t i) { ++runs[i]; });
    return {runs.begin(), runs.end()};
}

TEST(WorkerTeam, EachPartRunsOnce) {
    for (const std::size_t threads : {1U, 2U, 7U}) {
        WorkerTeam team(threads);
        for (const std::size_t count : {0U, 1U, 2U, 3U, 1000U, 5U}) EXPECT_THAT(runsOf(team, count), Each(1));
    }
}

TEST(WorkerTeam, PartsRunAtTheSameTime) {
    constexpr std::size_t kThreads = 3;
    WorkerTeam team(kThreads);
    std::barrier<> together(kThreads);
    // No part ends before all have begun.
    team.run(kThreads, [&](std::size_t /*part*/) { together.arrive_and_wait(); });
    EXPECT_EQ(team.threadCount(), kThreads);
}

TEST(WorkerTeam, ASinglePartStartsNoThread) {
    WorkerTeam team(4);
    const auto caller = std::this_thread::get_id();
    team.run(1, [&](std::size_t /*part*/) { EXPECT_EQ(std::this_thread::get_id(), caller); });
    EXPECT_EQ(team.threadCount(), 1U);
}

TEST(WorkerTeam, ThreadsThatCannotStartAreDoneWithout) {
    for (const int available : {0, 1, 2}) {
        SCOPED_TRACE(available);
        int started = 0;
        WorkerTeam team(5, [&](std::function<void()> function) {
            if (started == available)
                throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
            ++started;
            return std::thread(std::move(function));
        });
        EXPECT_THAT(runsOf(team, 100), Each(1));
        EXPECT_THAT(runsOf(team, 100), Each(1));
        EXPECT_EQ(team.threadCount(), static_cast<std::size_t>(available) + 1);
    }
}

TEST(WorkerTeam, OfAllExceptionsThatOfTheFirstPartIsThrown) {
    for (const std::size_t threads : {1U, 2U, 7U}) {
        WorkerTeam team(threads);
        std::atomic<int> ended = 0;
        try {
            team.run(100, [&](std::size_t i) {
                ++ended;
                if (i % 10 == 7) throw std::runtime_error(std::to_string(i));
            });
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "7");
        }
        EXPECT_EQ(ended, 100);
        EXPECT_THAT(runsOf(team, 100), Each(1)) << "the team is as good as before";
    }
}

}  // namespace
}  // namespace quarn::test
