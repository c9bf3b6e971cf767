#include "MappingCache.h"

#include <bit>
#include <cstdint>

namespace quarn::detail {

MappingCache::MappingCache() {
    mappings.reserve(kCapacity);
}

// Returns the first entry from the cursor to the end, then from the beginning. Compares the keys of
// all entries first, so that no branch depends on the position of the match.
std::optional<std::size_t> MappingCache::indexOf(const Point<double, 2>& uv) const {
    std::uint32_t matches = 0;
    for (std::size_t i = 0; i < kCapacity; ++i) matches |= static_cast<std::uint32_t>(keys[i] == uv[0]) << i;
    matches &= (std::uint32_t{1} << mappings.size()) - 1;
    const std::uint32_t beforeCursor = (std::uint32_t{1} << cursor) - 1;
    for (std::uint32_t part : {matches & ~beforeCursor, matches & beforeCursor}) {
        for (; part != 0; part &= part - 1) {
            const auto i = static_cast<std::size_t>(std::countr_zero(part));
            if (mappings[i].uv == uv) return i;
        }
    }
    return std::nullopt;
}

std::optional<MappingCache::Mapping> MappingCache::find(const Point<double, 2>& uv) {
    const std::lock_guard<std::mutex> lock(mutex);
    const std::optional<std::size_t> found = indexOf(uv);
    if (!found) return std::nullopt;
    cursor = *found;
    return mappings[cursor];
}

void MappingCache::add(const Mapping& mapping) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (mappings.size() < kCapacity) {
        mappings.push_back(mapping);
        cursor = mappings.size() - 1;
    } else {
        cursor = (cursor + 1) % kCapacity;
        mappings[cursor] = mapping;
    }
    keys[cursor] = mapping.uv[0];
}

}  // namespace quarn::detail
