#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include <QuarnScreen/Detail/Mesh/RayScene.h>

#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/Sheets.h"

using namespace quarn::test;
using quarn::detail::RayScene;

namespace {

constexpr quarn::detail::RayScene::Vector kOrigin = {0.3F, -1.0F, 0.1F};
constexpr quarn::detail::RayScene::Vector kAlongY = {0.0F, 2.0F, 0.0F};

std::optional<quarn::detail::RayScene::Hit> firstHit(const quarn::detail::RayScene& scene,
                                                     float nearest = 0.0F) {
    return scene.cast(kOrigin, kAlongY, nearest);
}

}  // namespace

TEST(RayScene, NewOneIsHitByNothing) {
    const quarn::detail::RayScene scene;
    EXPECT_FALSE(firstHit(scene));
}

TEST(RayScene, HitHasTriangleDistanceAndParameters) {
    quarn::detail::RayScene scene;
    const Mesh mesh = sheetsAt({3.0, 1.0});
    scene.upload(mesh);
    const auto hit = firstHit(scene);
    ASSERT_TRUE(hit);
    // Triangles 2 and 3 lie in front, one length of the direction away; the one below the diagonal
    // is hit.
    EXPECT_EQ(hit->triangle, 3U);
    EXPECT_FLOAT_EQ(hit->distance, 1.0F);
    EXPECT_LT(length(hit->position - onRay(1.0)), 1e-6);
    EXPECT_LT(length(mesh[3].pointAt(hit->a, hit->b) - onRay(1.0)), 1e-6);
}

TEST(RayScene, SearchBeginsAtTheGivenDistance) {
    quarn::detail::RayScene scene;
    scene.upload(sheetsAt({1.0, 3.0}));
    EXPECT_FLOAT_EQ(firstHit(scene, 0.999F)->distance, 1.0F);
    EXPECT_FLOAT_EQ(firstHit(scene, 1.001F)->distance, 2.0F);
    EXPECT_FALSE(firstHit(scene, 2.001F));
}

TEST(RayScene, PositionIsWithinSinglePrecisionOfTheTriangle) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = dome({20, 20});
        quarn::detail::RayScene scene;
        scene.upload(mesh);
        for (int ray = 0; ray < 20; ++ray) {
            const auto hit =
                scene.cast({0.0F, 0.0F, 0.0F},
                           quarn::detail::RayScene::narrowed(anyOf(mesh, rng).pointAt(0.3, 0.4)), 0.0F);
            ASSERT_TRUE(hit);
            EXPECT_LT(length(mesh[hit->triangle].pointAt(hit->a, hit->b) - hit->position), 2e-6);
            EXPECT_NEAR(hit->distance, 1.0, 1e-5);
        }
    }
}

TEST(RayScene, UploadOfNothingKeepsTheTriangles) {
    quarn::detail::RayScene scene;
    scene.upload(Mesh());
    EXPECT_FALSE(firstHit(scene));
    scene.upload(sheetsAt({1.0}));
    scene.upload(Mesh());
    EXPECT_TRUE(firstHit(scene));
}

TEST(RayScene, UploadReplacesTheTriangles) {
    quarn::detail::RayScene scene;
    scene.upload(sheetsAt({1.0, 2.0}));
    scene.upload(sheetsAt({3.0}));
    const auto hit = firstHit(scene);
    ASSERT_TRUE(hit);
    EXPECT_LT(hit->triangle, 2U);
    EXPECT_FLOAT_EQ(hit->distance, 2.0F);
}

TEST(RayScene, TrianglesThatTheTracerCannotHoldAreNotHit) {
    Mesh mesh = sheetsAt({1.0, 3.0});
    for (const double number : {1e39, std::nan(""), 1e300, -1e30}) {
        for (std::size_t i = 0; i < 2; ++i) mesh[i].vertices[0].position[1] = number;
        quarn::detail::RayScene scene;
        scene.upload(mesh);
        const auto hit = firstHit(scene);
        ASSERT_TRUE(hit) << number;
        EXPECT_FLOAT_EQ(hit->distance, 2.0F) << number;
    }
}

TEST(RayScene, ScenesKnowNothingOfOneAnother) {
    quarn::detail::RayScene first;
    first.upload(sheetsAt({1.0}));
    quarn::detail::RayScene second;
    EXPECT_FALSE(firstHit(second));
    second.upload(sheetsAt({3.0}));
    EXPECT_FLOAT_EQ(firstHit(first)->distance, 1.0F);
    EXPECT_FLOAT_EQ(firstHit(second)->distance, 2.0F);
}

// The first scene opens the tracer and the last one closes it, in any order.
TEST(RayScene, ScenesEndInAnyOrder) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<std::unique_ptr<quarn::detail::RayScene>> scenes;
        for (int step = 0; step < 12; ++step) {
            if (!scenes.empty() && rng.integer(0, 2) == 0) {
                scenes.erase(scenes.begin() + rng.integer(0, static_cast<int>(scenes.size()) - 1));
            } else {
                scenes.push_back(std::make_unique<quarn::detail::RayScene>());
                if (rng.coin()) scenes.back()->upload(sheetsAt({1.0}));
            }
        }
        for (const auto& scene : scenes) {
            scene->upload(sheetsAt({3.0}));
            ASSERT_TRUE(firstHit(*scene));
            ASSERT_FLOAT_EQ(firstHit(*scene)->distance, 2.0F);
        }
    }
}
