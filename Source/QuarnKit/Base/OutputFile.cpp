#include "OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Base/Output/WriteBytes.h>

namespace quarn {

namespace {

constexpr std::size_t kBufferSize = 65536;
constexpr std::size_t kRandomBytes = 6;  // of a temporary name
constexpr mode_t kDefaultMode = 0666;    // before the user's mask
constexpr mode_t kPermissions = 07777;

std::optional<struct stat> statusOf(const std::string& path) {
    struct stat status {};
    const int result = path == "-" ? ::fstat(STDIN_FILENO, &status) : ::stat(path.c_str(), &status);
    if (result != 0) return std::nullopt;
    return status;
}

void refuseInput(const std::string& path, const struct stat& output, const std::vector<std::string>& inputs) {
    for (const std::string& input : inputs) {
        const auto status = statusOf(input);
        if (status && status->st_dev == output.st_dev && status->st_ino == output.st_ino)
            throw Error({.found = "the output is also an input", .expected = "another file", .file = path});
    }
}

// Resolves symbolic links, so that the file is replaced and its links stay.
std::string withoutLinks(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), std::free);
    return resolved ? std::string(resolved.get()) : path;
}

}  // namespace

OutputFile::OutputFile(const std::string& path, const std::vector<std::string>& inputs) : name(path) {
    if (path.empty()) throw Error({.found = "an empty file name", .expected = "a file to write"});
    if (path == "-") {
        name = "standard output";
        file = FileHandle(::dup(STDOUT_FILENO));
        if (!file.isOpen()) throw systemError(name, "cannot be written");
        return;
    }
    const auto status = statusOf(path);
    if (status && S_ISDIR(status->st_mode))
        throw Error({.found = "a directory", .expected = "a file to write", .file = path});
    if (status && !S_ISREG(status->st_mode)) {
        file = FileHandle(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        if (!file.isOpen()) throw systemError(name, "cannot be written");
        return;
    }
    if (status) refuseInput(path, *status, inputs);
    openTemporary(withoutLinks(path));
    if (status) ::fchmod(file.get(), status->st_mode & kPermissions);
}

// The name is random, so that no other process uses it. A signal handler may then remove the file
// at any time after its registration, also before it exists.
void OutputFile::openTemporary(const std::string& path) {
    std::array<unsigned char, kRandomBytes> bytes{};
    if (::getentropy(bytes.data(), bytes.size()) != 0) throw systemError(name, "cannot be written");
    temporaryName = path + ".tmp" + hexText(bytes);
    unfinished.emplace(temporaryName);
    file = FileHandle(::open(temporaryName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kDefaultMode));
    if (!file.isOpen()) throw systemError(name, "cannot be written");
    target = path;
}

OutputFile::~OutputFile() {
    if (!target.empty()) {
        ::unlink(temporaryName.c_str());
        return;
    }
    try {
        flush();
    } catch (const Error&) {
        // Another error is being thrown, or finish() has reported this one.
    }
}

void OutputFile::write(std::string_view text) {
    // A long text needs no copy.
    if (text.size() >= kBufferSize) {
        flush();
        if (!writeBytes(file.get(), text)) throw systemError(name, "cannot be written");
        return;
    }
    buffer.append(text);
    if (buffer.size() >= kBufferSize) flush();
}

void OutputFile::flush() {
    const bool isWritten = writeBytes(file.get(), buffer);
    buffer.clear();
    if (!isWritten) throw systemError(name, "cannot be written");
}

void OutputFile::overwriteBeginning(std::string_view bytes) {
    flush();
    const bool isWritten = ::lseek(file.get(), 0, SEEK_SET) == 0 && writeBytes(file.get(), bytes) &&
                           ::lseek(file.get(), 0, SEEK_END) >= 0;
    if (!isWritten) throw systemError(name, "cannot be written");
}

void OutputFile::finish() {
    flush();
    if (target.empty()) return;
    // A full or removed disk may fail only here; the old file is unchanged then.
    if (::fsync(file.get()) != 0 || std::rename(temporaryName.c_str(), target.c_str()) != 0)
        throw systemError(name, "cannot be written");
    unfinished.reset();
    target.clear();
}

void refuseInputAsOutput(const std::string& path, const std::vector<std::string>& inputs) {
    if (path == "-") return;
    if (const auto output = statusOf(path)) refuseInput(path, *output, inputs);
}

}  // namespace quarn
