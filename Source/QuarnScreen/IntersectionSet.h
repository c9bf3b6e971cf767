/// \file
/// Sets of hits.
#pragma once

#include <vector>

#include <Common/Export.h>
#include <QuarnScreen/Intersection.h>

/// The hits of one ray, in the order in which the shape found them until sort() is called. Duplicates stay.
///
/// Thread-safety: that of a value.
class QUARNSCREEN_EXPORT IntersectionSet {
public:
    using const_iterator = std::vector<Intersection>::const_iterator;

    /// The empty set.
    IntersectionSet();
    /// A set of one hit.
    IntersectionSet(const Intersection& hit);
    /// A set of one hit of which only the position is known.
    IntersectionSet(const Point<double, 3>& point);
    IntersectionSet(const IntersectionSet& other);
    /// Leaves \p other empty.
    IntersectionSet(IntersectionSet&& other) noexcept;
    IntersectionSet& operator=(const IntersectionSet& other);
    /// Leaves \p other empty; assignment to itself does nothing.
    IntersectionSet& operator=(IntersectionSet&& other) noexcept;
    ~IntersectionSet();

    [[nodiscard]] bool empty() const { return hits.empty(); }
    [[nodiscard]] int count() const { return static_cast<int>(hits.size()); }

    /// Hits by position.
    /// \pre the hit exists; it is not checked.
    [[nodiscard]] const Intersection& first() const { return hits.front(); }
    [[nodiscard]] const Intersection& last() const { return hits.back(); }
    [[nodiscard]] const Intersection& get(int index) const { return hits[static_cast<std::size_t>(index)]; }

    /// Appends a copy.
    void add(const Intersection& hit);

    /// Orders the hits by their distance from \p from; equal distances keep their order.
    ///
    /// Intended: \p to is ignored, where a reader would expect an order along the ray. A hit behind \p from
    /// sorts by its distance like any other.
    void sort(const Point<double, 3>& from, const Point<double, 3>& to);

    [[nodiscard]] const_iterator begin() const { return hits.begin(); }
    [[nodiscard]] const_iterator end() const { return hits.end(); }

private:
    std::vector<Intersection> hits;
};
