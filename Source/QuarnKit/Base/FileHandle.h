/// \file
/// Ownership of an open file.
#pragma once

#include <unistd.h>

#include <utility>

namespace quarn {

/// Closes its file descriptor when it dies; -1 is none.
class FileHandle {
public:
    FileHandle() = default;
    explicit FileHandle(int openDescriptor) : descriptor(openDescriptor) {}
    FileHandle(FileHandle&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(descriptor, other.descriptor);
        return *this;
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() {
        if (descriptor >= 0) ::close(descriptor);
    }

    [[nodiscard]] int get() const { return descriptor; }
    [[nodiscard]] bool isOpen() const { return descriptor >= 0; }

private:
    int descriptor = -1;
};

}  // namespace quarn
