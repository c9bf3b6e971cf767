#include "InputStream.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include <QuarnKit/Base/Error.h>

namespace quarn {

namespace {

bool isResourceShortage(int error) {
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == EIO;
}

Error openError(const std::string& path, const std::string& expected) {
    if (errno == ENOENT) return Error({.found = "no such file", .expected = expected, .file = path});
    return systemError(path, "cannot be opened",
                       isResourceShortage(errno) ? ErrorKind::SystemFailure : ErrorKind::BadInput);
}

}  // namespace

InputStream::InputStream(const std::string& path, const std::string& expected)
    : displayName(path), file(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (path.empty()) throw Error({.found = "an empty file name", .expected = expected});
    if (!file.isOpen()) throw openError(path, expected);
    struct stat status {};
    if (::fstat(file.get(), &status) == 0 && S_ISDIR(status.st_mode))
        throw Error({.found = "a directory", .expected = expected, .file = path});
}

InputStream::InputStream(FileHandle handle, std::string name)
    : displayName(std::move(name)), file(std::move(handle)) {}

InputStream InputStream::openFileOrStandardInput(const std::string& path, const std::string& expected) {
    if (path != "-") return {path, expected};
    return {FileHandle(::dup(STDIN_FILENO)), "standard input"};
}

std::size_t InputStream::read(char* buffer, std::size_t size) {
    if (!unread.empty()) {
        const std::size_t count = unread.copy(buffer, size);
        unread.erase(0, count);
        return count;
    }
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw systemError(displayName, "cannot be read");
    }
}

// Waits for further bytes only while all of them equal the prefix: a short row of another format
// may be all that its writer sends before it waits for a result.
bool InputStream::startsWith(std::string_view prefix) {
    std::string bytes;
    bool isAtEnd = false;
    while (!isAtEnd && bytes.size() < prefix.size() && prefix.starts_with(bytes)) {
        const std::size_t before = bytes.size();
        bytes.resize(prefix.size());
        const std::size_t count = read(bytes.data() + before, prefix.size() - before);
        bytes.resize(before + count);
        isAtEnd = count == 0;
    }
    unread.insert(0, bytes);
    return bytes == prefix;
}

std::optional<FileRest> InputStream::rest() const {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    const off_t position = ::lseek(file.get(), 0, SEEK_CUR);
    if (position < 0) return std::nullopt;
    const std::uint64_t begin = static_cast<std::uint64_t>(position) - unread.size();
    const auto end = static_cast<std::uint64_t>(status.st_size);
    return FileRest{.begin = begin, .size = end > begin ? end - begin : 0};
}

void InputStream::readAt(std::uint64_t offset, char* buffer, std::size_t size) const {
    while (size > 0) {
        const ssize_t count = ::pread(file.get(), buffer, size, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw systemError(displayName, "cannot be read");
        if (count == 0)
            throw Error({.found = "the file became shorter while it was read", .file = displayName});
        const auto length = static_cast<std::size_t>(count);
        offset += length;
        buffer += length;
        size -= length;
    }
}

bool InputStream::isReady() const {
    if (!unread.empty()) return true;
    pollfd state{.fd = file.get(), .events = POLLIN, .revents = 0};
    return ::poll(&state, 1, 0) > 0;
}

}  // namespace quarn
