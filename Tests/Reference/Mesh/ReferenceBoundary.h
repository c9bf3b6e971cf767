/// \file
/// Reference implementation of the boundary search: two ordered multimaps of edges, and a walk that
/// counts its steps.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <QuarnScreen/Boundary.h>

namespace quarn::test {

/// Slow and simple search for a boundary.
class ReferenceBoundary {
public:
    /// \param stepLimit lookups after which the walk is broken off; it may run without end
    explicit ReferenceBoundary(const std::vector<Triangle>& triangles, std::size_t stepLimit = 100'000'000) {
        for (const Triangle& triangle : triangles) {
            const auto& [c0, c1, c2] = triangle.vertices;
            cancel(c0, c1, triangle);
            cancel(c1, c2, triangle);
            cancel(c2, c0, triangle);
        }
        oddEdges = lowerToUpper.size();
        if (!lowerToUpper.empty()) walk(stepLimit);
    }

    Boundary boundary;
    std::size_t oddEdges = 0;
    /// Whether the walk ended; nothing else counts if it did not.
    bool hasEnded = true;
    bool isSingleWithUV = false;
    /// Size of the map from lower to upper ends where the walk left edges.
    std::optional<std::size_t> edgesLeft;
    /// How often the walk changed from one map to the other.
    int turns = 0;

private:
    struct Record {
        Point<double, 3> position;
        Point<double, 2> uv;

        bool operator<(const Record& other) const {
            for (std::size_t i = 0; i < 3; ++i)
                if (!(position[i] == other.position[i])) return position[i] < other.position[i];
            for (std::size_t i = 0; i < 2; ++i)
                if (!(uv[i] == other.uv[i])) return uv[i] < other.uv[i];
            return false;
        }
        bool operator==(const Record& other) const { return position == other.position && uv == other.uv; }
    };
    struct Edge {
        Record near;
        Record far;
        const Triangle* triangle;
    };
    using Map = std::multimap<Record, Edge>;

    static Map::iterator find(Map& map, const Record& near, const Record& far) {
        const auto [first, last] = map.equal_range(near);
        for (auto entry = first; entry != last; ++entry)
            if (entry->first == near && entry->second.far == far) return entry;
        return map.end();
    }

    // The first entry of a corner. A key with NaN may be neither less nor greater than another
    // corner.
    static Map::iterator findFirst(Map& map, const Record& near) {
        const auto entry = map.lower_bound(near);
        return entry != map.end() && entry->first == near ? entry : map.end();
    }

    void cancel(const TriangleVertex& a, const TriangleVertex& b, const Triangle& triangle) {
        Record lower = {a.position, a.uv};
        Record upper = {b.position, b.uv};
        if (upper < lower) std::swap(lower, upper);
        const auto found = find(lowerToUpper, lower, upper);
        if (found == lowerToUpper.end()) {
            lowerToUpper.insert({lower, Edge{lower, upper, &triangle}});
            upperToLower.insert({upper, Edge{upper, lower, &triangle}});
            return;
        }
        lowerToUpper.erase(found);
        const auto other = find(upperToLower, upper, lower);
        if (other != upperToLower.end()) upperToLower.erase(other);
    }

    void append(const Record& record, const Triangle* triangle) {
        boundary.points.push_back(record.position);
        boundary.uvPoints.push_back(record.uv);
        boundary.triangles.push_back(triangle);
        uvGood = uvGood && record.uv != kNoUV;
        last = record;
    }

    void step(Map& selected, Map& other, Map::iterator found) {
        const Edge edge = found->second;
        append(edge.far, edge.triangle);
        const auto reversed = find(other, edge.far, edge.near);
        if (reversed != other.end()) other.erase(reversed);
        selected.erase(found);
    }

    void walk(std::size_t stepLimit) {
        Map* selected = &lowerToUpper;
        Map* other = &upperToLower;
        append(selected->begin()->second.near, selected->begin()->second.triangle);
        step(*selected, *other, selected->begin());
        std::size_t steps = 0;
        while (!selected->empty()) {
            if (boundary.points.front() == boundary.points.back()) break;
            const std::size_t size = selected->size();
            for (auto next = findFirst(*selected, last); next != selected->end();
                 next = findFirst(*selected, last)) {
                step(*selected, *other, next);
                ++steps;
            }
            if (selected->size() == size) {
                std::swap(selected, other);
                ++turns;
            }
            hasEnded = ++steps < stepLimit;
            if (!hasEnded) return;
        }
        if (selected->empty())
            isSingleWithUV = uvGood;
        else
            edgesLeft = lowerToUpper.size();
    }

    Map lowerToUpper;
    Map upperToLower;
    Record last;
    bool uvGood = true;
};

}  // namespace quarn::test
