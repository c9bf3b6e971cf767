/// \file
/// The mapping from UV to positions written plainly: the ring of the last answers, the quadtree, and the continuation of
/// the triangles near a UV off the mesh.
#pragma once

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

#include "Inputs/BenchScreen.h"
#include "Reference/Timed/ReferenceIndexes.h"

namespace quarn::bench {

/// The ring of the last twenty answers.
class PlainCache {
public:
    using Mapping = MeshScreen::MappingInto3D;

    std::optional<Mapping> find(const Point<double, 2>& uv) {
        const std::lock_guard<std::mutex> lock(mutex);
        for (std::size_t i = cursor; i < mappings.size(); ++i)
            if (mappings[i].uv == uv) return at(i);
        for (std::size_t i = 0; i < cursor; ++i)
            if (mappings[i].uv == uv) return at(i);
        return std::nullopt;
    }

    void add(const Mapping& mapping) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (mappings.size() < kCapacity) {
            mappings.push_back(mapping);
            cursor = mappings.size() - 1;
            return;
        }
        cursor = (cursor + 1) % mappings.size();
        mappings[cursor] = mapping;
    }

private:
    static constexpr std::size_t kCapacity = 20;

    const Mapping& at(std::size_t i) {
        cursor = i;
        return mappings[i];
    }

    std::mutex mutex;
    std::vector<Mapping> mappings;
    std::size_t cursor = 0;
};

/// Peels off the position farthest from the mean until some are left, and returns their mean.
inline Point<double, 3> plainAverage(int keep, std::vector<Point<double, 3>>& points) {
    const auto meanOf = [](const std::vector<Point<double, 3>>& list) {
        Point<double, 3> sum;
        for (const Point<double, 3>& point : list) sum = sum + point;
        return sum * (1.0 / static_cast<double>(list.size()));
    };
    const auto squaredDistance = [](const Point<double, 3>& a, const Point<double, 3>& b) {
        const Point<double, 3> offset = a - b;
        return dot(offset, offset);
    };
    Point<double, 3> mean = meanOf(points);
    while (points.size() > static_cast<std::size_t>(keep)) {
        std::stable_sort(points.begin(), points.end(), [&](const auto& a, const auto& b) {
            return squaredDistance(a, mean) < squaredDistance(b, mean);
        });
        points.pop_back();
        mean = meanOf(points);
    }
    return mean;
}

/// Asks plain indexes, which must outlive it.
class PlainMapping {
public:
    using Mapping = MeshScreen::MappingInto3D;

    explicit PlainMapping(const PlainIndexes& asked) : indexes(asked) {}

    bool mapInto3D(const Point<double, 2>& uv, Point<double, 3>& result, bool extrapolate) {
        if (const std::optional<Mapping> known = cache.find(uv)) {
            result = known->point;
            LOG4CXX_TRACE(BenchScreen::log, "in the cache");
            return known->state == Mapping::OnScreen ||
                   (known->state == Mapping::Extrapolated && extrapolate);
        }
        LOG4CXX_TRACE(BenchScreen::log, "not in the cache");
        if (const std::optional<const Triangle*> found = indexes.quadtree.locate(uv[0], uv[1])) {
            const Triangle& triangle = **found;
            const Parameters parameters = parametersOf(triangle, uv);
            if (parameters.a >= 0.0 && parameters.b >= 0.0 && 1.0 >= parameters.a + parameters.b) {
                result = triangle.pointAt(parameters.a, parameters.b);
                cache.add({uv, result, Mapping::OnScreen});
                return true;
            }
        }
        LOG4CXX_TRACE(BenchScreen::log, "out of bounds");
        if (extrapolate) result = extrapolateUV(uv);
        LOG4CXX_TRACE(BenchScreen::log, "extrapolated or not");
        cache.add({uv, result, extrapolate ? Mapping::Extrapolated : Mapping::OutOfBounds});
        return extrapolate;
    }

private:
    struct Parameters {
        double a;
        double b;
    };

    static Parameters parametersOf(const Triangle& triangle, const Point<double, 2>& uv) {
        const Point<double, 2> d = uv - triangle.vertices[0].uv;
        return {(d[0] * triangle.uvEdge2[1] - d[1] * triangle.uvEdge2[0]) / triangle.uvDeterminant,
                (d[1] * triangle.uvEdge1[0] - d[0] * triangle.uvEdge1[1]) / triangle.uvDeterminant};
    }

    [[nodiscard]] Point<double, 3> extrapolateUV(const Point<double, 2>& uv) const {
        constexpr int kMaxAveraged = 15;
        const int keep = std::min(indexes.uvTree.depth, kMaxAveraged);
        std::vector<Point<double, 3>> points;
        points.reserve(static_cast<std::size_t>(2 * keep));
        test::PlainNearestWalk<const Triangle*, 2, UVCentroidKey> walk(indexes.uvTree, uv);
        for (int step = 0; step < 2 * keep && !walk.done(); ++step, walk.advance()) {
            const Triangle& triangle = *walk.value();
            if (triangle.uvDeterminant == 0.0) continue;
            const Parameters parameters = parametersOf(triangle, uv);
            points.push_back(triangle.pointAt(parameters.a, parameters.b));
        }
        return plainAverage(keep, points);
    }

    const PlainIndexes& indexes;
    PlainCache cache;
};

}  // namespace quarn::bench
