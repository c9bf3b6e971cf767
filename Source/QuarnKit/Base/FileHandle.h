/// \file
/// Ownership of an open file.
#pragma once

#include <unistd.h>

#include <utility>

namespace quarn {

/// Owns a file descriptor and closes it in its destructor; -1 is none. Not safe on several threads.
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
