#include "InputStream.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

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
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw systemError(displayName, "cannot be read");
    }
}

std::uint64_t InputStream::fileSize() const {
    struct stat status {};
    return ::fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode)
               ? static_cast<std::uint64_t>(status.st_size)
               : 0;
}

bool InputStream::isReady() const {
    pollfd state{.fd = file.get(), .events = POLLIN, .revents = 0};
    return ::poll(&state, 1, 0) > 0;
}

}  // namespace quarn
