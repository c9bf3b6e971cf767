#include "Check/Corners.h"

#include <algorithm>
#include <bit>

namespace quarn {

namespace {

using Key = std::array<double, 5>;

// A corner of the list, and a hash that tells most different ones apart.
struct Entry {
    std::uint64_t hash;
    std::uint32_t corner;  // 3 * triangle + index in the triangle
};

// The sum folds -0.0 into 0.0.
Key keyOf(const TriangleVertex& corner, CornerIdentity identity) {
    const bool withUV = identity == CornerIdentity::PositionAndUV;
    return {corner.position[0] + 0.0, corner.position[1] + 0.0, corner.position[2] + 0.0,
            withUV ? corner.uv[0] + 0.0 : 0.0, withUV ? corner.uv[1] + 0.0 : 0.0};
}

std::uint64_t hashOf(const Key& key) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;  // 2^64 divided by the golden ratio, odd
    std::uint64_t hash = 1;
    for (const double value : key) {
        const std::uint64_t product = (hash ^ std::bit_cast<std::uint64_t>(value)) * kFactor;
        hash = product ^ (product >> 32U);
    }
    return hash;
}

}  // namespace

CornerNumbers numberCorners(const std::vector<Triangle>& triangles, CornerIdentity identity) {
    const auto keyAt = [&](std::uint32_t corner) {
        return keyOf(triangles[corner / 3].vertices[corner % 3], identity);
    };
    std::vector<Entry> entries(triangles.size() * 3);
    for (std::uint32_t corner = 0; corner < entries.size(); ++corner)
        entries[corner] = {hashOf(keyAt(corner)), corner};
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        return a.hash != b.hash ? a.hash < b.hash : keyAt(a.corner) < keyAt(b.corner);
    });

    CornerNumbers numbers(triangles.size());
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::uint32_t corner = entries[i].corner;
        if (i > 0 &&
            (entries[i - 1].hash != entries[i].hash || keyAt(entries[i - 1].corner) != keyAt(corner)))
            ++number;
        numbers[corner / 3][corner % 3] = number;
    }
    return numbers;
}

}  // namespace quarn
