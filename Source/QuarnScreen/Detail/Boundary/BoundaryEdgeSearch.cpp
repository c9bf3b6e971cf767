#include "BoundaryEdgeSearch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

#include "BoundaryEdge.h"

namespace {

using quarn::detail::isSameCorner;

// Each end of an edge also needs a 32-bit number.
constexpr std::size_t kMaxTriangles = std::numeric_limits<std::uint32_t>::max() / 6;

// Enough edges to hide the latency of the prefetched slots, and few enough to stay cached.
constexpr std::size_t kBlock = 32;

constexpr std::uint64_t kHashFactor = 0x9E3779B97F4A7C15U;  // 2^64 divided by the golden ratio, odd

// The shift moves the upper bits, which contain all entropy of short numbers, to where the next
// product spreads them. The sum replaces -0.0 by 0.0.
std::uint64_t hashWith(std::uint64_t hash, double value) {
    const std::uint64_t product = (hash ^ std::bit_cast<std::uint64_t>(value + 0.0)) * kHashFactor;
    return product ^ (product >> 32U);
}

std::uint64_t hashOf(const TriangleVertex& corner) {
    std::uint64_t hash = 1;
    for (std::size_t i = 0; i < 3; ++i) hash = hashWith(hash, corner.position[i]);
    for (std::size_t i = 0; i < 2; ++i) hash = hashWith(hash, corner.uv[i]);
    return hash;
}

bool hasNaN(const TriangleVertex& corner) {
    // One unordered comparison checks two numbers.
    return std::isunordered(corner.position[0], corner.position[1]) ||
           std::isunordered(corner.position[2], corner.uv[0]) || std::isnan(corner.uv[1]);
}

// Returns the same hash for both directions of an edge.
std::uint32_t edgeHash(std::uint64_t a, std::uint64_t b) {
    return static_cast<std::uint32_t>(((a + b) * kHashFactor) >> 32U);
}

// The edges that were seen an odd number of times so far: a hash set with open addressing, linear
// probing and no tombstones.
class UnmatchedEdges {
public:
    explicit UnmatchedEdges(const std::vector<Triangle>& list)
        : triangles(list), slots(std::bit_ceil(std::max(kMinSlots, list.size() / kTrianglesPerSlot))) {}

    void prefetchSlot(std::uint32_t hash) const { __builtin_prefetch(&slots[home(hash)], 1); }

    // Removes the edge if the set contains it, else inserts it.
    void toggle(std::uint32_t edge, std::uint32_t hash) {
        std::size_t i = home(hash);
        for (; !slots[i].isFree(); i = next(i)) {
            ++steps;
            if (slots[i].hash != hash || !isSameEdge(slots[i].edge, edge)) continue;
            removeAt(i);
            return;
        }
        slots[i] = {edge, hash};
        // Keep the table at most three quarters full. Beyond that, probe sequences get long.
        if (++count > slots.size() / 4 * 3) grow();
    }

    // Returns the number of slots that were probed so far, without the first slot of each search.
    [[nodiscard]] std::size_t stepsSoFar() const { return steps; }

    [[nodiscard]] std::vector<std::uint32_t> sortedEdges() const {
        std::vector<std::uint32_t> edges;
        edges.reserve(count);
        for (const Slot& slot : slots)
            if (!slot.isFree()) edges.push_back(slot.edge);
        std::sort(edges.begin(), edges.end());
        return edges;
    }

private:
    static constexpr std::size_t kMinSlots = 64;
    // In mesh order few edges are unmatched at once. A sparse table then finds each edge in its
    // home slot, and the probe loop's branches predict well.
    static constexpr std::size_t kTrianglesPerSlot = 16;

    struct Slot {
        static constexpr std::uint32_t kFree = std::numeric_limits<std::uint32_t>::max();

        std::uint32_t edge = kFree;
        std::uint32_t hash = 0;

        [[nodiscard]] bool isFree() const { return edge == kFree; }
    };

    struct Ends {
        const TriangleVertex& from;
        const TriangleVertex& to;
    };

    [[nodiscard]] Ends endsOf(std::uint32_t edge) const {
        const auto& vertices = triangles[edge / 3].vertices;
        return {vertices[edge % 3], vertices[(edge + 1) % 3]};
    }

    // Neighbors with the same winding traverse their shared edge in opposite directions, so check
    // that case first.
    [[nodiscard]] bool isSameEdge(std::uint32_t a, std::uint32_t b) const {
        const Ends first = endsOf(a);
        const Ends second = endsOf(b);
        return (isSameCorner(first.from, second.to) && isSameCorner(first.to, second.from)) ||
               (isSameCorner(first.from, second.from) && isSameCorner(first.to, second.to));
    }

    [[nodiscard]] std::size_t home(std::uint32_t hash) const { return hash >> shift; }
    [[nodiscard]] std::size_t next(std::size_t i) const { return (i + 1) & (slots.size() - 1); }
    [[nodiscard]] std::size_t distance(std::size_t from, std::size_t to) const {
        return (to - from) & (slots.size() - 1);
    }

    // Moves later edges of the same probe run up, so that the hole does not separate any of them
    // from its home slot.
    void removeAt(std::size_t hole) {
        for (std::size_t i = next(hole); !slots[i].isFree(); i = next(i)) {
            ++steps;
            if (distance(home(slots[i].hash), i) < distance(hole, i)) continue;
            slots[hole] = slots[i];
            hole = i;
        }
        slots[hole] = {};
        --count;
    }

    void grow() {
        std::vector<Slot> old(slots.size() * 2);
        old.swap(slots);
        --shift;
        for (const Slot& slot : old) {
            if (slot.isFree()) continue;
            std::size_t i = home(slot.hash);
            for (; !slots[i].isFree(); i = next(i)) ++steps;
            slots[i] = slot;
        }
    }

    const std::vector<Triangle>& triangles;
    std::vector<Slot> slots;
    int shift = 32 - std::countr_zero(slots.size());  // the upper bits of a hash are its home
    std::size_t count = 0;
    std::size_t steps = 0;
};

// The hashes of a block of triangles, in the order of their edges.
struct Block {
    std::array<std::uint32_t, kBlock * 3> hashes{};
    std::size_t count = 0;

    void add(std::uint32_t hash) { hashes[count++] = hash; }
    [[nodiscard]] const std::uint32_t* begin() const { return hashes.data(); }
    [[nodiscard]] const std::uint32_t* end() const { return hashes.data() + count; }
};

}  // namespace

namespace quarn::detail {

std::optional<std::vector<std::uint32_t>> findBoundaryEdges(const std::vector<Triangle>& triangles) {
    // Ten times what random edges need.
    constexpr std::size_t kMaxStepsPerTriangle = 100;

    if (triangles.size() > kMaxTriangles) return std::nullopt;
    UnmatchedEdges unmatchedEdges(triangles);
    std::uint32_t edge = 0;
    for (std::size_t first = 0; first < triangles.size(); first += kBlock) {
        // Hash the edges of the block.
        const std::size_t last = std::min(first + kBlock, triangles.size());
        Block block;
        for (std::size_t i = first; i < last; ++i) {
            const auto& [a, b, c] = triangles[i].vertices;
            if (hasNaN(a) || hasNaN(b) || hasNaN(c)) return std::nullopt;
            const std::uint64_t hashA = hashOf(a);
            const std::uint64_t hashB = hashOf(b);
            const std::uint64_t hashC = hashOf(c);
            block.add(edgeHash(hashA, hashB));
            block.add(edgeHash(hashB, hashC));
            block.add(edgeHash(hashC, hashA));
        }

        // Prefetch the slots of the whole block before the first lookup.
        for (const std::uint32_t hash : block) unmatchedEdges.prefetchSlot(hash);
        for (const std::uint32_t hash : block) unmatchedEdges.toggle(edge++, hash);

        // Give up if edges collide far more often than by chance.
        if (unmatchedEdges.stepsSoFar() > (last + kBlock) * kMaxStepsPerTriangle) return std::nullopt;
    }
    return unmatchedEdges.sortedEdges();
}

}  // namespace quarn::detail
