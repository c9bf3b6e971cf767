#include <QuarnKit/Base/OutputFile.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

TEST(OutputFile, ShortAndLongTextsKeepTheirOrder) {
    const TemporaryFile file("old", "out.txt");
    std::string expected;
    {
        OutputFile output(file.path(), {});
        for (const std::size_t size : {3U, 70'000U, 5U, 65'535U, 65'536U, 1U, 200'000U, 2U}) {
            const std::string text(size, static_cast<char>('a' + size % 26));
            output.write(text);
            expected += text;
        }
        output.finish();
    }
    std::ostringstream written;
    written << std::ifstream(file.path()).rdbuf();
    EXPECT_EQ(written.str(), expected);
}

}  // namespace
}  // namespace quarn::test
