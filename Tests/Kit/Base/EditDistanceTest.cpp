#include <QuarnKit/Base/Text/EditDistance.h>

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

TEST(EditDistance, CountsInsertedRemovedReplacedAndSwappedBytes) {
    EXPECT_EQ(editDistance("", ""), 0U);
    EXPECT_EQ(editDistance("info", "info"), 0U);
    EXPECT_EQ(editDistance("", "abc"), 3U);
    EXPECT_EQ(editDistance("abc", ""), 3U);
    EXPECT_EQ(editDistance("kitten", "sitting"), 3U);
    EXPECT_EQ(editDistance("ifno", "info"), 1U);
    EXPECT_EQ(editDistance("plto", "plot"), 1U);
    EXPECT_EQ(editDistance("plto", "plots"), 2U);
}

TEST(EditDistance, LowerCaseIsThatOfAsciiAlone) {
    EXPECT_EQ(inLowerCase("Wall-AZ \xC3\x84"), "wall-az \xC3\x84");
}

}  // namespace
}  // namespace quarn::test
