/// \file
/// Cache of the last grid.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::detail {

/// Caches the last grid with its density.
///
/// \note Intended: a density counts as cached as soon as its computation starts. A caller with the
///       same density gets the previous grid while another thread computes, or after the
///       computation failed. A reader would expect to wait.
class GridCache {
public:
    using Polylines = IScreenGeometry::Polylines;

    GridCache() : contents(std::make_shared<const Polylines>()) {}

    /// Returns the grid of a density. Calls `calculate()` if the density is not that of the last
    /// grid.
    template <class Calculate>
    [[nodiscard]] std::shared_ptr<const Polylines> get(int density, Calculate&& calculate) {
        if (density != cachedDensity) {
            // The mutex is recursive, because the calculation calls virtual functions, which may
            // request a grid.
            const std::lock_guard<std::recursive_mutex> lock(regeneration);
            cachedDensity = density;
            replace(std::make_shared<const Polylines>(calculate()));
        }
        const std::lock_guard<std::mutex> lock(handover);
        return contents;
    }

    /// Invalidates every density except 0. The grid itself is kept.
    void invalidate() { cachedDensity = 0; }

private:
    void replace(std::shared_ptr<const Polylines> computed) {
        const std::lock_guard<std::mutex> lock(handover);
        contents.swap(computed);
    }

    std::recursive_mutex regeneration;
    std::atomic<int> cachedDensity = 0;
    std::mutex handover;  // locked for a copy or a swap of the pointer
    std::shared_ptr<const Polylines> contents;
};

}  // namespace quarn::detail
