/// \file
/// Cache of the last results of MeshScreen::mapInto3D().
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

#include <QuarnScreen/MeshScreen.h>

namespace quarn::detail {

/// A ring buffer of the last twenty results. A search starts at the entry that was last found or
/// written.
///
/// \note Intended: a found entry moves the position of the next write, so that the entry after a
///       frequently found one may be replaced before an older one elsewhere. A UV may occur twice.
///       Nothing clears the cache, not even a change of the mesh. A reader would expect the oldest
///       entry to be replaced, and all entries to be removed with their mesh.
///
/// Thread-safety: any number of threads may call at once. The mutex is locked for one search or one
/// write, and never during a computation.
class MappingCache {
public:
    using Mapping = MeshScreen::MappingInto3D;

    MappingCache();

    /// Returns a copy of the first entry from the cursor on whose UV equals \p uv exactly.
    [[nodiscard]] std::optional<Mapping> find(const Point<double, 2>& uv);

    /// Appends an entry if the buffer is not full, else replaces the entry after the cursor.
    void add(const Mapping& mapping);

private:
    static constexpr std::size_t kCapacity = 20;

    [[nodiscard]] std::optional<std::size_t> indexOf(const Point<double, 2>& uv) const;

    std::mutex mutex;
    std::vector<Mapping> mappings;
    std::array<double, kCapacity> keys{};  // u of each entry
    std::size_t cursor = 0;
};

}  // namespace quarn::detail
