/// \file
/// The last answers of mapInto3D().
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

#include <QuarnScreen/MeshScreen.h>

namespace quarn::detail {

/// A ring of the last twenty answers, searched from the entry that was last hit or written.
///
/// Intended: a hit moves the place at which the next answer is written, so an entry just behind a hot one may go sooner
/// than an older one elsewhere; a UV may stand twice; and nothing empties the ring, not even a change of the mesh. A
/// reader would expect the oldest entry to go, and all of them with the mesh that they were taken from.
///
/// Safe on any number of threads. The lock is held for one search or one write, never while an answer is computed.
class MappingCache {
public:
    using Mapping = MeshScreen::MappingInto3D;

    MappingCache();

    /// A copy of the first entry from the cursor on whose UV equals \p uv exactly.
    [[nodiscard]] std::optional<Mapping> find(const Point<double, 2>& uv);

    /// Writes an entry: at the end while there is room, else behind the cursor.
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
