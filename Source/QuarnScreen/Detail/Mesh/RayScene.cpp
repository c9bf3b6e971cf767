#include "RayScene.h"

#include <embree3/rtcore.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <mutex>
#include <type_traits>

namespace quarn::detail {
namespace {

// The ray tracer's own limit of a coordinate. It ends the process for greater ones and for NaN.
constexpr float kMaxCoordinate = 1.844e18F;

// Bytes between two corners: the ray tracer reads 16 bytes of each.
constexpr std::size_t kCornerStride = 4 * sizeof(float);

// 100 MiB for tessellated surfaces, which the scenes do not contain.
constexpr const char* kConfiguration = "tessellation_cache_size=100";

// The device of the process, and the number of scenes that use it.
std::mutex deviceMutex;
RTCDevice device = nullptr;
int sceneUsers = 0;

RTCDevice openDevice() {
    const std::lock_guard<std::mutex> lock(deviceMutex);
    if (++sceneUsers == 1) device = rtcNewDevice(kConfiguration);
    return device;
}

void closeDevice() {
    const std::lock_guard<std::mutex> lock(deviceMutex);
    if (--sceneUsers > 0) return;
    if (device != nullptr) rtcReleaseDevice(device);
    device = nullptr;
}

bool isTraceable(const RayScene::Vector& vector) {
    for (const float coordinate : vector) {
        if (!(std::abs(coordinate) <= kMaxCoordinate)) return false;
    }
    return true;
}

bool isTraceable(const RayScene::Ray& ray) {
    return isTraceable(ray.origin) && isTraceable(ray.direction);
}

// A traversal that collects.
struct CollectingContext {
    RTCIntersectContext base{};  // the ray tracer passes its address to the filter
    RayScene::Crossings* crossings = nullptr;

    explicit CollectingContext(RayScene::Crossings* list) : crossings(list) {
        rtcInitIntersectContext(&base);
        base.filter = storeCrossings;
    }

private:
    // Rejects each hit after it is stored, so that the traversal continues to the next one.
    static void storeCrossings(const RTCFilterFunctionNArguments* found) {
        RayScene::Crossings& list = *reinterpret_cast<CollectingContext*>(found->context)->crossings;
        for (unsigned int i = 0; i < found->N; ++i) {
            if (found->valid[i] != -1) continue;
            found->valid[i] = 0;
            list.add({RTCRayN_tfar(found->ray, found->N, i), RTCHitN_u(found->hit, found->N, i),
                      RTCHitN_v(found->hit, found->N, i), RTCHitN_primID(found->hit, found->N, i)});
        }
    }
};
static_assert(std::is_standard_layout_v<CollectingContext>);

RTCRayHit queryOf(const RayScene::Ray& ray, float nearest) {
    RTCRayHit query{};
    query.ray.org_x = ray.origin[0];
    query.ray.org_y = ray.origin[1];
    query.ray.org_z = ray.origin[2];
    query.ray.dir_x = ray.direction[0];
    query.ray.dir_y = ray.direction[1];
    query.ray.dir_z = ray.direction[2];
    query.ray.tnear = nearest;
    query.ray.tfar = std::numeric_limits<float>::infinity();
    query.ray.time = 0.0F;
    query.ray.mask = 0xFFFFFFFFU;
    query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    query.hit.primID = RTC_INVALID_GEOMETRY_ID;
    query.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    return query;
}

}  // namespace

struct RayScene::Tracer {
    RTCDevice device = nullptr;
    RTCScene scene = nullptr;
    RTCGeometry geometry = nullptr;      // owned by the scene
    const float* coordinates = nullptr;  // of the corners, owned by the geometry
    unsigned int geometryId = RTC_INVALID_GEOMETRY_ID;

    void detach() {
        if (geometryId == RTC_INVALID_GEOMETRY_ID) return;
        rtcDetachGeometry(scene, geometryId);
        geometryId = RTC_INVALID_GEOMETRY_ID;
        geometry = nullptr;
    }
};

RayScene::RayScene() : tracer(std::make_unique<Tracer>()) {
    tracer->device = openDevice();
    tracer->scene = rtcNewScene(tracer->device);
    if (tracer->scene == nullptr) return;
    rtcSetSceneFlags(tracer->scene, static_cast<RTCSceneFlags>(RTC_SCENE_FLAG_ROBUST |
                                                               RTC_SCENE_FLAG_CONTEXT_FILTER_FUNCTION));
    rtcSetSceneBuildQuality(tracer->scene, RTC_BUILD_QUALITY_HIGH);
}

RayScene::~RayScene() {
    if (tracer->scene != nullptr) {
        tracer->detach();
        rtcReleaseScene(tracer->scene);
    }
    closeDevice();
}

void RayScene::upload(const std::vector<Triangle>& triangles) {
    if (triangles.empty() || tracer->scene == nullptr) return;
    tracer->detach();

    const std::size_t corners = 3 * triangles.size();
    RTCGeometry mesh = rtcNewGeometry(tracer->device, RTC_GEOMETRY_TYPE_TRIANGLE);
    auto* const coordinates = static_cast<float*>(
        rtcSetNewGeometryBuffer(mesh, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, kCornerStride, corners));
    auto* index = static_cast<std::uint32_t*>(rtcSetNewGeometryBuffer(
        mesh, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(std::uint32_t), triangles.size()));
    if (coordinates != nullptr && index != nullptr) {
        float* coordinate = coordinates;
        for (const Triangle& triangle : triangles) {
            for (const TriangleVertex& corner : triangle.vertices) {
                const Vector position = narrowed(corner.position);
                for (std::size_t i = 0; i < position.size(); ++i) coordinate[i] = position[i];
                coordinate += kCornerStride / sizeof(float);
            }
        }
        for (std::size_t corner = 0; corner < corners; ++corner)
            index[corner] = static_cast<std::uint32_t>(corner);
    }
    rtcCommitGeometry(mesh);
    tracer->geometryId = rtcAttachGeometry(tracer->scene, mesh);
    tracer->geometry = mesh;
    tracer->coordinates = coordinates;
    rtcReleaseGeometry(mesh);
    rtcCommitScene(tracer->scene);
}

std::optional<RayScene::Hit> RayScene::cast(const Vector& origin, const Vector& direction,
                                            float nearest) const {
    if (tracer->geometryId == RTC_INVALID_GEOMETRY_ID) return std::nullopt;
    if (!isTraceable(origin) || !isTraceable(direction)) return std::nullopt;

    RTCRayHit query = queryOf({origin, direction}, nearest);
    RTCIntersectContext context{};
    rtcInitIntersectContext(&context);
    rtcIntersect1(tracer->scene, &context, &query);
    if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID) return std::nullopt;

    const Crossing crossing{query.ray.tfar, query.hit.u, query.hit.v, query.hit.primID};
    return Hit{positionAt(crossing), crossing.triangle, crossing.distance, crossing.a, crossing.b};
}

void RayScene::collect(const Ray& ray, Crossings& crossings) const {
    crossings.clear();
    if (tracer->geometryId == RTC_INVALID_GEOMETRY_ID || !isTraceable(ray)) return;
    RTCRayHit query = queryOf(ray, 0.0F);
    CollectingContext context(&crossings);
    rtcIntersect1(tracer->scene, &context.base, &query);
}

Point<double, 3> RayScene::positionAt(const Crossing& crossing) const {
    alignas(16) std::array<float, 4> position{};
    rtcInterpolate0(tracer->geometry, crossing.triangle, crossing.a, crossing.b, RTC_BUFFER_TYPE_VERTEX, 0,
                    position.data(), 3);
    return {position[0], position[1], position[2]};
}

RayScene::Corners RayScene::cornersOf(std::uint32_t triangle) const {
    constexpr std::size_t kStep = kCornerStride / sizeof(float);
    const float* coordinate = tracer->coordinates + 3 * kStep * triangle;
    Corners corners;
    for (Vector& corner : corners) {
        std::copy_n(coordinate, corner.size(), corner.begin());
        coordinate += kStep;
    }
    return corners;
}

RayScene::Vector RayScene::narrowed(const Point<double, 3>& point) {
    return {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])};
}

}  // namespace quarn::detail
