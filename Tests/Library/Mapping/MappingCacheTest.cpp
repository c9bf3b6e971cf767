// The ring of the last answers, by itself.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Mesh/MappingCache.h>

#include "Library/Mapping/MappingCases.h"

using namespace quarn::test;
using quarn::detail::MappingCache;
using State = MeshScreen::MappingInto3D::State;

namespace {

constexpr int kCapacity = 20;

Point2 keyOf(int i) {
    return {static_cast<double>(i), 0.5};
}

void add(quarn::detail::MappingCache& cache, int i) {
    cache.add({keyOf(i), Point3(i, 0.0, 0.0), State::OnScreen});
}

void fill(quarn::detail::MappingCache& cache, int count) {
    for (int i = 0; i < count; ++i) add(cache, i);
}

// A hit moves the cursor, so each question is put to a copy made the same way.
template <class Make>
std::vector<int> keysHeld(Make make, int bound) {
    std::vector<int> held;
    for (int i = 0; i < bound; ++i) {
        quarn::detail::MappingCache cache;
        make(cache);
        if (cache.find(keyOf(i))) held.push_back(i);
    }
    return held;
}

std::vector<int> rangeWithout(int first, int last, int left) {
    std::vector<int> all;
    for (int i = first; i < last; ++i)
        if (i != left) all.push_back(i);
    return all;
}

// Keys that repeat, differ in the last bit or in a zero's sign, or hold a NaN.
Point2 anyKey(Rng& rng, int variety) {
    Point2 key(0.125 * rng.integer(0, variety), rng.coin() ? 0.5 : 0.25);
    switch (rng.integer(0, 11)) {
        case 0:
            key[0] = std::nextafter(key[0], rng.coin() ? 1e9 : -1e9);
            break;
        case 1:
            key[1] = std::nextafter(key[1], rng.coin() ? 1.0 : 0.0);
            break;
        case 2:
            key[static_cast<std::size_t>(rng.integer(0, 1))] = std::numeric_limits<double>::quiet_NaN();
            break;
        case 3:
            key[0] = rng.coin() ? 0.0 : -0.0;
            break;
        default:
            break;
    }
    return key;
}

}  // namespace

TEST(MappingCache, EmptyCacheFindsNothing) {
    quarn::detail::MappingCache cache;
    EXPECT_FALSE(cache.find({0.0, 0.0}));
}

TEST(MappingCache, GivesBackACopyOfTheWholeEntry) {
    quarn::detail::MappingCache cache;
    cache.add({{0.25, 0.5}, {1.0, 2.0, 3.0}, State::Extrapolated});
    const auto found = cache.find({0.25, 0.5});
    ASSERT_TRUE(found);
    EXPECT_TRUE(sameBits(found->uv, Point2(0.25, 0.5)));
    EXPECT_TRUE(sameBits(found->point, Point3(1.0, 2.0, 3.0)));
    EXPECT_EQ(found->state, State::Extrapolated);
}

TEST(MappingCache, KeysAreExactInBothCoordinates) {
    quarn::detail::MappingCache cache;
    cache.add({{0.25, 0.5}, {}, State::OnScreen});
    EXPECT_FALSE(cache.find({std::nextafter(0.25, 1.0), 0.5}));
    EXPECT_FALSE(cache.find({0.25, std::nextafter(0.5, 0.0)}));
    EXPECT_FALSE(cache.find({0.5, 0.25}));
    cache.add({{std::nextafter(0.25, 1.0), 0.5}, {1.0, 0.0, 0.0}, State::OnScreen});
    EXPECT_TRUE(sameBits(cache.find({0.25, 0.5})->point, Point3()));
    EXPECT_TRUE(sameBits(cache.find({std::nextafter(0.25, 1.0), 0.5})->point, Point3(1.0, 0.0, 0.0)));
}

TEST(MappingCache, ZerosOfBothSignsAreOneKeyAndNaNIsNone) {
    quarn::detail::MappingCache cache;
    cache.add({{0.0, -0.0}, {}, State::OnScreen});
    EXPECT_TRUE(cache.find({-0.0, 0.0}));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Point2& key : {Point2(nan, 0.0), Point2(0.0, nan), Point2(nan, nan)}) {
        cache.add({key, {}, State::OnScreen});
        EXPECT_FALSE(cache.find(key));
    }
}

TEST(MappingCache, HoldsTwentyEntries) {
    EXPECT_EQ(keysHeld([](quarn::detail::MappingCache& cache) { fill(cache, kCapacity); }, 30),
              rangeWithout(0, 20, -1));
}

TEST(MappingCache, TwentyFirstEntryReplacesTheFirst) {
    EXPECT_EQ(keysHeld([](quarn::detail::MappingCache& cache) { fill(cache, kCapacity + 1); }, 30),
              rangeWithout(1, 21, -1));
}

TEST(MappingCache, EntryBehindTheLastHitIsReplaced) {
    for (int hit = 0; hit < kCapacity; ++hit) {
        SCOPED_TRACE(hit);
        const auto make = [hit](quarn::detail::MappingCache& cache) {
            fill(cache, kCapacity);
            EXPECT_TRUE(cache.find(keyOf(hit)));
            EXPECT_FALSE(cache.find(keyOf(99))) << "a miss does not move the cursor";
            add(cache, kCapacity);
        };
        EXPECT_EQ(keysHeld(make, 30), rangeWithout(0, 21, (hit + 1) % kCapacity));
    }
}

TEST(MappingCache, HitInACacheThatIsNotFullReplacesNothing) {
    const auto make = [](quarn::detail::MappingCache& cache) {
        fill(cache, 5);
        EXPECT_TRUE(cache.find(keyOf(1)));
        add(cache, 5);
        add(cache, 6);
    };
    EXPECT_EQ(keysHeld(make, 30), rangeWithout(0, 7, -1));
}

// The search goes from the cursor to the end, then from the beginning on.
TEST(MappingCache, OfEqualKeysTheFirstFromTheCursorOnIsFound) {
    const auto foundAfterHitOf = [](int hit) {
        quarn::detail::MappingCache cache;
        for (int i = 0; i < 10; ++i)
            cache.add(
                {i == 2 || i == 6 ? Point2(-1.0, -1.0) : keyOf(i), Point3(i, 0.0, 0.0), State::OnScreen});
        EXPECT_TRUE(cache.find(keyOf(hit)));
        return cache.find({-1.0, -1.0})->point[0];
    };
    EXPECT_EQ(foundAfterHitOf(0), 2.0);
    EXPECT_EQ(foundAfterHitOf(1), 2.0);
    EXPECT_EQ(foundAfterHitOf(3), 6.0);
    EXPECT_EQ(foundAfterHitOf(5), 6.0);
    EXPECT_EQ(foundAfterHitOf(7), 2.0);
    EXPECT_EQ(foundAfterHitOf(9), 2.0);
}

TEST(MappingCache, EntryJustWrittenIsFoundBeforeOlderOnesOfItsKey) {
    quarn::detail::MappingCache cache;
    for (int i = 0; i < 45; ++i) {
        cache.add({{0.0, 0.0}, Point3(i, 0.0, 0.0), State::OutOfBounds});
        EXPECT_EQ(cache.find({0.0, 0.0})->point[0], i);
    }
}

TEST(MappingCache, AnswersOfTheLiteralRingOverLongSequences) {
    int hits = 0;
    int misses = 0;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        quarn::detail::MappingCache cache;
        ReferenceMappingCache plain;
        const int variety = rng.integer(2, 40);
        for (int step = 0; step < 2000; ++step) {
            SCOPED_TRACE(step);
            const Point2 key = anyKey(rng, variety);
            const auto found = cache.find(key);
            const auto expected = plain.check(key);
            ASSERT_EQ(found.has_value(), expected.has_value());
            ++(found ? hits : misses);
            if (found) {
                ASSERT_TRUE(sameBits(found->uv, expected->uv));
                ASSERT_TRUE(sameBits(found->point, expected->point));
                ASSERT_EQ(found->state, expected->state);
            }
            if (found && rng.integer(0, 3) != 0) continue;
            const auto state = static_cast<State>(rng.integer(0, 2));
            cache.add({key, Point3(step, i, 0.0), state});
            plain.add(key, Point3(step, i, 0.0), state);
        }
    }
    EXPECT_GT(hits, seedCount(100'000));
    EXPECT_GT(misses, 100'000);
}
