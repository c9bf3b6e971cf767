#include "ScreenBatch.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>
#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/Detail/Access/ScreenAccess.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "ScreenKinds.h"

namespace quarn {

namespace {

using detail::RayHits;
using detail::RayHitSearch;
using detail::ScreenAccess;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Point<double, 2> kMissingUv(kNaN, kNaN);
constexpr Point<double, 3> kMissingPosition(kNaN, kNaN, kNaN);

template <class View>
void requireRows(const char* name, const View& view, std::size_t expected) {
    if (view.size() != expected)
        throw Error({.found = "found " + std::to_string(view.size()) + " rows of " + name,
                     .expected = std::to_string(expected) + ", one for each row of the input"});
}

template <class View>
void requireOutput(const char* name, const View& view, std::size_t expected) {
    if (!view.empty()) requireRows(name, view, expected);
}

template <class View>
void setIfWanted(const View& view, std::size_t index, const typename View::Row& value) {
    if (!view.empty()) view.set(index, value);
}

// Writes the hits of rays, and their absence.
class HitWriter {
public:
    HitWriter(const IScreenGeometry& hitScreen, const HitRows& hitRows) : screen(hitScreen), rows(hitRows) {}

    void write(std::size_t index, const Point<double, 3>& origin, const Intersection* found) const {
        const bool isHit = found != nullptr;
        setIfWanted(rows.positions, index, isHit ? found->point : kMissingPosition);
        setIfWanted(rows.distances, index, isHit ? length(found->point - origin) : kNaN);
        setIfWanted(rows.triangles, index, isHit ? found->triangleIndex : -1);
        setIfWanted(rows.sides, index, static_cast<std::int8_t>(isHit ? found->normalSign : 0));
        setIfWanted(rows.found, index, isHit ? Found::OnScreen : Found::None);
        if (!rows.uvs.empty()) rows.uvs.set(index, isHit ? uvOf(*found) : kMissingUv);
    }

private:
    [[nodiscard]] Point<double, 2> uvOf(const Intersection& hit) const {
        const Point<double, 2> uv = withUV(hit, screen).uv;
        return uv == kNoUV ? kMissingUv : uv;
    }

    const IScreenGeometry& screen;
    const HitRows& rows;
};

Ray rayAt(const RayRows& rays, std::size_t index) {
    return {rays.origins.row(index), rays.targets.row(index)};
}

void hitMesh(const RayHitSearch& search, const RayRows& rays, const HitWriter& writer, std::size_t first,
             std::size_t last) {
    std::array<Ray, RayHitSearch::kPacketSize> packet;
    std::array<RayHits, RayHitSearch::kPacketSize> hits;
    for (std::size_t start = first; start < last; start += packet.size()) {
        const std::size_t count = std::min(packet.size(), last - start);
        for (std::size_t i = 0; i < count; ++i) packet[i] = rayAt(rays, start + i);
        search.find(std::span(packet).first(count), hits);
        for (std::size_t i = 0; i < count; ++i)
            writer.write(start + i, packet[i].origin, hits[i].nearestTo(packet[i].origin));
    }
}

std::optional<Intersection> firstHitOf(const IScreenGeometry& screen, const Ray& ray) {
    const IntersectionSet hits = screen.intersect(ray.origin, ray.target);
    return hits.empty() ? std::nullopt : std::optional(hits.first());
}

template <class FirstHit>
BatchEnd hitEach(const RayRows& rays, const HitWriter& writer, const BatchOptions& options,
                 FirstHit firstHit) {
    return runBlocks(rays.origins.size(), options, [&](std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) {
            const Ray ray = rayAt(rays, i);
            const std::optional<Intersection> hit = firstHit(ray);
            writer.write(i, ray.origin, hit ? &*hit : nullptr);
        }
    });
}

// Computes a point for each point.
template <class In, class Out, class Query>
BatchEnd mapEach(const In& inputs, const Out& outputs, const BatchOptions& options, Query query) {
    return runBlocks(inputs.size(), options, [&](std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) setIfWanted(outputs, i, query(i, inputs.row(i)));
    });
}

}  // namespace

BatchEnd firstHits(const IScreenGeometry& screen, const RayRows& rays, const HitRows& hits,
                   const BatchOptions& options) {
    const std::size_t count = rays.origins.size();
    requireRows("targets", rays.targets, count);
    requireOutput("positions", hits.positions, count);
    requireOutput("UVs", hits.uvs, count);
    requireOutput("distances", hits.distances, count);
    requireOutput("triangles", hits.triangles, count);
    requireOutput("sides", hits.sides, count);
    requireOutput("how hits were found", hits.found, count);

    const HitWriter writer(screen, hits);
    if (const MeshScreen* const mesh = asMesh(screen)) {
        const RayHitSearch search = ScreenAccess::hitSearch(*mesh);
        return runBlocks(count, options, [&](std::size_t first, std::size_t last) {
            hitMesh(search, rays, writer, first, last);
        });
    }
    const auto hitAll = [&](const auto* exact) {
        return hitEach(rays, writer, options,
                       [exact](const Ray& ray) { return ScreenAccess::firstHit(*exact, ray); });
    };
    if (const auto* const flat = asExactly<FlatScreen>(screen)) return hitAll(flat);
    if (const auto* const cylinder = asExactly<CylinderScreen>(screen)) return hitAll(cylinder);
    if (const auto* const sphere = asExactly<SphericalScreen>(screen)) return hitAll(sphere);
    if (const auto* const ruled = asExactly<RuledSurfaceScreen>(screen)) return hitAll(ruled);
    return hitEach(rays, writer, options, [&](const Ray& ray) { return firstHitOf(screen, ray); });
}

BatchEnd positionsAt(const IScreenGeometry& screen, const RowView<const double, 2>& uvs, BeyondScreen beyond,
                     const RowView<double, 3>& positions, const RowView<Found, 1>& found,
                     const BatchOptions& options) {
    requireOutput("positions", positions, uvs.size());
    requireOutput("how positions were found", found, uvs.size());
    return mapEach(uvs, positions, options, [&](std::size_t i, const Point<double, 2>& uv) {
        const MappedPoint<3> mapped = positionAt(screen, uv, beyond);
        setIfWanted(found, i, mapped.found);
        return mapped.found == Found::None ? kMissingPosition : mapped.point;
    });
}

BatchEnd uvsAt(const IScreenGeometry& screen, const RowView<const double, 3>& positions, BeyondScreen beyond,
               const RowView<double, 2>& uvs, const RowView<Found, 1>& found, const BatchOptions& options) {
    requireOutput("UVs", uvs, positions.size());
    requireOutput("how UVs were found", found, positions.size());
    return mapEach(positions, uvs, options, [&](std::size_t i, const Point<double, 3>& position) {
        const MappedPoint<2> mapped = uvAt(screen, position, beyond);
        setIfWanted(found, i, mapped.found);
        return mapped.found == Found::None ? kMissingUv : mapped.point;
    });
}

BatchEnd normalsAt(const IScreenGeometry& screen, const RowView<const double, 3>& positions,
                   const RowView<double, 3>& normals, const BatchOptions& options) {
    requireOutput("normals", normals, positions.size());
    return mapEach(positions, normals, options, [&](std::size_t /*row*/, const Point<double, 3>& position) {
        const Point<double, 3> normal = screen.getScreenNormal(position);
        return normal == Point<double, 3>() ? kMissingPosition : normal;
    });
}

BatchEnd closestPoints(const IScreenGeometry& screen, const RowView<const double, 3>& positions,
                       const RowView<double, 3>& closest, const BatchOptions& options) {
    requireOutput("closest points", closest, positions.size());
    return mapEach(positions, closest, options, [&](std::size_t /*row*/, const Point<double, 3>& position) {
        return screen.getClosestPoint(position);
    });
}

}  // namespace quarn
