/// \file
/// A short queue of visits.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quarn::detail {

/// Delays the visits of up to \p Capacity items, so that the memory that a caller prefetches for
/// an item arrives before its visit.
template <std::size_t Capacity>
class DelayedVisits {
public:
    /// Adds an item. If the queue is full, calls `visit(item)` for all earlier ones.
    template <class Visit>
    void add(std::uint32_t item, Visit& visit) {
        if (count == Capacity) visitAll(visit);
        items[count++] = item;
    }

    /// Calls `visit(item)` for each item, in the order in which they were added, and empties the
    /// queue.
    template <class Visit>
    void visitAll(Visit& visit) {
        for (std::size_t i = 0; i < count; ++i) visit(items[i]);
        count = 0;
    }

    /// Returns true if no item waits.
    [[nodiscard]] bool isEmpty() const { return count == 0; }

private:
    std::array<std::uint32_t, Capacity> items = {};
    std::size_t count = 0;
};

}  // namespace quarn::detail
