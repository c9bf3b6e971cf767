#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/OverriddenScreen.h"
#include "Support/RunTogether.h"

using namespace quarn::test;
using Polylines = IScreenGeometry::Polylines;

namespace {

// A door that one thread waits at until another opens it. It opens by itself after a while, so that
// a test that goes wrong fails and does not hang.
class Door {
public:
    void open() {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            isOpen = true;
        }
        changed.notify_all();
    }
    bool wait() {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(20), [this] { return isOpen; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool isOpen = false;
};

Polylines gridOf(const MeshScreen& screen, int density) {
    Polylines grid;
    screen.sampleGrid(grid, density);
    return grid;
}

}  // namespace

TEST(MeshGridThreads, ACallerOfTheSameDensityGetsTheOldGridAtOnceWhileAnotherComputes) {
    OverriddenScreen screen(flatGrid({3, 3}));
    const Polylines old = gridOf(screen, 2);
    Door hasBegun;
    Door mayGoOn;
    screen.onSampleBoundary = [&](Polylines& out) {
        hasBegun.open();
        EXPECT_TRUE(mayGoOn.wait());
        screen.TriangleScreen::sampleBoundary(out);
    };
    Polylines made;
    std::jthread computing([&] { made = gridOf(screen, 4); });
    ASSERT_TRUE(hasBegun.wait());
    EXPECT_EQ(gridOf(screen, 4), old);
    mayGoOn.open();
    computing.join();
    EXPECT_EQ(made.size(), 9U);
    EXPECT_EQ(gridOf(screen, 4), made);
}

TEST(MeshGridThreads, ACallerOfAnotherDensityWaitsAndThenComputes) {
    OverriddenScreen screen(flatGrid({3, 3}));
    Door hasBegun;
    Door mayGoOn;
    std::mutex mutex;
    std::array<int, 2> inside = {0, 0};  // now, and at most
    screen.onSampleBoundary = [&](Polylines& out) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            inside[1] = std::max(inside[1], ++inside[0]);
        }
        hasBegun.open();
        EXPECT_TRUE(mayGoOn.wait());
        screen.TriangleScreen::sampleBoundary(out);
        const std::lock_guard<std::mutex> lock(mutex);
        --inside[0];
    };
    std::jthread first([&] { (void)gridOf(screen, 4); });
    ASSERT_TRUE(hasBegun.wait());
    Polylines second;
    std::jthread other([&] { second = gridOf(screen, 6); });
    mayGoOn.open();
    first.join();
    other.join();
    EXPECT_EQ(second.size(), 13U);
    EXPECT_EQ(gridOf(screen, 6), second);
    EXPECT_EQ(inside[1], 1);
}

TEST(MeshGridThreads, ManyCallersOfManyDensitiesGetWholeGridsEach) {
    const TriangleScreen screen(wave({4, 4}));
    std::array<Polylines, 7> expected;
    for (int density = 2; density < 7; ++density)
        expected[static_cast<std::size_t>(density)] = TriangleScreen(wave({4, 4})).calculateGrid(density);
    runTogether(4, [&](int thread) {
        for (int round = 0; round < 100; ++round) {
            const Polylines grid = gridOf(screen, 2 + (round / 3 + thread) % 5);
            // Another thread may have handed over its own grid meanwhile, and before the first one
            // there is none.
            const std::size_t density = grid.size() / 2;
            EXPECT_TRUE(grid.empty() || grid == expected.at(density));
        }
    });
}
