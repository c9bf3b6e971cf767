#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include <QuarnKit/Batch/BlockLoop.h>

using quarn::BatchEnd;
using quarn::BatchOptions;
using quarn::runBlocks;

namespace {

BatchOptions optionsOf(std::size_t threads, std::size_t blockSize) {
    BatchOptions options;
    options.threads = threads;
    options.blockSize = blockSize;
    return options;
}

void doNothing(std::size_t /*first*/, std::size_t /*last*/) {}

}  // namespace

TEST(BlockLoop, EachRowIsInOneBlock) {
    for (const std::size_t threads : {1, 2, 7})
        for (const std::size_t blockSize : {1, 3, 10, 100})
            for (const std::size_t count : {0, 1, 10, 31}) {
                std::vector<std::atomic<int>> visits(count);
                const auto end =
                    runBlocks(count, optionsOf(threads, blockSize), [&](std::size_t first, std::size_t last) {
                        EXPECT_LE(last - first, blockSize);
                        for (std::size_t i = first; i < last; ++i) ++visits[i];
                    });
                EXPECT_EQ(end, BatchEnd::Complete);
                EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](const auto& n) { return n == 1; }));
            }
}

TEST(BlockLoop, StopsBeforeTheNextBlock) {
    std::stop_source source;
    BatchOptions options = optionsOf(1, 10);
    options.stop = source.get_token();
    int blocks = 0;
    const auto end = runBlocks(1000, options, [&](std::size_t /*first*/, std::size_t /*last*/) {
        if (++blocks == 3) source.request_stop();
    });
    EXPECT_EQ(end, BatchEnd::Stopped);
    EXPECT_EQ(blocks, 3);
}

TEST(BlockLoop, IsCompleteIfTheRequestComesTooLate) {
    std::stop_source source;
    BatchOptions options;
    options.stop = source.get_token();
    const auto stopAtOnce = [&](std::size_t /*first*/, std::size_t /*last*/) { source.request_stop(); };
    EXPECT_EQ(runBlocks(10, options, stopAtOnce), BatchEnd::Complete);
}

TEST(BlockLoop, ReportsProgressOnTheCallingThread) {
    const std::thread::id caller = std::this_thread::get_id();
    std::vector<std::size_t> reports;
    BatchOptions options = optionsOf(3, 5);
    options.progress = [&](std::size_t finished) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        reports.push_back(finished);
    };
    runBlocks(100, options, doNothing);
    EXPECT_TRUE(std::is_sorted(reports.begin(), reports.end()));
    EXPECT_TRUE(std::all_of(reports.begin(), reports.end(), [](std::size_t n) { return n <= 100; }));

    reports.clear();
    options.threads = 1;
    runBlocks(12, options, doNothing);
    EXPECT_EQ(reports, (std::vector<std::size_t>{5, 10, 12}));
}

TEST(BlockLoop, EndsWithTheExceptionOfABlock) {
    int blocks = 0;
    const auto failInTheFifth = [&](std::size_t first, std::size_t /*last*/) {
        ++blocks;
        if (first == 4) throw std::runtime_error("failed");
    };
    EXPECT_THROW(runBlocks(100, optionsOf(1, 1), failInTheFifth), std::runtime_error);
    EXPECT_EQ(blocks, 5);
}
