#include "UnfinishedFile.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>

namespace quarn {

// A signal handler may read only objects that are free of locks and never move.
struct UnfinishedFileSlot {
    std::atomic<bool> isTaken = false;
    std::atomic<bool> isComplete = false;  // the path may be read
    std::array<char, PATH_MAX> path = {};
};
static_assert(std::atomic<bool>::is_always_lock_free);

namespace {

// A command writes one or two files at a time.
constexpr std::size_t kMaxFiles = 8;

constinit std::array<UnfinishedFileSlot, kMaxFiles> slots;

}  // namespace

UnfinishedFile::UnfinishedFile(const std::string& path) {
    if (path.size() >= PATH_MAX) return;
    const auto free = std::find_if(slots.begin(), slots.end(),
                                   [](UnfinishedFileSlot& each) { return !each.isTaken.exchange(true); });
    if (free == slots.end()) return;
    slot = &*free;
    *std::copy(path.begin(), path.end(), slot->path.begin()) = '\0';
    slot->isComplete = true;
}

UnfinishedFile::~UnfinishedFile() {
    if (slot == nullptr) return;
    slot->isComplete = false;
    slot->isTaken = false;
}

void removeUnfinishedFiles() noexcept {
    for (const UnfinishedFileSlot& slot : slots)
        if (slot.isComplete) ::unlink(slot.path.data());
}

}  // namespace quarn
