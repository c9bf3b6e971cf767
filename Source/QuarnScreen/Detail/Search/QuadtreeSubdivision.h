/// \file
/// Subdivision rule of a quadtree over UV.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

#include <QuarnScreen/RegionMap.h>

namespace quarn::detail {

[[nodiscard]] inline double middleU(const RegionRect& rect) {
    return (rect.maxU - rect.minU) * 0.5 + rect.minU;
}
[[nodiscard]] inline double middleV(const RegionRect& rect) {
    return (rect.maxV - rect.minV) * 0.5 + rect.minV;
}

/// Returns the bounding box of the UVs of a triangle's corners.
[[nodiscard]] inline RegionRect uvBoxOf(const Point<double, 2>& a, const Point<double, 2>& b,
                                        const Point<double, 2>& c) {
    return {std::min(std::min(a[0], b[0]), c[0]), std::max(std::max(a[0], b[0]), c[0]),
            std::min(std::min(a[1], b[1]), c[1]), std::max(std::max(a[1], b[1]), c[1])};
}

/// Returns the bounding box of all boxes; inverted without boxes.
[[nodiscard]] RegionRect unionOf(const std::vector<RegionRect>& boxes);

/// A range of box indices within one array.
struct BoxRange {
    int* first;
    int* last;

    [[nodiscard]] int size() const { return static_cast<int>(last - first); }
};

/// Subdivides a rectangle and its boxes into quadrants and reports the nodes to a visitor, children
/// before their parent.
///
/// A visitor has:
///  - `Checkpoint save()` and `void restore(const Checkpoint&)`: its state, for a node that reverts
///    its subdivision;
///  - `bool mayCut(int count)`: called before the subdivision of that many boxes; on false they
///    become a leaf;
///  - `int leaf(BoxRange, int depth)` and `int inner(const std::array<int, 4>& children)`: return
///    the index of a new node, from 0;
///  - `void giveUp()`: called if a node reverts its subdivision.
template <class Visitor>
class QuadtreeSubdivision {
public:
    static constexpr int kMaxDepth = 18;
    static constexpr int kLeafCapacity = 8;
    static constexpr int kFirstDepth = 1;

    /// Both arguments must outlive this object.
    QuadtreeSubdivision(const std::vector<RegionRect>& rectangles, Visitor& nodeVisitor)
        : boxes(rectangles), visitor(nodeVisitor) {
        if (boxes.size() <= kMaskBits) return;
        misplaced.resize(boxes.size());
        quadrants.resize(kMaxDepth);
    }

    /// Subdivides all boxes, starting with a rectangle of the given depth.
    void run(const RegionRect& rect, int depth = kFirstDepth) {
        std::vector<int> indices(boxes.size());
        std::iota(indices.begin(), indices.end(), 0);
        cut({indices.data(), indices.data() + indices.size()}, rect, depth, kNoParent);
    }

private:
    static constexpr int kNoParent = std::numeric_limits<int>::max();
    static constexpr int kGivenUp = -1;
    static constexpr int kQuadrants = 4;
    static constexpr std::size_t kMaskBits = 64;

    using Mask = std::uint64_t;

    static RegionRect quadrantOf(const RegionRect& rect, double midU, double midV, int quadrant) {
        RegionRect part = rect;
        ((quadrant & 1) == 0 ? part.maxU : part.minU) = midU;
        ((quadrant & 2) == 0 ? part.maxV : part.minV) = midV;
        return part;
    }

    // Records the quadrants that each box overlaps, and counts the boxes of each quadrant. Contact
    // counts as overlap, so a triangle on a split line belongs to both sides. The boxes of a node
    // overlap its rectangle, so only the two inner sides of a quadrant need a check.
    std::array<int, 4> findQuadrants(const BoxRange& range, double midU, double midV, int depth) {
        std::vector<std::uint8_t>& found = quadrants[static_cast<std::size_t>(depth)];
        found.resize(boxes.size());
        std::array<int, 4> counts{};
        for (const int* i = range.first; i != range.last; ++i) {
            const RegionRect& box = boxes[static_cast<std::size_t>(*i)];
            const int left = static_cast<int>(!(box.minU > midU));
            const int right = static_cast<int>(!(midU > box.maxU));
            const int above = static_cast<int>(!(box.minV > midV));
            const int below = static_cast<int>(!(midV > box.maxV));
            const std::array<int, 4> overlaps = {left & above, right & above, left & below, right & below};
            for (std::size_t quadrant = 0; quadrant < counts.size(); ++quadrant)
                counts[quadrant] += overlaps[quadrant];
            found[static_cast<std::size_t>(*i)] =
                static_cast<std::uint8_t>(overlaps[0] + 2 * overlaps[1] + 4 * overlaps[2] + 8 * overlaps[3]);
        }
        return counts;
    }

    // Returns true if every box overlaps the first quadrant.
    [[nodiscard]] bool areAllInFirstQuadrant(const BoxRange& range, double midU, double midV) const {
        return std::all_of(range.first, range.last, [&](int i) {
            const RegionRect& box = boxes[static_cast<std::size_t>(i)];
            return !(box.minU > midU) && !(box.minV > midV);
        });
    }

    // Moves the boxes that overlap a quadrant to the front, and returns the start of the others.
    // The order determines which of several triangles a search finds: the first misplaced box from
    // the front is swapped with the first misplaced box from the back, and so on. Both kinds are
    // collected first, so that no branch depends on the data. The smaller part of the range comes
    // first: it shows how many boxes are misplaced, and so where the search of the other one ends.
    int* partition(const BoxRange& range, int overlapping, int quadrant, int depth) {
        const std::vector<std::uint8_t>& found = quadrants[static_cast<std::size_t>(depth)];
        int* const first = range.first;
        const auto overlaps = [&](int i) {
            return (found[static_cast<std::size_t>(first[i])] >> quadrant) & 1;
        };
        const auto listFromFront = [&](int* list, const auto& goesOn) {
            int count = 0;
            for (int i = 0; goesOn(i, count); ++i) {
                list[count] = i;
                count += 1 - overlaps(i);
            }
            return count;
        };
        const auto listFromBack = [&](int* list, const auto& goesOn) {
            int count = 0;
            for (int i = range.size() - 1; goesOn(i, count); --i) {
                list[count] = i;
                count += overlaps(i);
            }
            return count;
        };
        int* const listed = misplaced.data();
        int wrong = 0;
        const auto isIncomplete = [&wrong](int /*i*/, int count) { return count < wrong; };
        if (overlapping < range.size() - overlapping) {
            wrong = listFromFront(listed, [&](int i, int /*count*/) { return i < overlapping; });
            listFromBack(listed + wrong, isIncomplete);
        } else {
            wrong = listFromBack(listed, [&](int i, int /*count*/) { return i >= overlapping; });
            listFromFront(listed + wrong, isIncomplete);
        }
        for (int k = 0; k < wrong; ++k) std::swap(first[listed[k]], first[listed[wrong + k]]);
        return first + overlapping;
    }

    // Returns a mask for each quadrant, with one bit for each position of the range, as
    // findQuadrants() does for the boxes.
    [[nodiscard]] std::array<Mask, 4> masksOf(const BoxRange& range, double midU, double midV) const {
        Mask left = 0;
        Mask right = 0;
        Mask above = 0;
        Mask below = 0;
        Mask bit = 1;
        for (const int* i = range.first; i != range.last; ++i, bit <<= 1) {
            const RegionRect& box = boxes[static_cast<std::size_t>(*i)];
            left |= box.minU > midU ? 0 : bit;
            right |= midU > box.maxU ? 0 : bit;
            above |= box.minV > midV ? 0 : bit;
            below |= midV > box.maxV ? 0 : bit;
        }
        return {left & above, right & above, left & below, right & below};
    }

    // The same order as that of partition(): the first misplaced box from the front is swapped with
    // the first one from the back.
    static int* partition(const BoxRange& range, std::array<Mask, 4>& masks, std::size_t quadrant) {
        const int overlapping = std::popcount(masks[quadrant]);
        const Mask front = overlapping == kMaskBits ? ~Mask{0} : (Mask{1} << overlapping) - 1;
        Mask wrongInFront = front & ~masks[quadrant];
        Mask wrongBehind = masks[quadrant] & ~front;
        while (wrongInFront != 0) {
            const int i = std::countr_zero(wrongInFront);
            const int j = static_cast<int>(kMaskBits) - 1 - std::countl_zero(wrongBehind);
            std::swap(range.first[i], range.first[j]);
            // The masks of earlier quadrants are used no more.
            for (std::size_t later = quadrant + 1; later < masks.size(); ++later) {
                const Mask differs = ((masks[later] >> i) ^ (masks[later] >> j)) & 1;
                masks[later] ^= (differs << i) | (differs << j);
            }
            wrongInFront &= wrongInFront - 1;
            wrongBehind ^= Mask{1} << j;
        }
        return range.first + overlapping;
    }

    // Cuts a range of up to 64 boxes. Its overlaps fit in the bits of a word, so that the work of a
    // partition depends on the number of misplaced boxes alone.
    int cutFew(const BoxRange& range, const RegionRect& rect, int depth, int parentCount) {
        const double midU = middleU(rect);
        const double midV = middleV(rect);
        const int count = range.size();
        const auto checkpoint = visitor.save();
        std::array<Mask, 4> masks = masksOf(range, midU, midV);
        std::array<int, 4> children{};
        for (std::size_t quadrant = 0; quadrant < children.size(); ++quadrant) {
            int* const end = partition(range, masks, quadrant);
            if (end == range.last && count == parentCount) return kGivenUp;

            const RegionRect part = quadrantOf(rect, midU, midV, static_cast<int>(quadrant));
            const int child = cut({range.first, end}, part, depth + 1, count);
            if (child == kGivenUp) {
                visitor.restore(checkpoint);
                visitor.giveUp();
                return visitor.leaf(range, depth);
            }
            children[quadrant] = child;
            // The subdivision of the child may have moved its boxes.
            const bool mayHaveMoved = end - range.first > kLeafCapacity;
            if (mayHaveMoved && quadrant + 1 < children.size()) masks = masksOf(range, midU, midV);
        }
        return visitor.inner(children);
    }

    int cut(const BoxRange& range, const RegionRect& rect, int depth, int parentCount) {
        const int count = range.size();
        if (count <= kLeafCapacity || depth >= kMaxDepth || !visitor.mayCut(count))
            return visitor.leaf(range, depth);
        if (static_cast<std::size_t>(count) <= kMaskBits) return cutFew(range, rect, depth, parentCount);

        const double midU = middleU(rect);
        const double midV = middleV(rect);
        // Of the nodes that the loop below gives up, most would be at their first quadrant.
        if (count == parentCount && areAllInFirstQuadrant(range, midU, midV)) return kGivenUp;

        const auto checkpoint = visitor.save();
        const std::array<int, 4> overlapping = findQuadrants(range, midU, midV, depth);
        std::array<int, 4> children{};
        for (int quadrant = 0; quadrant < kQuadrants; ++quadrant) {
            int* const end =
                partition(range, overlapping[static_cast<std::size_t>(quadrant)], quadrant, depth);
            // The second level in a row does not reduce the boxes: the parent becomes a leaf.
            if (end == range.last && count == parentCount) return kGivenUp;

            const RegionRect part = quadrantOf(rect, midU, midV, quadrant);
            const int child = cut({range.first, end}, part, depth + 1, count);
            if (child == kGivenUp) {
                visitor.restore(checkpoint);
                visitor.giveUp();
                return visitor.leaf(range, depth);
            }
            children[static_cast<std::size_t>(quadrant)] = child;
        }
        return visitor.inner(children);
    }

    const std::vector<RegionRect>& boxes;
    Visitor& visitor;
    std::vector<int> misplaced;  // positions within a range
    // By depth, then by box: one bit for each quadrant that the box overlaps.
    std::vector<std::vector<std::uint8_t>> quadrants;
};

}  // namespace quarn::detail
