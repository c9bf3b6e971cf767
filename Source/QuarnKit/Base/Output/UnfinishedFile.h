/// \file
/// The files that a process has begun to write, so that a signal handler can remove them.
#pragma once

#include <string>

namespace quarn {

struct UnfinishedFileSlot;

/// Registers the name of a file for removeUnfinishedFiles() as long as the object lives.
///
/// The names are stored in a fixed table. If it is full, or the name is longer than a path can be,
/// the file is not registered. Safe on several threads.
class UnfinishedFile {
public:
    /// \param path file that will be created; no file of another process may get this name
    explicit UnfinishedFile(const std::string& path);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

private:
    UnfinishedFileSlot* slot = nullptr;
};

/// Removes the registered files. Async-signal-safe.
void removeUnfinishedFiles() noexcept;

}  // namespace quarn
