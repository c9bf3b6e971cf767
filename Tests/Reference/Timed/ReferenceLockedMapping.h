/// \file
/// The mapping from UV to positions, for comparison of times.
#pragma once

#include <mutex>
#include <optional>

#include <QuarnScreen/FlatScreen.h>

#include "Reference/Mesh/ReferenceMapping.h"
#include "Reference/Timed/ReferenceIndexes.h"

namespace quarn::test {

/// Unlike ReferenceMapping it takes a lock for its cache, checks whether to log, and searches the
/// quadtree of ReferenceIndexes: a query of the library does all three. The indexes must outlive
/// it.
class ReferenceLockedMapping {
public:
    explicit ReferenceLockedMapping(const ReferenceIndexes& meshIndexes) : indexes(meshIndexes) {}

    bool mapInto3D(const Point2& uv, Point3& result, bool extrapolate) {
        if (const std::optional<ReferenceMappingCache::Entry> known = find(uv)) {
            result = known->point;
            LOG4CXX_TRACE(Log::get(), "in the cache");
            return known->state == State::OnScreen || (known->state == State::Extrapolated && extrapolate);
        }
        LOG4CXX_TRACE(Log::get(), "not in the cache");
        if (const std::optional<const Triangle*> found = indexes.quadtree.locate(uv[0], uv[1])) {
            result = referencePositionAt(**found, uv);
            add(uv, result, State::OnScreen);
            return true;
        }
        LOG4CXX_TRACE(Log::get(), "out of bounds");
        if (extrapolate) result = referenceExtrapolateUV(indexes.uvTree, uv);
        LOG4CXX_TRACE(Log::get(), "extrapolated or not");
        add(uv, result, extrapolate ? State::Extrapolated : State::OutOfBounds);
        return extrapolate;
    }

private:
    using State = ReferenceMappingCache::State;
    struct Log : FlatScreen {
        static const log4cxx::LoggerPtr& get() { return log; }
    };

    std::optional<ReferenceMappingCache::Entry> find(const Point2& uv) {
        const std::lock_guard<std::mutex> lock(mutex);
        return cache.check(uv);
    }
    void add(const Point2& uv, const Point3& point, State state) {
        const std::lock_guard<std::mutex> lock(mutex);
        cache.add(uv, point, state);
    }

    const ReferenceIndexes& indexes;
    std::mutex mutex;
    ReferenceMappingCache cache;
};

}  // namespace quarn::test
