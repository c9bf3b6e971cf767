#include <QuarnKit/Base/Output/CompleteOutput.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <future>

#include <QuarnKit/Base/Error.h>
#include "Support/TemporaryFolder.h"

namespace quarn::test {
namespace {

constexpr std::size_t kMegabyte = 1000000;

// Bytes that differ from place to place.
std::string someBytes(std::size_t size) {
    std::string bytes;
    while (bytes.size() < size) bytes += std::to_string(bytes.size()) + " ";
    bytes.resize(size);
    return bytes;
}

void writeParts(CompleteOutput& output, const std::string& bytes) {
    constexpr std::size_t kPartBytes = 70001;
    for (std::size_t i = 0; i < bytes.size(); i += kPartBytes) output.write(bytes.substr(i, kPartBytes));
}

TEST(CompleteOutput, AFileGetsTheBytesWithTheirNewBeginning) {
    for (const std::size_t size : {std::size_t{10}, kMegabyte, 9 * kMegabyte}) {
        const TemporaryFolder folder;
        OutputFile file(folder.path("out"), {});
        CompleteOutput output(file);
        writeParts(output, someBytes(size));
        output.overwriteBeginning("begin");
        output.write("end");
        output.finish();
        file.finish();
        EXPECT_TRUE(bytesOf(folder.path("out")) == "begin" + someBytes(size).substr(5) + "end");
    }
}

// Returns what a pipe receives while `write` runs with its other end.
template <class Write>
std::string bytesThroughPipe(Write write) {
    const TemporaryFolder folder;
    const std::string pipe = folder.path("pipe");
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    auto received = std::async(std::launch::async, [&] { return bytesOf(pipe); });
    {
        OutputFile stream(pipe, {});
        write(stream);
    }
    return received.get();
}

TEST(CompleteOutput, AStreamGetsTheBytesWithTheirNewBeginningAtTheEnd) {
    for (const std::size_t size : {std::size_t{10}, kMegabyte, 9 * kMegabyte}) {
        const std::string received = bytesThroughPipe([&](OutputFile& stream) {
            CompleteOutput output(stream);
            writeParts(output, someBytes(size));
            output.overwriteBeginning("begin");
            output.write("end");
            output.finish();
            stream.finish();
        });
        EXPECT_TRUE(received == "begin" + someBytes(size).substr(5) + "end");
    }
}

TEST(CompleteOutput, AnOutputThatIsNotFinishedLeavesNothingInAStream) {
    const std::string received = bytesThroughPipe([&](OutputFile& stream) {
        CompleteOutput output(stream);
        writeParts(output, someBytes(9 * kMegabyte));
    });
    EXPECT_EQ(received, "");
}

TEST(CompleteOutput, ATemporaryFileThatCannotBeWrittenIsAnError) {
    const TemporaryFolder folder;
    const char* const before = std::getenv("TMPDIR");
    const std::string saved = before == nullptr ? "" : before;
    OutputFile stream("/dev/null", {});
    CompleteOutput output(stream);
    ::setenv("TMPDIR", "/proc", 1);
    try {
        writeParts(output, someBytes(9 * kMegabyte));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const Error& error) {
        EXPECT_EQ(error.details().kind, ErrorKind::SystemFailure);
        EXPECT_EQ(error.details().file, "/proc");
    }
    before == nullptr ? ::unsetenv("TMPDIR") : ::setenv("TMPDIR", saved.c_str(), 1);
}

}  // namespace
}  // namespace quarn::test
