/// \file
/// Sets of hits.
#pragma once

#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/Intersection.h>

/// The hits of one ray.
///
/// Until sort() is called, the hits are in the order in which the screen found them. Duplicates are
/// not removed. An empty set is the result of a ray without a hit. The set owns its hits;
/// references and iterators become invalid with any change of the set.
///
/// Thread-safety: concurrent reads are safe, as for a built-in value.
///
/// \code{.cpp}
/// Intersection nearHit;
/// nearHit.point = {0.0, 1.0, 0.0};
/// IntersectionSet hits(Point<double, 3>(0.0, 5.0, 0.0));
/// hits.add(nearHit);
/// hits.sort({0.0, 0.0, 0.0}, {0.0, 1.0, 0.0});
/// assert(hits.count() == 2 && hits.first().point[1] == 1.0);
/// \endcode
class QUARNSCREEN_EXPORT IntersectionSet {
public:
    using const_iterator = std::vector<Intersection>::const_iterator;

    /// Creates the empty set.
    IntersectionSet();
    /// Creates a set of one hit.
    IntersectionSet(const Intersection& hit);
    /// Creates a set of one hit of which only the position is known.
    IntersectionSet(const Point<double, 3>& point);
    IntersectionSet(const IntersectionSet& other);
    /// Leaves \p other empty.
    IntersectionSet(IntersectionSet&& other) noexcept;
    IntersectionSet& operator=(const IntersectionSet& other);
    /// Leaves \p other empty. Assignment to itself does nothing.
    IntersectionSet& operator=(IntersectionSet&& other) noexcept;
    ~IntersectionSet();

    [[nodiscard]] bool empty() const { return hits.empty(); }
    [[nodiscard]] int count() const { return static_cast<int>(hits.size()); }

    /// Returns a hit by its index in the current order, from 0.
    /// \pre the hit exists; it is not checked
    [[nodiscard]] const Intersection& first() const { return hits.front(); }
    [[nodiscard]] const Intersection& last() const { return hits.back(); }
    [[nodiscard]] const Intersection& get(int index) const { return hits[static_cast<std::size_t>(index)]; }

    /// Appends a copy of a hit. Amortized O(1).
    void add(const Intersection& hit);

    /// Sorts the hits by their distance from \p from. Equal distances keep their order. O(n log n).
    ///
    /// \note Intended: \p to is ignored; a reader would expect an order along the ray. A hit behind
    ///       \p from is sorted by its distance like any other.
    void sort(const Point<double, 3>& from, const Point<double, 3>& to);

    [[nodiscard]] const_iterator begin() const { return hits.begin(); }
    [[nodiscard]] const_iterator end() const { return hits.end(); }

private:
    std::vector<Intersection> hits;
};
