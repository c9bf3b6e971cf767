#include "CommandLine/UsageError.h"

#include <gtest/gtest.h>

namespace quarn::test {
namespace {

const tool::NamedCommand kProgram{
    .name = "quarnscreen", .commands = {"info", "map"}, .options = {"--version"}};
const tool::NamedCommand kCommand{.name = "quarnscreen info", .commands = {}, .options = {"--unit"}};

TEST(UsageError, NamesTheWordAndTheNearestOne) {
    EXPECT_STREQ(
        unknownWordError("inof", kProgram).what(),
        "found the command \"inof\", which quarnscreen does not have, did you mean info? (see --help)");
    EXPECT_STREQ(
        unknownWordError("--uint", kCommand).what(),
        "found the option \"--uint\", which quarnscreen info does not have, did you mean --unit? (see "
        "--help)");
}

TEST(UsageError, ListsTheCommandsIfNoneIsNear) {
    EXPECT_STREQ(
        unknownWordError("frobnicate", kProgram).what(),
        "found the command \"frobnicate\", which quarnscreen does not have, expected one of info, map "
        "(see --help)");
    EXPECT_STREQ(missingCommandError(kProgram).what(),
                 "found no command after quarnscreen, expected one of info, map (see --help)");
}

TEST(UsageError, NamesAnArgumentTooMany) {
    EXPECT_STREQ(unknownWordError("b.xml", kCommand).what(),
                 "found the argument \"b.xml\", one more than quarnscreen info takes (see --help)");
}

}  // namespace
}  // namespace quarn::test
