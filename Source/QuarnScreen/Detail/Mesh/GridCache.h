/// \file
/// The grid last made.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::detail {

/// Keeps the grid that was made last, together with its density.
///
/// Intended: a density counts as made from the moment when it is begun. So a caller with the same density gets the
/// grid of before while another thread computes, or where that failed; a reader would expect to wait.
class GridCache {
public:
    using Polylines = IScreenGeometry::Polylines;

    GridCache() : contents(std::make_shared<const Polylines>()) {}

    /// The grid for a density: `calculate()` where the density is not that of the last grid.
    template <class Calculate>
    [[nodiscard]] std::shared_ptr<const Polylines> get(int density, Calculate&& calculate) {
        if (density != cachedDensity) {
            // Recursive, as the calculation asks virtual operations, which may ask for a grid.
            const std::lock_guard<std::recursive_mutex> lock(regeneration);
            cachedDensity = density;
            replace(std::make_shared<const Polylines>(calculate()));
        }
        const std::lock_guard<std::mutex> lock(handover);
        return contents;
    }

    /// Makes any density but 0 count as not made; the grid itself stays.
    void invalidate() { cachedDensity = 0; }

private:
    void replace(std::shared_ptr<const Polylines> made) {
        const std::lock_guard<std::mutex> lock(handover);
        contents.swap(made);
    }

    std::recursive_mutex regeneration;
    std::atomic<int> cachedDensity = 0;
    std::mutex handover;  // held for a copy or a swap of the pointer
    std::shared_ptr<const Polylines> contents;
};

}  // namespace quarn::detail
