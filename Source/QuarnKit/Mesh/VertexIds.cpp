#include "VertexIds.h"

#include <bit>

#include <Common/Detail/Assert.h>
#include <QuarnKit/Base/Hash.h>
#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

constexpr std::size_t kInitialSlots = 16;

}  // namespace

template <std::size_t N>
VertexIds<N>::VertexIds(std::size_t expected) {
    known.reserve(expected);
    grow(std::bit_ceil(2 * expected + kInitialSlots));
}

template <std::size_t N>
std::uint32_t VertexIds<N>::idOf(const Point<double, N>& point) {
    QUARN_ASSERT(isFinite(point));
    std::size_t slot = slotOf(point);
    if (slots[slot] != 0) return slots[slot] - 1;
    if (2 * (known.size() + 1) > slots.size()) {
        grow(2 * slots.size());
        slot = slotOf(point);
    }
    known.push_back(point);
    slots[slot] = static_cast<std::uint32_t>(known.size());
    return slots[slot] - 1;
}

// Returns the slot of an equal point, or the free slot to insert it.
template <std::size_t N>
std::size_t VertexIds<N>::slotOf(const Point<double, N>& point) const {
    std::size_t slot = hashOf<N>(point) & (slots.size() - 1);
    while (slots[slot] != 0 && known[slots[slot] - 1] != point) slot = (slot + 1) & (slots.size() - 1);
    return slot;
}

template <std::size_t N>
void VertexIds<N>::grow(std::size_t count) {
    slots.assign(count, 0);
    for (std::size_t i = 0; i < known.size(); ++i)
        slots[slotOf(known[i])] = static_cast<std::uint32_t>(i + 1);
}

template class VertexIds<2>;
template class VertexIds<3>;
template class VertexIds<5>;

}  // namespace quarn
