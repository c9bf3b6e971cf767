#include "VertexIds.h"

#include <bit>

namespace quarn {

namespace {

constexpr std::size_t kInitialSlots = 16;
constexpr std::uint64_t kMixer = 0x9E3779B97F4A7C15;  // odd, with bits that look random

std::uint64_t mixBits(std::uint64_t bits) {
    bits *= kMixer;
    return bits ^ (bits >> 32);
}

}  // namespace

template <std::size_t N>
VertexIds<N>::VertexIds(std::size_t expected) {
    known.reserve(expected);
    grow(std::bit_ceil(2 * expected + kInitialSlots));
}

template <std::size_t N>
std::uint32_t VertexIds<N>::idOf(const Point<double, N>& point) {
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

// The slot of an equal point, or the free one where it belongs.
template <std::size_t N>
std::size_t VertexIds<N>::slotOf(const Point<double, N>& point) const {
    std::uint64_t hash = 0;
    // Adding 0 makes -0 what it is equal to.
    for (std::size_t i = 0; i < N; ++i) hash = mixBits(hash ^ std::bit_cast<std::uint64_t>(point[i] + 0.0));
    std::size_t slot = hash & (slots.size() - 1);
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
