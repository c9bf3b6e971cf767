#include "OutlierFilter.h"

#include <algorithm>
#include <cstddef>

namespace quarn::detail {
namespace {

using Points = std::vector<Point<double, 3>>;

Point<double, 3> meanOf(const Points& points) {
    Point<double, 3> sum;
    for (const Point<double, 3>& point : points) sum = sum + point;
    return sum * (1.0 / static_cast<double>(points.size()));
}

// Insertion sort: the positions are nearly sorted from the previous round. Equal distances keep
// their order.
void sortByDistance(Points& points, const Point<double, 3>& from, std::vector<double>& distances) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Point<double, 3> point = points[i];
        const Point<double, 3> offset = point - from;
        const double squared = dot(offset, offset);
        std::size_t place = i;
        for (; place > 0 && squared < distances[place - 1]; --place) {
            points[place] = points[place - 1];
            distances[place] = distances[place - 1];
        }
        points[place] = point;
        distances[place] = squared;
    }
}

}  // namespace

Point<double, 3> filterOutliersAndAverage(int keep, Points& points) {
    Point<double, 3> mean = meanOf(points);
    const auto limit = static_cast<std::size_t>(std::max(keep, 0));
    std::vector<double> distances(points.size());
    while (points.size() > limit) {
        sortByDistance(points, mean, distances);
        points.pop_back();
        mean = meanOf(points);
    }
    return mean;
}

}  // namespace quarn::detail
