/// \file
/// Positions that were measurePosition not long ago.
#pragma once

#include <bit>
#include <vector>

#include "SurfacePiece.h"

namespace quarn {

/// Measures positions, and keeps some, as triangles share their corners. Not safe on several threads.
class PositionCache {
public:
    explicit PositionCache(const TriangleTree& measuringTree) : tree(measuringTree), slots(kSlots) {}

    [[nodiscard]] const MeasuredPosition& measurePosition(const Point<double, 3>& position) {
        MeasuredPosition& slot = slots[slotOf(position)];
        if (slot.nearest.index == TriangleTree::kNone || slot.position != position)
            slot = quarn::measurePosition(tree, position, hint);
        hint = slot.nearest.index;
        return slot;
    }

private:
    static constexpr std::size_t kSlots = 1U << 13U;

    static std::size_t slotOf(const Point<double, 3>& position) {
        std::uint64_t hash = 0;
        for (std::size_t i = 0; i < 3; ++i)
            hash = (hash ^ std::bit_cast<std::uint64_t>(position[i])) * 0x9E3779B97F4A7C15U;
        return static_cast<std::size_t>((hash ^ (hash >> 32U)) % kSlots);
    }

    const TriangleTree& tree;
    std::vector<MeasuredPosition> slots;
    std::uint32_t hint = TriangleTree::kNone;
};

}  // namespace quarn
