/// \file
/// Nearest-neighbor search.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

#include <Common/ZelmoreException.h>
#include <QuarnScreen/Point.h>

/// A balanced k-d tree over values with a position each, for nearest-neighbor searches by squared
/// Euclidean distance.
///
/// The tree stores copies of the values and of their coordinates. If a value is a pointer, the tree
/// does not own its object. The order in which a search visits nodes, and so the result among
/// equally distant values, is part of the behavior. A position or value with NaN is unordered: a
/// search may miss values.
///
/// For n values, build() is O(n log n). A search is O(log n) on average and O(n) in the worst case.
///
/// Source: J. L. Bentley, "Multidimensional Binary Search Trees Used for Associative Searching"
/// (1975), with the median of each range as its node.
///
/// Thread-safety: after build(), any number of threads may search at once.
///
/// \tparam Value a cheap type, such as a pointer; `Value()` means "none"
/// \tparam N number of dimensions
/// \tparam KeyAccessor empty function object; `double operator()(const Value&, int axis) const`
///         returns the coordinate of a value on an axis
///
/// \code{.cpp}
/// struct Itself { double operator()(const double* value, int) const { return *value; } };
/// const double numbers[] = {0.5, 4.0, 9.0};
/// const std::vector<const double*> values = {&numbers[0], &numbers[1], &numbers[2]};
/// PointKDTree<const double*, 1, Itself> tree;
/// tree.build(values.begin(), values.end());
/// assert(*tree.findNearest(Point<double, 1>(5.0)) == 4.0);
/// \endcode
template <class Value, int N, class KeyAccessor>
class PointKDTree {
public:
    /// A position.
    using Key = Point<double, N>;
    class NearestIterator;

    /// A subtree. Its nodes are stored contiguously in preorder, starting with its root. Its size
    /// determines the sizes of its children.
    struct Subtree {
        std::size_t slot = 0;  ///< Slot of the root.
        std::size_t size = 0;  ///< Number of nodes.

        /// Returns a child; its size is 0 if there is none.
        [[nodiscard]] Subtree left() const { return {slot + 1, size / 2}; }
        [[nodiscard]] Subtree right() const { return {slot + 1 + size / 2, size - size / 2 - 1}; }
    };

    /// Creates an empty tree.
    PointKDTree() = default;

    /// Rebuilds the tree over a range of values. O(n log n).
    /// \throws std::bad_alloc if out of memory
    template <class It>
    void build(It first, It last);

    /// Returns the maximum depth that any build of this tree reached; the root has depth 0.
    /// \note Intended: the depth does not decrease if a tree is rebuilt over fewer values; a reader
    ///       would expect the depth of the current tree.
    [[nodiscard]] int depth() const { return greatestDepth; }

    /// Returns the nearest value; of equally distant ones, the first that the search visits.
    /// \return `Value()` if no squared distance is below the largest double
    /// \throws ZelmoreException "There are no values in the KDTree" (line 668) for an empty tree
    [[nodiscard]] Value findNearest(const Key& point) const;

    /// Returns the nearest value for which \p accept, a callable `bool(const Value&)`, returns
    /// true. Calls \p accept only for values nearer than the current best. Exceptions of \p accept
    /// propagate.
    /// \return `Value()` if \p accept returns true for none
    /// \throws ZelmoreException "There are no values in the KDTree" (line 692) for an empty tree
    template <class Accept>
    [[nodiscard]] Value findNearestIf(const Key& point, Accept&& accept) const;

    /// As findNearestIf() above, except that it skips each subtree for whose root \p skip, a
    /// callable `bool(std::size_t slot)`, returns true. The slots of a tree are numbered in
    /// preorder from 0.
    template <class Accept, class Skip>
    [[nodiscard]] Value findNearestIf(const Key& point, Accept&& accept, Skip&& skip) const;

    /// Returns true if a search from a position that skips no subtree visits the value of slot \p a
    /// before the value of slot \p b. O(log n).
    /// \pre both slots are below size()
    [[nodiscard]] bool isMetBefore(std::size_t a, std::size_t b, const Key& point) const;

    /// Returns up to \p k values, nearest first; of equally distant ones, the first that the search
    /// visits.
    ///
    /// Each candidate is inserted into a sorted list: O(k) per candidate.
    /// \return the values; empty if \p k is not positive or the tree is empty
    [[nodiscard]] std::vector<Value> findKNearest(const Key& point, int k) const;

    /// Returns the number of values.
    [[nodiscard]] std::size_t size() const { return nodes.size(); }
    /// Returns the value of a slot.
    /// \pre slot < size(); it is not checked
    [[nodiscard]] const Value& valueAt(std::size_t slot) const { return nodes[slot].value; }
    /// Returns the position of a slot's value.
    /// \pre slot < size(); it is not checked
    [[nodiscard]] const std::array<double, N>& keyAt(std::size_t slot) const { return nodes[slot].key; }
    /// Returns the tree itself as a subtree.
    [[nodiscard]] Subtree whole() const { return {0, nodes.size()}; }
    /// Returns the squared distance from a position to a slot's value, as the searches compute it.
    /// \pre slot < size(); it is not checked
    [[nodiscard]] double squaredDistance(std::size_t slot, const Key& point) const;

private:
    // A value with its coordinates.
    struct Keyed {
        std::array<double, N> key{};
        Value value{};
    };
    // Aligned so that a search touches one cache line per node. A cache line contains two nodes of
    // up to three coordinates and a pointer.
    struct alignas(32) Node : Keyed {};

    struct Sides {
        Subtree near;
        Subtree far;
        double squaredGap = 0.0;  // from the point to the splitting plane
    };

    struct NearestState {
        Value best{};
        double bestSquared = std::numeric_limits<double>::max();
    };

    struct KNearestState {
        std::vector<Value> values;
        std::vector<double> squared;
        std::size_t capacity = 0;

        [[nodiscard]] bool takes(double candidate) const {
            return values.size() < capacity || squared.back() > candidate;
        }
        void insert(const Value& value, double candidate);
    };

    // Lines that identify the failures.
    static constexpr int kNearestLine = 668;
    static constexpr int kNearestIfLine = 692;

    [[nodiscard]] static int next(int axis) { return axis + 1 == N ? 0 : axis + 1; }
    [[nodiscard]] Sides sidesOf(const Subtree& tree, int axis, const Key& point) const;
    void requireValues(int line) const;

    void buildRange(std::vector<Keyed>& values, std::size_t low, std::size_t high, int axis);
    template <class Accept, class Skip>
    void walkNearest(Subtree tree, int axis, const Key& point, Accept& accept, Skip& skip,
                     NearestState& state) const;
    void walkKNearest(Subtree tree, int axis, const Key& point, KNearestState& state) const;

    std::vector<Node> nodes;
    int greatestDepth = 0;
};

/// An iterator over the values of a tree, approximately in ascending order of distance from a
/// position.
///
/// The iterator does not own the tree. The tree must outlive it and must not be rebuilt meanwhile.
/// The order is sufficient if a caller averages a few values. A step is O(log n) on average.
///
/// \note Intended: a nearer value may follow a farther one. If distances are NaN, values may repeat
///       without end and subtrees may be missed. A reader would expect ascending order.
///
/// \code{.cpp}
/// struct Itself { double operator()(double value, int) const { return value; } };
/// const std::vector<double> values = {0.5, 4.0, 9.0};
/// PointKDTree<double, 1, Itself> tree;
/// tree.build(values.begin(), values.end());
/// const decltype(tree)::NearestIterator nearest(tree, Point<double, 1>(5.0));
/// assert(!nearest.done() && nearest.value() == 4.0);
/// \endcode
template <class Value, int N, class KeyAccessor>
class PointKDTree<Value, N, KeyAccessor>::NearestIterator {
public:
    /// Starts at the value nearest to a position.
    NearestIterator(const PointKDTree& walkedTree, const Key& from);

    /// Returns true if no value is left.
    [[nodiscard]] bool done() const { return found.empty(); }
    /// Returns the current value.
    /// \pre done() is false; it is not checked
    [[nodiscard]] const Value& value() const { return found.front().value; }
    /// Advances to the next value. Does nothing if no value and no subtree is left.
    void advance();

private:
    struct Found {
        Value value{};
        double squared = 0.0;
    };
    struct Pending {
        Subtree subtree;
        int axis = 0;
        double squared = 0.0;  // lower bound
    };
    struct IsFarther {
        template <class Entry>
        bool operator()(const Entry& a, const Entry& b) const {
            return a.squared > b.squared;
        }
    };
    static constexpr std::size_t kInitialReserve = 32;

    template <class Entry>
    static void push(std::vector<Entry>& heap, const Entry& entry);
    template <class Entry>
    static void pop(std::vector<Entry>& heap);
    void descend(Subtree subtree, int axis);
    void expandNearestPending();

    const PointKDTree* tree;
    Key point;
    std::vector<Found> found;
    std::vector<Pending> pending;
};

template <class Value, int N, class KeyAccessor>
template <class It>
void PointKDTree<Value, N, KeyAccessor>::build(It first, It last) {
    const KeyAccessor keyOf;
    std::vector<Keyed> values;
    values.reserve(static_cast<std::size_t>(std::distance(first, last)));
    for (; first != last; ++first) {
        Keyed keyed{{}, *first};
        for (int axis = 0; axis < N; ++axis)
            keyed.key[static_cast<std::size_t>(axis)] = keyOf(keyed.value, axis);
        values.push_back(keyed);
    }
    nodes.clear();
    nodes.reserve(values.size());
    buildRange(values, 0, values.size(), 0);

    // The left half is never smaller than the right, so its depth is the depth of the tree.
    int depthOfThis = 0;
    for (std::size_t count = values.size(); count > 1; count /= 2) ++depthOfThis;
    greatestDepth = std::max(greatestDepth, depthOfThis);
}

// Appends the nodes of a range of values in preorder.
template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::buildRange(std::vector<Keyed>& values, std::size_t low,
                                                    std::size_t high, int axis) {
    if (low == high) return;
    const std::size_t middle = low + (high - low) / 2;
    if (high - low > 1) {
        const auto at = [&values](std::size_t i) { return values.begin() + static_cast<std::ptrdiff_t>(i); };
        std::nth_element(at(low), at(middle), at(high), [axis](const Keyed& a, const Keyed& b) {
            return a.key[static_cast<std::size_t>(axis)] < b.key[static_cast<std::size_t>(axis)];
        });
    }
    nodes.push_back(Node{values[middle]});
    buildRange(values, low, middle, next(axis));
    buildRange(values, middle + 1, high, next(axis));
}

template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::requireValues(int line) const {
    if (nodes.empty())
        throw ZelmoreException("Framework/CXX/Common/PointKDTree", line,
                               L"There are no values in the KDTree");
}

template <class Value, int N, class KeyAccessor>
auto PointKDTree<Value, N, KeyAccessor>::sidesOf(const Subtree& tree, int axis, const Key& point) const
    -> Sides {
    const double q = point[static_cast<std::size_t>(axis)];
    const double c = nodes[tree.slot].key[static_cast<std::size_t>(axis)];
    const double gap = q - c;
    if (c > q) return {tree.left(), tree.right(), gap * gap};
    return {tree.right(), tree.left(), gap * gap};
}

template <class Value, int N, class KeyAccessor>
double PointKDTree<Value, N, KeyAccessor>::squaredDistance(std::size_t slot, const Key& point) const {
    double sum = 0.0;
    for (std::size_t i = 0; i < N; ++i) {
        const double difference = point[i] - nodes[slot].key[i];
        sum = sum + difference * difference;
    }
    return sum;
}

template <class Value, int N, class KeyAccessor>
template <class Accept, class Skip>
void PointKDTree<Value, N, KeyAccessor>::walkNearest(Subtree tree, int axis, const Key& point, Accept& accept,
                                                     Skip& skip, NearestState& state) const {
    while (tree.size > 0 && !skip(tree.slot)) {
        const Sides sides = sidesOf(tree, axis, point);
        walkNearest(sides.near, next(axis), point, accept, skip, state);

        const double squared = squaredDistance(tree.slot, point);
        if (state.bestSquared > squared && accept(nodes[tree.slot].value)) {
            state.best = nodes[tree.slot].value;
            state.bestSquared = squared;
        }
        if (!(state.bestSquared > sides.squaredGap)) return;
        tree = sides.far;
        axis = next(axis);
    }
}

template <class Value, int N, class KeyAccessor>
bool PointKDTree<Value, N, KeyAccessor>::isMetBefore(std::size_t a, std::size_t b, const Key& point) const {
    const auto contains = [](const Subtree& tree, std::size_t slot) { return slot - tree.slot < tree.size; };
    Subtree tree = whole();
    for (int axis = 0;; axis = next(axis)) {
        const Sides sides = sidesOf(tree, axis, point);
        const bool isNearA = contains(sides.near, a);
        const bool isNearB = contains(sides.near, b);
        if (isNearA != isNearB) return isNearA;
        // After the near side, the root is visited first.
        if (!isNearA && (a == tree.slot || b == tree.slot)) return a == tree.slot && b != tree.slot;
        tree = isNearA ? sides.near : sides.far;
    }
}

template <class Value, int N, class KeyAccessor>
Value PointKDTree<Value, N, KeyAccessor>::findNearest(const Key& point) const {
    requireValues(kNearestLine);
    const auto accept = [](const Value&) { return true; };
    const auto skip = [](std::size_t) { return false; };
    NearestState state;
    walkNearest(whole(), 0, point, accept, skip, state);
    return state.best;
}

template <class Value, int N, class KeyAccessor>
template <class Accept>
Value PointKDTree<Value, N, KeyAccessor>::findNearestIf(const Key& point, Accept&& accept) const {
    return findNearestIf(point, accept, [](std::size_t) { return false; });
}

template <class Value, int N, class KeyAccessor>
template <class Accept, class Skip>
Value PointKDTree<Value, N, KeyAccessor>::findNearestIf(const Key& point, Accept&& accept,
                                                        Skip&& skip) const {
    requireValues(kNearestIfLine);
    NearestState state;
    walkNearest(whole(), 0, point, accept, skip, state);
    return state.best;
}

template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::KNearestState::insert(const Value& value, double candidate) {
    if (values.size() == capacity) {
        values.pop_back();
        squared.pop_back();
    }
    const auto place = std::upper_bound(squared.begin(), squared.end(), candidate);
    values.insert(values.begin() + (place - squared.begin()), value);
    squared.insert(place, candidate);
}

template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::walkKNearest(Subtree tree, int axis, const Key& point,
                                                      KNearestState& state) const {
    while (tree.size > 0) {
        const Sides sides = sidesOf(tree, axis, point);
        walkKNearest(sides.near, next(axis), point, state);

        const double squared = squaredDistance(tree.slot, point);
        if (state.takes(squared)) state.insert(nodes[tree.slot].value, squared);
        if (!state.takes(sides.squaredGap)) return;
        tree = sides.far;
        axis = next(axis);
    }
}

template <class Value, int N, class KeyAccessor>
std::vector<Value> PointKDTree<Value, N, KeyAccessor>::findKNearest(const Key& point, int k) const {
    if (k <= 0) return {};
    KNearestState state;
    state.capacity = static_cast<std::size_t>(k);
    state.values.reserve(std::min(state.capacity, nodes.size()));
    state.squared.reserve(std::min(state.capacity, nodes.size()));
    walkKNearest(whole(), 0, point, state);
    return std::move(state.values);
}

template <class Value, int N, class KeyAccessor>
PointKDTree<Value, N, KeyAccessor>::NearestIterator::NearestIterator(const PointKDTree& walkedTree,
                                                                     const Key& from)
    : tree(&walkedTree), point(from) {
    found.reserve(kInitialReserve);
    pending.reserve(kInitialReserve);
    descend(tree->whole(), 0);
}

template <class Value, int N, class KeyAccessor>
template <class Entry>
void PointKDTree<Value, N, KeyAccessor>::NearestIterator::push(std::vector<Entry>& heap, const Entry& entry) {
    heap.push_back(entry);
    std::push_heap(heap.begin(), heap.end(), IsFarther());
}

template <class Value, int N, class KeyAccessor>
template <class Entry>
void PointKDTree<Value, N, KeyAccessor>::NearestIterator::pop(std::vector<Entry>& heap) {
    std::pop_heap(heap.begin(), heap.end(), IsFarther());
    heap.pop_back();
}

template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::NearestIterator::descend(Subtree subtree, int axis) {
    while (subtree.size > 0) {
        const Sides sides = tree->sidesOf(subtree, axis, point);
        axis = next(axis);
        descend(sides.near, axis);
        push(found, Found{tree->nodes[subtree.slot].value, tree->squaredDistance(subtree.slot, point)});
        if (!(found.front().squared > sides.squaredGap)) {
            if (sides.far.size > 0) push(pending, Pending{sides.far, axis, sides.squaredGap});
            return;
        }
        subtree = sides.far;
    }
}

// Intended: the entry that is removed is the nearest one after the descent, possibly an entry that
// the descent added; a reader would expect the entry that was expanded.
template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::NearestIterator::expandNearestPending() {
    const Pending nearest = pending.front();
    descend(nearest.subtree, nearest.axis);
    pop(pending);
}

template <class Value, int N, class KeyAccessor>
void PointKDTree<Value, N, KeyAccessor>::NearestIterator::advance() {
    if (!found.empty()) pop(found);
    if (found.empty()) {
        if (!pending.empty()) expandNearestPending();
        return;
    }
    while (!pending.empty() && pending.front().squared < found.front().squared) expandNearestPending();
}
