#include "InputStream.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <cerrno>

#include "Base/ToolError.h"

namespace quarn {

namespace {

bool isShortageOfTheSystem(int error) {
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == EIO;
}

ToolError cannotOpen(const std::string& path, const std::string& expected) {
    if (errno == ENOENT) return {.found = "no such file", .expected = expected, .file = path};
    return systemError(path, "cannot be opened",
                       isShortageOfTheSystem(errno) ? ExitCode::SystemFailed : ExitCode::BadInput);
}

}  // namespace

InputFile::InputFile(const std::string& path, const std::string& expected)
    : displayName(path), file(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (path.empty()) throw ToolError{.found = "an empty file name", .expected = expected};
    if (!file.isOpen()) throw cannotOpen(path, expected);
    struct stat status {};
    if (::fstat(file.get(), &status) == 0 && S_ISDIR(status.st_mode))
        throw ToolError{.found = "a directory", .expected = expected, .file = path};
}

InputFile::InputFile(FileHandle handle, std::string name)
    : displayName(std::move(name)), file(std::move(handle)) {}

InputFile InputFile::orStandardInput(const std::string& path, const std::string& expected) {
    if (path != "-") return {path, expected};
    return {FileHandle(::dup(STDIN_FILENO)), "standard input"};
}

std::size_t InputFile::read(char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw systemError(displayName, "cannot be read");
    }
}

bool InputFile::isReady() const {
    pollfd state{.fd = file.get(), .events = POLLIN, .revents = 0};
    return ::poll(&state, 1, 0) > 0;
}

}  // namespace quarn
