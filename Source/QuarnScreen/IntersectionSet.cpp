#include <QuarnScreen/IntersectionSet.h>

#include <algorithm>
#include <utility>

IntersectionSet::IntersectionSet() = default;
IntersectionSet::IntersectionSet(const Intersection& hit) : hits{hit} {}
IntersectionSet::IntersectionSet(const Point<double, 3>& point) : hits(1) {
    hits.front().point = point;
}
IntersectionSet::IntersectionSet(const IntersectionSet& other) = default;
IntersectionSet::IntersectionSet(IntersectionSet&& other) noexcept : hits(std::exchange(other.hits, {})) {}
IntersectionSet& IntersectionSet::operator=(const IntersectionSet& other) = default;
IntersectionSet::~IntersectionSet() = default;

IntersectionSet& IntersectionSet::operator=(IntersectionSet&& other) noexcept {
    if (this != &other) hits = std::exchange(other.hits, {});
    return *this;
}

void IntersectionSet::add(const Intersection& hit) {
    hits.push_back(hit);
}

void IntersectionSet::sort(const Point<double, 3>& from, const Point<double, 3>& /*to*/) {
    // Copy `from`, which may be a position of one of the hits that are moved.
    const auto squaredDistance = [from](const Intersection& hit) {
        const Point<double, 3> offset = hit.point - from;
        return dot(offset, offset);
    };
    std::stable_sort(hits.begin(), hits.end(), [&](const Intersection& a, const Intersection& b) {
        return squaredDistance(b) > squaredDistance(a);
    });
}
