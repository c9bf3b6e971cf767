#include "Reference/Timed/ReferenceScene.h"

#include <embree3/rtcore.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace quarn::test {
namespace {

constexpr float kStepBehindHit = 0.001F;  // in lengths of the ray's direction
constexpr int kMaxHits = 10;
constexpr std::size_t kCornerStride = 4 * sizeof(float);

// What a search around a position looks for. The radius is that of the test, and some more for the
// rounding to single precision.
constexpr float kRadius = 1.2e-5F;
constexpr double kHoldingDistance = 1e-5;
struct Search {
    const std::vector<Triangle>& triangles;
    Point<double, 3> point;
    const Triangle* best = nullptr;
    double bestSquared = std::numeric_limits<double>::max();
};

bool testTriangle(RTCPointQueryFunctionArguments* arguments) {
    Search& search = *static_cast<Search*>(arguments->userPtr);
    const Triangle& triangle = search.triangles[arguments->primID];
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
    Point<double, 3> hit;
    if (!intersectTrianglePlane(search.point, search.point + triangle.normal, triangle, t, hit, a, b, false))
        return false;
    const Point<double, 3> offset = search.point - triangle.centroid;
    const double squared = dot(offset, offset);
    if (!(kHoldingDistance > std::abs(t)) || !(search.bestSquared > squared)) return false;
    search.best = &triangle;
    search.bestSquared = squared;
    return false;  // the radius stays
}

}  // namespace

struct ReferenceScene::Tracer {
    RTCDevice device = rtcNewDevice("tessellation_cache_size=100");
    RTCScene scene = rtcNewScene(device);
    RTCGeometry geometry = nullptr;
    const std::vector<Triangle>* triangles = nullptr;
};

ReferenceScene::ReferenceScene() : tracer(std::make_unique<Tracer>()) {
    rtcSetSceneFlags(tracer->scene, RTC_SCENE_FLAG_ROBUST);
    rtcSetSceneBuildQuality(tracer->scene, RTC_BUILD_QUALITY_HIGH);
}

ReferenceScene::~ReferenceScene() {
    rtcReleaseScene(tracer->scene);
    rtcReleaseDevice(tracer->device);
}

void ReferenceScene::upload(const std::vector<Triangle>& triangles) {
    tracer->triangles = &triangles;
    RTCGeometry mesh = rtcNewGeometry(tracer->device, RTC_GEOMETRY_TYPE_TRIANGLE);
    auto* coordinate = static_cast<float*>(rtcSetNewGeometryBuffer(
        mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, kCornerStride, 3 * triangles.size()));
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            for (std::size_t i = 0; i < 3; ++i) coordinate[i] = static_cast<float>(corner.position[i]);
            coordinate += 4;
        }
    }
    auto* index = static_cast<std::uint32_t*>(rtcSetNewGeometryBuffer(
        mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(std::uint32_t), triangles.size()));
    for (std::uint32_t i = 0; i < 3 * triangles.size(); ++i) index[i] = i;
    rtcCommitGeometry(mesh);
    rtcAttachGeometry(tracer->scene, mesh);
    tracer->geometry = mesh;
    rtcReleaseGeometry(mesh);
    rtcCommitScene(tracer->scene);
}

IntersectionSet ReferenceScene::intersect(const Point<double, 3>& start, const Point<double, 3>& end) const {
    const Point<double, 3> direction = end - start;
    IntersectionSet hits;
    float nearest = 0.0F;
    for (int i = 0; i < kMaxHits; ++i) {
        RTCRayHit query;
        query.ray.org_x = static_cast<float>(start[0]);
        query.ray.org_y = static_cast<float>(start[1]);
        query.ray.org_z = static_cast<float>(start[2]);
        query.ray.dir_x = static_cast<float>(direction[0]);
        query.ray.dir_y = static_cast<float>(direction[1]);
        query.ray.dir_z = static_cast<float>(direction[2]);
        query.ray.tnear = nearest;
        query.ray.tfar = std::numeric_limits<float>::infinity();
        query.ray.time = 0.0F;
        query.ray.mask = 0xFFFFFFFFU;
        query.ray.flags = 0;
        query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        query.hit.primID = RTC_INVALID_GEOMETRY_ID;
        query.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        rtcIntersect1(tracer->scene, &context, &query);
        if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID) break;

        float position[3];
        rtcInterpolate0(tracer->geometry, query.hit.primID, query.hit.u, query.hit.v, RTC_BUFFER_TYPE_VERTEX,
                        0, position, 3);
        const Triangle& triangle = (*tracer->triangles)[query.hit.primID];
        const double cosine = dot(direction, triangle.normal);
        Intersection hit;
        hit.point = {position[0], position[1], position[2]};
        hit.hasUV = true;
        hit.uv = triangle.uvAt(query.hit.u, query.hit.v);
        hit.triangleIndex = static_cast<int>(query.hit.primID);
        hit.normalSign = cosine > 0.0 ? 1 : cosine < 0.0 ? -1 : 0;
        hits.add(hit);
        nearest = query.ray.tfar + kStepBehindHit;
    }
    hits.sort(start, end);
    return hits;
}

const Triangle* ReferenceScene::findContaining(const Point<double, 3>& point) const {
    RTCPointQuery query{};
    query.x = static_cast<float>(point[0]);
    query.y = static_cast<float>(point[1]);
    query.z = static_cast<float>(point[2]);
    query.radius = kRadius;
    RTCPointQueryContext context;
    rtcInitPointQueryContext(&context);
    Search search{*tracer->triangles, point};
    rtcPointQuery(tracer->scene, &query, &context, testTriangle, &search);
    return search.best;
}

}  // namespace quarn::test
