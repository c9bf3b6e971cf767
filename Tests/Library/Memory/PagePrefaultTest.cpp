#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Platform/PagePrefault.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "Support/RunTogether.h"

using namespace quarn;
using namespace quarn::test;

namespace {
constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
}

TEST(PagePrefault, ContentsStay) {
    std::vector<unsigned char> memory(25 * kMegabyte, 7);
    detail::PagePrefault pages;
    pages.setRange(memory.data() + 3, memory.size() - 3);
    runTogether(4, [&](int) { pages.prefault(); });
    EXPECT_EQ(std::count(memory.begin(), memory.end(), 7), static_cast<std::ptrdiff_t>(memory.size()));
}

TEST(PagePrefault, ThreadsMayComeBeforeTheRangeAndAfterIt) {
    std::vector<unsigned char> memory(25 * kMegabyte, 7);
    detail::PagePrefault pages;
    pages.prefault();
    runTogether(4, [&](int i) {
        if (i == 0) pages.setRange(memory.data(), memory.size());
        pages.prefault();
    });
    pages.prefault();
    EXPECT_EQ(memory.back(), 7);
}

TEST(PagePrefault, SmallRangesAreLeftAlone) {
    std::vector<unsigned char> memory(10, 7);
    for (std::size_t size = 0; size <= memory.size(); ++size) {
        detail::PagePrefault pages;
        pages.setRange(memory.data(), size);
        pages.prefault();
    }
    EXPECT_EQ(memory, std::vector<unsigned char>(10, 7));
}
