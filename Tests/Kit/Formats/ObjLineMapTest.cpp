#include <QuarnKit/Formats/Obj/ObjLineMap.h>

#include <gtest/gtest.h>

#include <vector>

#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include "Support/Rng.h"

namespace quarn::test {
namespace {

TEST(ObjLineMap, WithoutChangesEachLineIsItsOwn) {
    const ObjLineMap map;
    EXPECT_EQ(map.originalOf(1), 1U);
    EXPECT_EQ(map.originalOf(1'000'000), 1'000'000U);
}

// The reference is a list with the original of each line; inserted lines have none.
TEST(ObjLineMap, AppendedLinesKeepTheirOriginalsWhenOthersAreInserted) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        ObjLineMap map;
        std::vector<std::uint64_t> originals;
        std::uint64_t original = 1;
        for (int line = rng.integer(0, 19); line > 0; --line) {
            map.append(original);
            originals.push_back(original);
            original += static_cast<std::uint64_t>(rng.integer(0, 2));
        }
        const auto place = rng.integer(0, static_cast<int>(originals.size()));
        const auto count = static_cast<std::size_t>(rng.integer(0, 3));
        map.insert(static_cast<std::uint64_t>(place) + 1, count);
        originals.insert(originals.begin() + place, count, 0);
        ASSERT_EQ(map.lineCount(), originals.size());
        for (std::size_t line = 0; line < originals.size(); ++line) {
            if (originals[line] == 0) continue;
            ASSERT_EQ(map.originalOf(line + 1), originals[line]);
        }
    }
}

TEST(ObjLineMap, ARepairedTextNamesTheLinesOfItsFile) {
    const RepairedObj repaired = repairObj("a.obj",
                                           "v 0 0 0\nv 1 0 0\n"  // lines 1 and 2
                                           "f -2 -1 3 # one\n"
                                           "v 0 \\\n0 1\n"  // lines 4 and 5
                                           "f 1 \\\r\n2 3\r\n"
                                           "v 9 9 9");
    EXPECT_EQ(repaired.text,
              "v 0 0 0\nv 1 0 0\nvn 0 -1 0\n# one\nf 1//1 2//1 3//1\nv 0 \\\n0 1\nf 1//1 2//1 3//1\nv 9 9 9");
    const std::vector<std::uint64_t> expected = {1, 2, 0, 3, 3, 4, 5, 6, 8};
    for (std::size_t line = 0; line < expected.size(); ++line) {
        if (expected[line] == 0) continue;
        EXPECT_EQ(repaired.lineMap.originalOf(line + 1), expected[line]) << line + 1;
    }
}

}  // namespace
}  // namespace quarn::test
