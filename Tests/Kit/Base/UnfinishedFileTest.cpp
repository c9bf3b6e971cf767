#include <QuarnKit/Base/Output/UnfinishedFile.h>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <optional>

#include <QuarnKit/Base/OutputFile.h>
#include "Support/TemporaryFolder.h"

namespace quarn::test {
namespace {

std::size_t fileCount(const TemporaryFolder& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path("")), {}));
}

TEST(UnfinishedFile, RegisteredFilesAreRemovedAndOthersStay) {
    const TemporaryFolder folder;
    const UnfinishedFile first(folder.write("first", "1"));
    std::optional<UnfinishedFile> finished(folder.write("finished", "2"));
    const UnfinishedFile absent(folder.path("absent"));
    finished.reset();
    removeUnfinishedFiles();
    EXPECT_FALSE(std::filesystem::exists(folder.path("first")));
    EXPECT_EQ(bytesOf(folder.path("finished")), "2");
}

TEST(UnfinishedFile, MoreFilesThanTheTableAndLongNamesAreIgnored) {
    const TemporaryFolder folder;
    std::deque<UnfinishedFile> files;
    for (int i = 0; i < 20; ++i) files.emplace_back(folder.write(std::to_string(i), "x"));
    files.emplace_back(std::string(100000, 'x'));
    removeUnfinishedFiles();
    EXPECT_LT(fileCount(folder), 20U);
    files.clear();
    const UnfinishedFile again(folder.write("again", "x"));
    removeUnfinishedFiles();
    EXPECT_FALSE(std::filesystem::exists(folder.path("again")));
}

TEST(UnfinishedFile, AnOutputIsUnfinishedUntilItHasItsName) {
    const TemporaryFolder folder;
    OutputFile output(folder.path("out"), {});
    output.write("text");
    output.flush();
    EXPECT_EQ(fileCount(folder), 1U);
    removeUnfinishedFiles();
    EXPECT_EQ(fileCount(folder), 0U);
    OutputFile next(folder.path("out"), {});
    next.write("text");
    next.finish();
    removeUnfinishedFiles();
    EXPECT_EQ(bytesOf(folder.path("out")), "text");
    EXPECT_EQ(fileCount(folder), 1U);
}

}  // namespace
}  // namespace quarn::test
