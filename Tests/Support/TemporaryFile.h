/// \file
/// Files with a given text.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace quarn::test {

/// A file that holds a text while it lives.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& text, const std::string& name = "input") {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        // Tests run side by side, each in a process of its own.
        file = std::filesystem::temp_directory_path() /
               (std::string("quarn-") + test->test_suite_name() + "-" + test->name() + "-" + name);
        std::ofstream(file, std::ios::binary) << text;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::filesystem::remove(file); }

    [[nodiscard]] std::string path() const { return file.string(); }

private:
    std::filesystem::path file;
};

}  // namespace quarn::test
