/// \file
/// Writes to open files.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace quarn {

/// Passes all bytes to the system.
/// \return false if the system reports a failure; then `errno` has its number
[[nodiscard]] inline bool writeBytes(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) return false;
        if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace quarn
