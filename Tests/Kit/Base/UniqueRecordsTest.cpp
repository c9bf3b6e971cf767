#include <QuarnKit/Base/UniqueRecords.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>

#include "Support/Rng.h"

namespace quarn {
namespace {

using Record = std::array<float, 2>;

TEST(UniqueRecords, EqualRecordsHaveOneIndex) {
    for (int seed = 0; seed < test::seedCount(50); ++seed) {
        test::Rng rng(seed);
        std::vector<Record> list;
        UniqueRecords<2> unique(list);
        std::map<Record, std::int32_t> expected;
        for (int i = 0; i < 2000; ++i) {
            const auto x = static_cast<float>(static_cast<int>(rng.uniform(-20.0, 20.0)));
            const Record record = {x, static_cast<float>(static_cast<int>(rng.uniform(-20.0, 20.0)))};
            const auto next = static_cast<std::int32_t>(expected.size());
            ASSERT_EQ(unique.indexOf(record), expected.try_emplace(record, next).first->second) << seed;
        }
        ASSERT_EQ(list.size(), expected.size());
        for (const auto& [record, index] : expected)
            ASSERT_EQ(list.at(static_cast<std::size_t>(index)), record);
    }
}

TEST(UniqueRecords, NegativeZeroEqualsZeroAndNaNEqualsNothing) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    std::vector<Record> list;
    UniqueRecords<2> unique(list);
    EXPECT_EQ(unique.indexOf({0.0F, 1.0F}), 0);
    EXPECT_EQ(unique.indexOf({-0.0F, 1.0F}), 0);
    for (int i = 1; i < 40; ++i) EXPECT_EQ(unique.indexOf({kNaN, 1.0F}), i);
    EXPECT_EQ(unique.indexOf({0.0F, 1.0F}), 0);
}

TEST(UniqueRecords, RecordsThatTheListContainsAlreadyAreNotSearched) {
    std::vector<Record> list(30, Record{1.0F, 2.0F});
    UniqueRecords<2> unique(list);
    EXPECT_EQ(unique.indexOf({1.0F, 2.0F}), 30);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(unique.indexOf({3.0F, static_cast<float>(i)}), 31 + i);
    EXPECT_EQ(unique.indexOf({1.0F, 2.0F}), 30);
}

}  // namespace
}  // namespace quarn
