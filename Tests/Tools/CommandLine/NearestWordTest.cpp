#include "CommandLine/NearestWord.h"

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

using tool::nearestWord;

const std::vector<std::string> kCommands = {"info",   "map",     "intersect", "nearest",
                                            "normal", "compare", "points"};
const std::vector<std::string> kOptions = {"--width", "--height", "--unit", "--output", "--max-memory"};

TEST(NearestWord, IsTheOneWithTheFewestEdits) {
    EXPECT_EQ(nearestWord("inof", kCommands), "info");       // swapped
    EXPECT_EQ(nearestWord("nfo", kCommands), "info");        // missing
    EXPECT_EQ(nearestWord("xpoints", kCommands), "points");  // added
    EXPECT_EQ(nearestWord("compaer", kCommands), "compare");
    EXPECT_EQ(nearestWord("nornal", kCommands), "normal");  // replaced
    EXPECT_EQ(nearestWord("info", kCommands), "info");
}

TEST(NearestWord, DashesAndCaseDoNotCount) {
    EXPECT_EQ(nearestWord("--widht", kOptions), "--width");
    EXPECT_EQ(nearestWord("-unit", kOptions), "--unit");
    EXPECT_EQ(nearestWord("INFO", kCommands), "info");
}

TEST(NearestWord, ABeginningIsNear) {
    EXPECT_EQ(nearestWord("inter", kCommands), "intersect");
    EXPECT_EQ(nearestWord("--out", kOptions), "--output");
}

TEST(NearestWord, IsNothingForAnotherWord) {
    EXPECT_EQ(nearestWord("frobnicate", kCommands), std::nullopt);
    EXPECT_EQ(nearestWord("", kCommands), std::nullopt);
    EXPECT_EQ(nearestWord("-z", kOptions), std::nullopt);
    EXPECT_EQ(nearestWord(std::string(1000000, 'i'), kCommands), std::nullopt);
    EXPECT_EQ(nearestWord("info", {}), std::nullopt);
}

}  // namespace
}  // namespace quarn::test
