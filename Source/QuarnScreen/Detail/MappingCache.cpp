#include "MappingCache.h"

namespace quarn {

MappingCache::MappingCache() {
    mappings.reserve(kCapacity);
}

std::optional<MappingCache::Mapping> MappingCache::find(const Point<double, 2>& uv) {
    const std::lock_guard<std::mutex> lock(mutex);
    const std::size_t count = mappings.size();
    std::size_t i = cursor;
    for (std::size_t step = 0; step < count; ++step) {
        if (mappings[i].uv == uv) {
            cursor = i;
            return mappings[i];
        }
        i = i + 1 == count ? 0 : i + 1;
    }
    return std::nullopt;
}

void MappingCache::add(const Mapping& mapping) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (mappings.size() < kCapacity) {
        mappings.push_back(mapping);
        cursor = mappings.size() - 1;
        return;
    }
    cursor = (cursor + 1) % kCapacity;
    mappings[cursor] = mapping;
}

}  // namespace quarn
