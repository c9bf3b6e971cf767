// Calls of a mesh to the ray tracer. The linker sends them through here (--wrap), so that they are
// counted.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Support/Mesh/Sheets.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

using Calls = std::vector<std::string>;

// On one thread: no test here starts another.
struct Tracer {
    Calls calls;
    std::string configuration;
    bool refusesScenes = false;
};

Tracer tracer;

Calls callsOf(const auto& work) {
    tracer.calls.clear();
    work();
    return tracer.calls;
}

}  // namespace

extern "C" {

void* realNewDevice(const char* configuration) __asm__("__real_rtcNewDevice");
void* wrappedNewDevice(const char* configuration) __asm__("__wrap_rtcNewDevice");
void* wrappedNewDevice(const char* configuration) {
    tracer.calls.emplace_back("open");
    tracer.configuration = configuration;
    return realNewDevice(configuration);
}

void realReleaseDevice(void* device) __asm__("__real_rtcReleaseDevice");
void wrappedReleaseDevice(void* device) __asm__("__wrap_rtcReleaseDevice");
void wrappedReleaseDevice(void* device) {
    tracer.calls.emplace_back("close");
    realReleaseDevice(device);
}

void* realNewScene(void* device) __asm__("__real_rtcNewScene");
void* wrappedNewScene(void* device) __asm__("__wrap_rtcNewScene");
void* wrappedNewScene(void* device) {
    tracer.calls.emplace_back("scene");
    return tracer.refusesScenes ? nullptr : realNewScene(device);
}

void realReleaseScene(void* scene) __asm__("__real_rtcReleaseScene");
void wrappedReleaseScene(void* scene) __asm__("__wrap_rtcReleaseScene");
void wrappedReleaseScene(void* scene) {
    tracer.calls.emplace_back("drop scene");
    realReleaseScene(scene);
}

unsigned int realAttachGeometry(void* scene, void* geometry) __asm__("__real_rtcAttachGeometry");
unsigned int wrappedAttachGeometry(void* scene, void* geometry) __asm__("__wrap_rtcAttachGeometry");
unsigned int wrappedAttachGeometry(void* scene, void* geometry) {
    tracer.calls.emplace_back("attach");
    return realAttachGeometry(scene, geometry);
}

void realDetachGeometry(void* scene, unsigned int id) __asm__("__real_rtcDetachGeometry");
void wrappedDetachGeometry(void* scene, unsigned int id) __asm__("__wrap_rtcDetachGeometry");
void wrappedDetachGeometry(void* scene, unsigned int id) {
    tracer.calls.emplace_back("detach");
    realDetachGeometry(scene, id);
}

void realCommitScene(void* scene) __asm__("__real_rtcCommitScene");
void wrappedCommitScene(void* scene) __asm__("__wrap_rtcCommitScene");
void wrappedCommitScene(void* scene) {
    tracer.calls.emplace_back("commit");
    realCommitScene(scene);
}

}  // extern "C"

TEST(TracerCalls, FirstScreenOpensItAndTheLastOneClosesIt) {
    for (int round = 0; round < 2; ++round) {
        std::vector<std::unique_ptr<TriangleScreen>> screens;
        const auto add = [&] { screens.push_back(std::make_unique<TriangleScreen>()); };
        EXPECT_EQ(callsOf(add), (Calls{"open", "scene"}));
        EXPECT_EQ(tracer.configuration, "tessellation_cache_size=100");
        EXPECT_EQ(callsOf(add), Calls{"scene"});
        EXPECT_EQ(callsOf(add), Calls{"scene"});
        EXPECT_EQ(callsOf([&] { screens.erase(screens.begin()); }), Calls{"drop scene"});
        EXPECT_EQ(callsOf([&] { screens.pop_back(); }), Calls{"drop scene"});
        EXPECT_EQ(callsOf([&] { screens.clear(); }), (Calls{"drop scene", "close"}));
    }
}

TEST(TracerCalls, ScreenWithoutTrianglesUploadsNothing) {
    TriangleScreen screen;
    EXPECT_EQ(callsOf([&] { screen.addScreenToScene(); }), Calls());
}

TEST(TracerCalls, SecondLoadTakesTheFirstGeometryOutFirst) {
    const Mesh sheet = sheetsAt({1.0});
    auto screen = std::make_unique<TriangleScreen>();
    EXPECT_EQ(callsOf([&] { screen->load(sheet); }), (Calls{"attach", "commit"}));
    EXPECT_EQ(callsOf([&] { screen->load(sheet); }), (Calls{"detach", "attach", "commit"}));
    EXPECT_EQ(callsOf([&] { screen->load(Mesh()); }), Calls()) << "the geometry stays";
    EXPECT_EQ(callsOf([&] { screen->load(sheet); }), (Calls{"detach", "attach", "commit"}));
    EXPECT_EQ(callsOf([&] { screen.reset(); }), (Calls{"detach", "drop scene", "close"}));
}

TEST(TracerCalls, ChangesOfTheMeshDoNotReachIt) {
    TriangleScreen screen(sheetsAt({1.0}));
    EXPECT_EQ(callsOf([&] {
                  screen.applyTransform({1.0, 0.0, 0.0}, {}, 2.0);
                  screen.applyParameterizationTransform(true, false);
                  screen.refine(0.5);
                  screen.initTriangleData();
              }),
              Calls());
}

TEST(TracerCalls, ScreenWithoutASceneIsHitByNothingAndKnowsItsPositions) {
    tracer.refusesScenes = true;
    auto screen = std::make_unique<TriangleScreen>();
    tracer.refusesScenes = false;
    EXPECT_EQ(callsOf([&] { screen->load(sheetsAt({1.0})); }), Calls());
    EXPECT_TRUE(screen->intersect(onRay(0.0), onRay(2.0)).empty());
    EXPECT_TRUE(screen->isOnScreenSection(onRay(1.0)));
    EXPECT_TRUE(screen->hasValidBoundary());
    EXPECT_EQ(callsOf([&] { screen.reset(); }), Calls{"close"});
}
